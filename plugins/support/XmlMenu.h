#pragma once

#include <QHash>
#include <QString>
#include <QWidget>

#include <functional>

class QAction;
class QMenu;

/// Prepares the action of an entry when its menu is built, usually by connecting it; it may also give it a shortcut that is the
/// same in all languages.
/// @param argument what follows the colon in the entry's name
using MenuCommand = std::function<void(QAction* action, const QString& argument)>;

/// What the entries of a menu file do, by name: "NAME", or "NAME:" for entries "NAME:ARGUMENT".
using MenuCommands = QHash<QString, MenuCommand>;

/// A menu built from a menu file in this plugin's folder, in the current language. Besides the given commands there
/// is "url:ADDRESS", which opens a web page. Entries with other names are disabled and logged.
///
/// The object is invisible and owns the menu and its actions. GUI thread only.
class XmlMenu : public QWidget
{
    Q_OBJECT

public:
    /// @param file     name of the file
    /// @param menuName name of the menu in it
    XmlMenu(const QString& file, const QString& menuName, const MenuCommands& commands, QWidget* parent);

    /// Null if the file cannot be read or has no such menu.
    QMenu* menu() const { return m_menu; }

    /// Lets the shortcuts of the entries work in a window while the menu is closed.
    void useShortcutsIn(QWidget* window);

private:
    QMenu* m_menu;
    QList<QAction*> m_actions;
};
