#pragma once

#include "support/XmlMenu.h"

#include <QObject>
#include <QString>

class QSystemTrayIcon;
class QToolButton;

/// The main menu behind its button, and the icon in the desktop's notification area with its menu. Both menus
/// are read from the file Menus.xml, in which operators add and remove entries for their modems.
class Menus : public QObject
{
    Q_OBJECT

public:
    /// @param button opens the main menu; hidden when the file has none
    /// @param window owns the menus
    Menus(const MenuCommands& commands, QToolButton* button, QWidget* window);

    /// Builds the menus again if the attached modem asks for another customisation.
    void follow();

    /// Whether the user can bring back a hidden window.
    bool hasTray() const;

Q_SIGNALS:
    /// The user has clicked on the icon in the notification area.
    void trayClicked();

private:
    void build();
    void translate();
    void showInTray(XmlMenu* menu);

    MenuCommands m_commands;
    QToolButton* m_button;
    QWidget* m_window;
    QString m_customisation; ///< the name that the menus were built for
    XmlMenu* m_main = nullptr;
    XmlMenu* m_tray = nullptr;
    QSystemTrayIcon* m_icon = nullptr; ///< null where the desktop has no notification area
};
