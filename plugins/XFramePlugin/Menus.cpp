#include "Menus.h"

#include "FrameStyle.h"
#include "PopupMenu/MenuParse.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QToolButton>

Menus::Menus(const MenuCommands& commands, QToolButton* button, QWidget* window)
    : QObject(window)
    , m_commands(commands)
    , m_button(button)
    , m_window(window)
{
    if (QSystemTrayIcon::isSystemTrayAvailable())
        m_icon = new QSystemTrayIcon(FrameStyle::picture(), this);
    m_customisation = MENU::MenuParse().GetOperator();
    build();
    keepTranslated(button, [this] { translate(); });
}

void Menus::translate()
{
    m_button->setToolTip(text("IDS_MENU"));
    m_button->setAccessibleName(m_button->toolTip());
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

bool Menus::hasTray() const
{
    return m_icon && m_icon->isVisible();
}

void Menus::build()
{
    const QString file = QStringLiteral("Menus.xml");
    delete m_main;
    m_main = new XmlMenu(file, QStringLiteral("MainMenu"), m_commands, m_window);
    m_main->useShortcutsIn(m_window);
    m_button->setMenu(m_main->menu());
    m_button->setVisible(m_main->menu());

    if (!m_icon)
        return;
    delete m_tray;
    m_tray = new XmlMenu(file, QStringLiteral("TrayMenu"), m_commands, m_window);
    showInTray(m_tray);
}

void Menus::showInTray(XmlMenu* menu)
{
    m_icon->setContextMenu(menu->menu());
    m_icon->setToolTip(QGuiApplication::applicationDisplayName());
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            Q_EMIT trayClicked();
    });
    m_icon->show();
}
