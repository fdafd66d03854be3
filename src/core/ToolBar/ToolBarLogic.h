#pragma once

#include "ToolBar/ToolItem.h"
#include "skylume_global.h"

#include <QList>
#include <QString>

class IPluginContainer;
class QButtonGroup;
class QHBoxLayout;
class QLabel;
class QToolButton;
class QWidget;
class QXmlStreamReader;
class SearchLineEdit;

/// Toolbars of plugins, read from their toolbar files. Icons are read from the folder of the plugin that is
/// named. GUI thread only.
class SKYLUME_EXPORT ToolBarLogic
{
public:
    /// Reads a toolbar file. Buttons of plugins that are not loaded are left out, as are the call buttons
    /// unless the setting "callvoice" (plugin "CallUIPlugin") or "callvideo" ("VideoCallUIPlugin") of the
    /// section "callui" begins with "1".
    /// @param path         path of the file
    /// @param items        receives the buttons in file order; emptied first
    /// @param groupInGroup receives the value of "GroupInGroup"; unchanged without that element
    ///
    /// The last argument is ignored.
    static void GetXmlData(QString path, QList<ToolItem>& items, bool& groupInGroup, QString);

    /// Moves to the element "ToolBar" and reads how many items follow.
    /// @param count 0 if that is not a number; unchanged without such an element
    static void getToolBarCoount(QXmlStreamReader& reader, int& count);

    /// Whether the plugin host provides a plugin of this name; loads it if that is necessary.
    static bool getPlugin(QString name);

    /// The object name for a plugin's toolbar: "ToolBar_" and the plugin's name.
    static QString GetObjectName(QString pluginName);

    /// Builds the buttons into a new layout of a widget.
    /// @param parent       owner of layout, buttons and group; must have no layout yet
    /// @param items        receive their buttons
    /// @param group        receives the group in which each button has its item's id
    /// @param searchLayout, searchEdit, searchIcon receive the parts of the search box, see
    ///                     createSearchBox(); if one of them is null, no search box is made
    /// @return false without a parent, or when the search box could not be made
    static bool CreateToolBar(QString pluginName, QWidget* parent, QList<ToolItem>& items,
                              QButtonGroup** group, QHBoxLayout** searchLayout, SearchLineEdit** searchEdit,
                              QLabel** searchIcon);

    /// Makes a search box: icon and line edit in a layout. All three belong to the caller until the layout is
    /// added to that of a widget.
    /// @param iconPath path of the picture before the edit
    /// @return false when a pointer is null
    static bool createSearchBox(QHBoxLayout** layout, SearchLineEdit** edit, QString iconPath, QLabel** icon);

    /// Adds a search box at the end of a widget's layout, clears the edit and gives it the focus; or removes
    /// it. A removed layout belongs to the caller, its hidden widgets to the widget. Does nothing when a
    /// pointer is null or the widget has no layout.
    static void ShowHideSearchBox(QWidget* widget, QHBoxLayout* layout, SearchLineEdit* edit, bool show);

    /// Enables or disables the button with this id and changes its icon. Unknown ids are ignored.
    static void EnableDisableItem(QString pluginName, QList<ToolItem>& items, int id, bool enable);

    /// Sets a button's icon, mirrored when the application is laid out from right to left.
    /// @param enabled whether it is the icon of the enabled or of the disabled button
    /// @param path    path of the picture; with a file "...@2x" beside it for screens of twice the density
    static void setIcon(QToolButton* button, bool enabled, QString path);

    /// Like setIcon(), but the caller decides whether the icon is mirrored.
    static void setMirrorIcon(QToolButton* button, bool enabled, QString path, bool mirror);

    /// Sets all icons again, after the direction of the layout has changed.
    /// @param searchIcon the icon of the search box; may be null
    static void ChangeToolBarIconDirection(QString pluginName, QList<ToolItem>& items, bool mirror,
                                           QLabel** searchIcon);

    /// Deletes the buttons and the group, and clears the pointers to them.
    static void DestroyToolButtonGroup(QList<ToolItem>& items, QButtonGroup** group);

    /// The plugin host that getPlugin() asks: that of Startup, taken on first use and kept as long as it exists.
    static IPluginContainer* m_pPluginContainer;
};
