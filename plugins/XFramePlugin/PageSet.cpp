#include "PageSet.h"

#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "support/Clsids.h"
#include "support/LoadedPage.h"

#include <algorithm>

PageSet::PageSet(IPluginContainer& container, MainWindow& window)
    : m_container(container)
    , m_window(window)
{
    QObject::connect(&m_unread, &UnreadCount::changed, &window, &MainWindow::showUnread);
}

void PageSet::dropDisabled()
{
    QStringList clsids = m_pages.keys();
    // From the last to the first, so that no page takes another one's place only to go as well.
    std::sort(clsids.begin(), clsids.end(), [this](const QString& left, const QString& right) {
        return m_shown.indexOf(m_pages[left]) > m_shown.indexOf(m_pages[right]);
    });
    for (const QString& clsid : clsids) {
        if (loadedPage(m_container, clsid))
            continue;
        takeOut(m_pages[clsid]);
        delete m_pages.take(clsid);
    }
    if (m_layout != wantedLayout())
        dropArea();
}

void PageSet::arrange()
{
    const QVector<QWidget*> wanted = wantedPages();
    add(wanted);
    while (m_layout != wantedLayout()) { // it has failed, or its plugin has just been loaded
        dropArea();
        add(wanted);
    }
    m_unread.follow(m_pages.value(Clsids::Messages));
}

void PageSet::add(const QVector<QWidget*>& pages)
{
    prepareArea();
    m_shown.removeAll(nullptr);
    // Layouts add at the end only: from the first difference on, pages are taken out and added again.
    const auto firstDifference =
        std::mismatch(m_shown.cbegin(), m_shown.cend(), pages.cbegin(), pages.cend());
    takeOutAllAfter(int(firstDifference.first - m_shown.cbegin()));
    for (auto it = firstDifference.second; it != pages.cend(); ++it) {
        QWidget* const page = *it;
        m_shown.append(page);
        if (!callLayout("AddPage", [&] { m_layout->AddPage(m_area, page); }))
            return;
    }
}

bool PageSet::show(const QString& clsid)
{
    QWidget* const page = m_pages.value(clsid);
    return page && m_area && callLayout("ShowPage", [&] { m_layout->ShowPage(m_area, page); });
}

QVector<QWidget*> PageSet::wantedPages()
{
    QVector<QWidget*> pages;
    const QStringList clsids = CommonUtils::GetUIEmbedPlugibList();
    for (const QString& clsid : clsids) {
        QPointer<QWidget>& page = m_pages[clsid];
        if (!page)
            page = buildPage(m_container, clsid, nullptr);
        if (page)
            pages.append(page);
    }
    if (pages.isEmpty())
        pages.append(m_window.pluginsPage());
    return pages;
}

ILayout* PageSet::wantedLayout()
{
    ILayout* layout = CommonUtils::GetLayoutPlugin();
    return layout && layout != m_faultyLayout ? layout : &m_tabs;
}

void PageSet::prepareArea()
{
    if (m_area)
        return;
    m_layout = wantedLayout();
    callLayout("CreateArea", [this] { m_area = m_layout->CreateArea(&m_window); });
    if (!m_area) {
        m_faultyLayout = m_layout;
        m_layout = &m_tabs;
        m_area = m_tabs.CreateArea(&m_window);
    }
    m_shown.clear();
    m_window.setArea(m_area);
}

void PageSet::dropArea()
{
    takeOutAllAfter(0);
    delete m_area;
    m_layout = nullptr;
}

void PageSet::takeOut(QWidget* page)
{
    if (page && m_area)
        callLayout("RemovePage", [&] { m_layout->RemovePage(m_area, page); });
    if (page && m_area && m_area->isAncestorOf(page))
        page->setParent(nullptr); // a page must not be deleted together with the area
    m_shown.removeAll(page);
}

void PageSet::takeOutAllAfter(int kept)
{
    const auto pages = m_shown.mid(kept);
    for (const QPointer<QWidget>& page : pages)
        takeOut(page);
}

template <typename Call>
bool PageSet::callLayout(const char* what, Call call)
{
    if (guardedCall(what, m_container.GetPluginNameByClsid(Clsids::Layout), call))
        return true;
    m_faultyLayout = m_layout;
    return false;
}
