#pragma once

#include "skylume_global.h"

#include <QList>
#include <QString>

namespace MENU {

/// One entry of a menu: an item, a separator or a sub-menu. Used on one thread at a time.
class SKYLUME_EXPORT MenuXmlInfo
{
public:
    /// Kinds of entries.
    enum Type : int {
        Unset = 0,
        Item = 1,
        Popup = 2, ///< a sub-menu
        Separator = 3,
    };

    MenuXmlInfo() = default;
    ~MenuXmlInfo(); ///< deletes the children

    /// The entry's name. For an item it is the action that the plugin reacts to; the children of a sub-menu
    /// name it as their parent. The getters that take a reference write to it.
    void GetMenuName(QString& name) const { name = m_strMenuName; }
    void SetMenuName(QString name) { m_strMenuName = std::move(name); }

    /// For the plugin's own use; the parser leaves it empty.
    void GetMenuFullIntoPlugin(QString& text) const { text = m_strMenuFullIntoPlugin; }
    void SetMenuFullIntoPlugin(QString text) { m_strMenuFullIntoPlugin = std::move(text); }

    /// One of the values of Type.
    int GetMenuType() const { return m_iMenuType; }
    void SetMenuType(int type) { m_iMenuType = type; }

    /// The name of the sub-menu that holds the entry; "null" for an item or separator of the menu itself,
    /// empty for a sub-menu.
    void GetPopupParent(QString& parent) const { parent = m_strPopupParent; }
    void SetPopupParent(QString parent) { m_strPopupParent = std::move(parent); }

    /// The identifier of the visible string in the plugin's language files.
    QString GetMenuTextID() const { return m_strMenuTextID; }
    void SetMenuTextID(QString id) { m_strMenuTextID = std::move(id); }

    /// The children of a sub-menu; null for other entries. The list and its entries belong to this entry.
    QList<MenuXmlInfo*>* GetPopupMenuList() const { return m_pPopupMenuList; }

    /// Replaces the children; the earlier ones are deleted.
    /// @param children ownership of the list and its entries is taken; may be null
    void SetPopupMenuList(QList<MenuXmlInfo*>* children);

    /// Deletes the children and their list.
    void releaseXMlInfo();

private:
    Q_DISABLE_COPY_MOVE(MenuXmlInfo)

    QList<MenuXmlInfo*>* m_pPopupMenuList = nullptr;
    int m_iMenuType = Unset;
    QString m_strMenuName;
    QString m_strMenuFullIntoPlugin;
    QString m_strPopupParent;
    QString m_strMenuTextID;
};

/// One named menu of a menu file. It owns its entries.
struct SKYLUME_EXPORT STMENUINFO
{
    STMENUINFO();
    ~STMENUINFO();

    QString name;
    QList<MenuXmlInfo*>* items; ///< in file order; never null

private:
    Q_DISABLE_COPY_MOVE(STMENUINFO)
};

} // namespace MENU
