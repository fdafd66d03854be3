#include "PopupMenu/QBuildMenu.h"

#include "PopupMenu/MenuParse.h"
#include "common/CommonUtils.h"
#include "common/Log.h"

#include <QMenu>

#include <algorithm>

using namespace MENU;

namespace {

constexpr QLatin1String SearchId("IDS_MENU_SEARCH");

QAction* addAction(const MenuXmlInfo& entry, QMenu& target, QWidget* parent, QList<QActionInfo>* actions)
{
    QString name;
    QString popupParent;
    entry.GetMenuName(name);
    entry.GetPopupParent(popupParent);
    auto* const action = new QAction(name, parent);
    target.addAction(action);
    if (actions)
        actions->append({action, entry.GetMenuTextID(), popupParent});
    return action;
}

QMenu* makeSubMenu(const QList<MenuXmlInfo*>& children, QMenu& target, QWidget* parent,
                   QList<QActionInfo>* actions)
{
    auto* const menu = new QMenu(&target);
    for (const MenuXmlInfo* const child : children) {
        if (child->GetMenuType() == MenuXmlInfo::Separator)
            menu->addSeparator();
        else if (child->GetMenuType() == MenuXmlInfo::Item)
            addAction(*child, *menu, parent, actions);
    }
    return menu;
}

bool isSearch(const MenuXmlInfo& entry)
{
    return entry.GetMenuTextID() == SearchId;
}

/// Adds an item or a sub-menu; entries of other types are left out.
/// @return false for a sub-menu without a list of entries
bool addEntry(const MenuXmlInfo& entry, QMenu& target, QWidget* parent, QList<QActionInfo>* actions)
{
    const int type = entry.GetMenuType();
    if (type != MenuXmlInfo::Item && type != MenuXmlInfo::Popup && !isSearch(entry))
        return true;
    QAction* const action = addAction(entry, target, parent, actions);
    if (type != MenuXmlInfo::Popup)
        return true;
    const QList<MenuXmlInfo*>* const children = entry.GetPopupMenuList();
    if (children)
        action->setMenu(makeSubMenu(*children, target, parent, actions));
    return children;
}

} // namespace

QBuildMenu::QBuildMenu(QString folder, QString file)
{
    if (!folder.isEmpty() && !file.isEmpty())
        m_pMenuParse = std::make_unique<MenuParse>(std::move(folder), std::move(file));
}

QBuildMenu::~QBuildMenu() = default;

quintptr QBuildMenu::CreateMenuBar(QString menuName, QWidget* parent, QList<QActionInfo>* actions)
{
    LOG_DEBUG("%s: %s:CreateMenuBar ", LOG_FILE, LOG_FUNCTION);
    if (menuName.isEmpty() || !parent || !m_pMenuParse)
        return 0;
    const QList<STMENUINFO*>& menus = *m_pMenuParse->GetMenuInfoList();
    const auto found = std::find_if(menus.begin(), menus.end(),
                                    [&](const STMENUINFO* menu) { return menu->name == menuName; });
    if (found == menus.end())
        return 0;
    auto* const menu = new QMenu(parent);
    AddMenuItem(*found, menu, parent, actions);
    return reinterpret_cast<quintptr>(menu);
}

int QBuildMenu::AddMenuItem(STMENUINFO* menu, QMenu* target, QWidget* parent, QList<QActionInfo>* actions)
{
    LOG_DEBUG("%s: %s:AddMenuItem ", LOG_FILE, LOG_FUNCTION);
    if (!menu || !menu->items || !target)
        return 1;
    bool isBehindSearch = false; // the separator that follows is a configurable one
    for (const MenuXmlInfo* const entry : qAsConst(*menu->items)) {
        if (entry->GetMenuType() == MenuXmlInfo::Separator) {
            if (!isBehindSearch || CommonUtils::GetSMSSeperatorConfigValue())
                target->addSeparator();
            isBehindSearch = false;
            continue;
        }
        isBehindSearch = isBehindSearch || isSearch(*entry);
        if (!addEntry(*entry, *target, parent, actions))
            return 0;
    }
    return 1;
}
