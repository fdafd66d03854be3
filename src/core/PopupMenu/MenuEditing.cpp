// Adds and deletes entries of menus.
#include "PopupMenu/MenuParse.h"

#include "common/Log.h"

#include <algorithm>
#include <memory>

using namespace MENU;

namespace {

constexpr QLatin1String NoParent("null");

/// Deletes the first entry that `isWanted` names.
template <typename IsWanted>
void deleteFirst(QList<MenuXmlInfo*>& entries, IsWanted isWanted)
{
    const auto found = std::find_if(entries.begin(), entries.end(), isWanted);
    if (found == entries.end())
        return;
    const std::unique_ptr<MenuXmlInfo> entry(*found);
    entries.erase(found);
}

bool isPopup(const MenuXmlInfo* entry, const QString& name)
{
    if (entry->GetMenuType() != MenuXmlInfo::Popup)
        return false;
    QString own;
    entry->GetMenuName(own);
    return own == name;
}

/// The position of the first sub-menu of this name; one past the end when there is none.
int findPopup(const QList<MenuXmlInfo*>& entries, const QString& name)
{
    const auto found = std::find_if(entries.cbegin(), entries.cend(),
                                    [&name](const MenuXmlInfo* entry) { return isPopup(entry, name); });
    return static_cast<int>(found - entries.cbegin());
}

} // namespace

STMENUINFO* MenuParse::findMenu(const QString& name) const
{
    const auto found = std::find_if(m_pMenuInfoList->cbegin(), m_pMenuInfoList->cend(),
                                    [&name](const STMENUINFO* menu) { return menu->name == name; });
    return found == m_pMenuInfoList->cend() ? nullptr : *found;
}

/// The entries of a menu or of one of its sub-menus; null when there is no such place.
QList<MenuXmlInfo*>* MenuParse::entriesOf(const QString& menuName, const QString& parent)
{
    STMENUINFO* const menu = findMenu(menuName);
    if (!menu)
        return nullptr;
    if (parent == NoParent)
        return menu->items;
    const QList<MenuXmlInfo*>& entries = *menu->items;
    if (menu != m_pLastMenu || m_iLastPopup >= entries.size() || !isPopup(entries[m_iLastPopup], parent)) {
        m_pLastMenu = menu;
        m_iLastPopup = findPopup(entries, parent);
    }
    return m_iLastPopup < entries.size() ? entries[m_iLastPopup]->GetPopupMenuList() : nullptr;
}

MenuXmlInfo* MenuParse::AddMenuType(QString menuName, QString parent, int type)
{
    QList<MenuXmlInfo*>* const entries = entriesOf(menuName, parent);
    if (!entries)
        return nullptr;
    auto* const entry = new MenuXmlInfo;
    if (type == MenuXmlInfo::Item || type == MenuXmlInfo::Separator)
        entry->SetMenuType(type);
    entry->SetPopupParent(std::move(parent));
    entries->append(entry);
    return entry;
}

MenuXmlInfo* MenuParse::AddMenuItem(QString menuName, QString parent)
{
    return AddMenuType(std::move(menuName), std::move(parent), MenuXmlInfo::Item);
}

MenuXmlInfo* MenuParse::AddMenuSeparator(QString menuName, QString parent)
{
    return AddMenuType(std::move(menuName), std::move(parent), MenuXmlInfo::Separator);
}

MenuXmlInfo* MenuParse::AddMenuPopup(QString menuName)
{
    STMENUINFO* const menu = findMenu(menuName);
    if (!menu) {
        LOG_DEBUG("%s: %s:AddMenuPopup ", LOG_FILE, LOG_FUNCTION);
        return nullptr;
    }
    auto* const entry = new MenuXmlInfo;
    entry->SetMenuType(MenuXmlInfo::Popup);
    entry->SetPopupMenuList(new QList<MenuXmlInfo*>);
    menu->items->append(entry);
    return entry;
}

void MenuParse::DeleteMenuItem(QString id, QString parent, QString menuName)
{
    if (QList<MenuXmlInfo*>* const entries = entriesOf(menuName, parent))
        deleteFirst(*entries, [&id](const MenuXmlInfo* entry) { return entry->GetMenuTextID() == id; });
    m_pLastMenu = nullptr;
}

void MenuParse::DeleteMenuPopup(QString id, QString menuName)
{
    if (STMENUINFO* const menu = findMenu(menuName))
        deleteFirst(*menu->items, [&id](const MenuXmlInfo* entry) {
            return entry->GetMenuType() == MenuXmlInfo::Popup && entry->GetMenuTextID() == id;
        });
    m_pLastMenu = nullptr;
}
