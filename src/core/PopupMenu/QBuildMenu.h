#pragma once

#include "PopupMenu/MenuXmlInfo.h"
#include "skylume_global.h"

#include <QList>
#include <QString>

#include <memory>

class QAction;
class QMenu;
class QWidget;

namespace MENU {

class MenuParse;

/// What a plugin needs to connect and translate an action.
struct QActionInfo
{
    QAction* action;     ///< belongs to the widget that was given as parent
    QString textID;      ///< identifier of its visible string
    QString popupParent; ///< name of the sub-menu that holds it; "null" for an item of the menu itself, empty
                         ///< for a sub-menu
};

/// Builds menus from a menu file. The actions show their names until the plugin sets translated strings. GUI
/// thread only.
class SKYLUME_EXPORT QBuildMenu
{
public:
    /// Reads the file, unless one of the names is empty.
    /// @param folder name of the plugin's folder below "plugins"
    /// @param file   name of the file in it
    QBuildMenu(QString folder, QString file);
    ~QBuildMenu();

    /// Builds a menu.
    /// @param menuName name of the menu in the file
    /// @param parent   owner of the menu and of all its actions
    /// @param actions  receives a record for each action, in the order of the file, that of a sub-menu before
    ///                 those of its entries; may be null
    /// @return a QMenu* as a number; 0 when a name or the parent is missing or the file has no such menu
    quintptr CreateMenuBar(QString menuName, QWidget* parent, QList<QActionInfo>* actions);

    /// Adds the entries of a menu to a QMenu.
    /// @param target  owner of the sub-menus; if it is null, nothing is added
    /// @param parent  owner of the actions
    /// @param actions as for CreateMenuBar()
    /// @return 1, or 0 when a sub-menu has no list of entries
    int AddMenuItem(STMENUINFO* menu, QMenu* target, QWidget* parent, QList<QActionInfo>* actions);

private:
    Q_DISABLE_COPY_MOVE(QBuildMenu)

    std::unique_ptr<MenuParse> m_pMenuParse; ///< null without a file name
};

} // namespace MENU
