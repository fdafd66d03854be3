#pragma once

#include "TrayState.h"
#include "support/XmlMenu.h"

#include <QObject>
#include <QString>

class ConnectionSwitch;
class QToolButton;
class TrayIcon;

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

    /// Shows the state of the modem in use in the notification area.
    void showStatus();

    /// Shows there how many messages are unread.
    void showUnread(int unread);

    /// Whether the user can bring back a hidden window.
    bool hasTray() const;

    /// See TrayIcon::keepShown().
    void keepTray();

    /// Says in a notification that the window is hidden, but still running.
    void tellThatHidden();

Q_SIGNALS:
    /// The user has clicked on the icon in the notification area.
    void trayClicked();

private:
    void build();
    void translate();
    void show(TrayStatus status);

    MenuCommands m_commands;
    QToolButton* m_button;
    QWidget* m_window;
    QString m_customisation; ///< the name that the menus were built for
    XmlMenu* m_main = nullptr;
    XmlMenu* m_trayMenu = nullptr;
    TrayStatus m_status;
    int m_unread = 0; ///< messages
    ConnectionSwitch* m_switch;
    TrayIcon* m_tray;
};
