#include "PopupMenu/MenuXmlInfo.h"

#include <memory>

using namespace MENU;

MenuXmlInfo::~MenuXmlInfo()
{
    releaseXMlInfo();
}

void MenuXmlInfo::SetPopupMenuList(QList<MenuXmlInfo*>* children)
{
    if (children == m_pPopupMenuList)
        return;
    releaseXMlInfo();
    m_pPopupMenuList = children;
}

/// Takes the tree apart level by level: deleting it through the destructors alone would recurse as deep as a
/// plugin has nested its entries.
void MenuXmlInfo::releaseXMlInfo()
{
    const std::unique_ptr<QList<MenuXmlInfo*>> children(m_pPopupMenuList);
    m_pPopupMenuList = nullptr;
    QList<MenuXmlInfo*> pending = children ? *children : QList<MenuXmlInfo*>();
    while (!pending.isEmpty()) {
        const std::unique_ptr<MenuXmlInfo> entry(pending.takeLast());
        if (!entry)
            continue;
        const std::unique_ptr<QList<MenuXmlInfo*>> below(entry->m_pPopupMenuList);
        entry->m_pPopupMenuList = nullptr;
        if (below)
            pending += *below;
    }
}

STMENUINFO::STMENUINFO()
    : items(new QList<MenuXmlInfo*>)
{
}

STMENUINFO::~STMENUINFO()
{
    if (items)
        qDeleteAll(*items);
    delete items;
}
