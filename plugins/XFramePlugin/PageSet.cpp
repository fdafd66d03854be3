#include "PageSet.h"

#include "LoadedPage.h"
#include "MainWindow.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "common/CommonUtils.h"

#include <QRect>

#include <algorithm>

PageSet::PageSet(IPluginContainer& container, MainWindow& window)
    : m_container(container)
    , m_window(window)
{
}

void PageSet::dropDisabled()
{
    for (auto it = m_pages.begin(); it != m_pages.end();) {
        if (loadedPage(m_container, it.key())) {
            ++it;
            continue;
        }
        takeOut(*it);
        delete *it;
        it = m_pages.erase(it);
    }
    if (m_layout == wantedLayout())
        return;
    takeOutAllAfter(0);
    delete m_area;
    m_layout = nullptr;
}

void PageSet::arrange()
{
    prepareArea();
    m_shown.removeAll(nullptr);
    const QVector<QWidget*> wanted = wantedPages();
    // Layouts add at the end only: from the first difference on, pages are taken out and put in again.
    const auto firstDifference =
        std::mismatch(m_shown.cbegin(), m_shown.cend(), wanted.cbegin(), wanted.cend());
    takeOutAllAfter(int(firstDifference.first - m_shown.cbegin()));
    for (auto it = firstDifference.second; it != wanted.cend(); ++it) {
        m_layout->AddPage(m_area, *it);
        m_shown.append(*it);
    }
}

QWidget* PageSet::page(const QString& clsid)
{
    QPointer<QWidget>& page = m_pages[clsid];
    IUIPlugin* plugin = page ? nullptr : loadedPage(m_container, clsid);
    if (plugin)
        page = plugin->BuildFrame(nullptr, QRect());
    return page;
}

QVector<QWidget*> PageSet::wantedPages()
{
    QVector<QWidget*> pages;
    const QStringList clsids = CommonUtils::GetUIEmbedPlugibList();
    for (const QString& clsid : clsids) {
        QWidget* embedded = page(clsid);
        if (embedded)
            pages.append(embedded);
    }
    pages.append(m_window.pluginsPage());
    return pages;
}

ILayout* PageSet::wantedLayout()
{
    ILayout* layout = CommonUtils::GetLayoutPlugin();
    return layout ? layout : &m_tabs;
}

void PageSet::prepareArea()
{
    if (m_area)
        return;
    m_layout = wantedLayout();
    m_area = m_layout->CreateArea(&m_window);
    m_shown.clear();
    m_window.setArea(m_area);
}

void PageSet::takeOut(QWidget* page)
{
    if (page && m_area)
        m_layout->RemovePage(m_area, page);
    m_shown.removeAll(page);
}

void PageSet::takeOutAllAfter(int kept)
{
    const auto pages = m_shown.mid(kept);
    for (const QPointer<QWidget>& page : pages)
        takeOut(page);
}
