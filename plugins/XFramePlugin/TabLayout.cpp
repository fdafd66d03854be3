#include "TabLayout.h"

#include <QTabWidget>

QWidget* TabLayout::CreateArea(QWidget* parent)
{
    auto* tabs = new QTabWidget(parent);
    tabs->setDocumentMode(true);
    return tabs;
}

void TabLayout::AddPage(QWidget* area, QWidget* page)
{
    auto* tabs = qobject_cast<QTabWidget*>(area);
    if (!tabs)
        return;
    tabs->addTab(page, page->windowIcon(), page->windowTitle());
    QObject::connect(page, &QWidget::windowTitleChanged, tabs,
                     [tabs, page](const QString& title) { tabs->setTabText(tabs->indexOf(page), title); });
}

void TabLayout::RemovePage(QWidget* area, QWidget* page)
{
    auto* tabs = qobject_cast<QTabWidget*>(area);
    const int index = tabs ? tabs->indexOf(page) : -1;
    if (index < 0)
        return;
    page->disconnect(tabs);
    tabs->removeTab(index);
    page->hide();
    page->setParent(nullptr);
}

void TabLayout::ShowPage(QWidget* area, QWidget* page)
{
    if (auto* tabs = qobject_cast<QTabWidget*>(area))
        tabs->setCurrentWidget(page);
}
