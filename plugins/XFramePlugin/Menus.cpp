#include "Menus.h"

#include "ConnectionSwitch.h"
#include "PopupMenu/MenuParse.h"
#include "TrayIcon.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QMenu>
#include <QToolButton>

Menus::Menus(const MenuCommands& commands, QToolButton* button, QWidget* window)
    : QObject(window)
    , m_commands(commands)
    , m_button(button)
    , m_window(window)
    , m_switch(new ConnectionSwitch(this))
    , m_tray(new TrayIcon(this))
{
    m_switch->addTo(m_commands);
    connect(m_tray, &TrayIcon::clicked, this, &Menus::trayClicked);
    m_button->setShortcut(Qt::Key_F10); // as the desktop opens menu bars
    m_customisation = MENU::MenuParse().GetOperator();
    build();
    m_status = readTrayStatus();
    m_switch->follow(m_status);
    keepTranslated(button, [this] { translate(); });
}

void Menus::translate()
{
    m_button->setToolTip(text("IDS_MENU"));
    m_button->setAccessibleName(m_button->toolTip());
    m_tray->showStatus(m_status);
    // A menu is aligned with the leading edge of its button. To keep this one within the window, the button has
    // the opposite direction, which aligns them at the other edge.
    const Qt::LayoutDirection direction = QGuiApplication::layoutDirection();
    m_button->setLayoutDirection(direction == Qt::RightToLeft ? Qt::LeftToRight : Qt::RightToLeft);
    if (QMenu* const menu = m_button->menu())
        menu->setLayoutDirection(direction);
}

void Menus::follow()
{
    const QString customisation = MENU::MenuParse().GetOperator();
    if (customisation == m_customisation)
        return;
    m_customisation = customisation;
    build();
    translate();
}

void Menus::showStatus()
{
    show(readTrayStatus());
}

void Menus::showUnread(int unread)
{
    m_unread = unread;
    show(m_status);
}

void Menus::show(TrayStatus status)
{
    status.unread = m_unread;
    if (status == m_status)
        return;
    m_status = status;
    m_tray->showStatus(status);
    m_switch->follow(status);
}

bool Menus::hasTray() const
{
    return m_tray->isShown();
}

void Menus::keepTray()
{
    m_tray->keepShown();
}

void Menus::tellThatHidden()
{
    m_tray->notify(text("IDS_TRAY_HIDDEN"), text("IDS_TRAY_HIDDEN_HINT"));
}

void Menus::build()
{
    const QString file = QStringLiteral("Menus.xml");
    delete m_main;
    m_main = new XmlMenu(file, QStringLiteral("MainMenu"), m_commands, m_window);
    m_main->useShortcutsIn(m_window);
    m_button->setMenu(m_main->menu());
    m_button->setVisible(m_main->menu());

    delete m_trayMenu;
    m_trayMenu = new XmlMenu(file, QStringLiteral("TrayMenu"), m_commands, m_window);
    m_tray->setMenu(m_trayMenu->menu());
}
