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
    if (auto* tabs = qobject_cast<QTabWidget*>(area))
        tabs->addTab(page, page->windowIcon(), page->windowTitle());
}

void TabLayout::RemovePage(QWidget* area, QWidget* page)
{
    auto* tabs = qobject_cast<QTabWidget*>(area);
    const int index = tabs ? tabs->indexOf(page) : -1;
    if (index < 0)
        return;
    tabs->removeTab(index);
    page->hide();
    page->setParent(nullptr);
}
