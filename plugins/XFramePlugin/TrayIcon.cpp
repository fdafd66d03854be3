#include "TrayIcon.h"

#include "FrameStyle.h"

#include <QApplication>
#include <QSystemTrayIcon>

#include <algorithm>

namespace {

/// On X11, Qt shows the icon as soon as there is a notification area. Elsewhere it only complains if there is none.
bool canAppear()
{
    return QSystemTrayIcon::isSystemTrayAvailable() ||
           QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

TrayIcon::TrayIcon(QObject* parent)
    : QObject(parent)
    , m_icon(new QSystemTrayIcon(this))
{
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            Q_EMIT clicked();
    });
}

bool TrayIcon::isShown() const
{
    return m_icon->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIcon::setMenu(QMenu* menu)
{
    m_icon->setContextMenu(menu);
}

void TrayIcon::showStatus(const TrayStatus& status)
{
    m_icon->setIcon(trayPicture(status));
    m_icon->setToolTip(trayText(status));
    if (!m_icon->isVisible() && canAppear())
        m_icon->show();
}

void TrayIcon::keepShown()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool wasHidden = std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->inherits("QSystemTrayIconSys") && !window->isVisible();
    });
    if (!wasHidden)
        return;
    m_icon->hide();
    m_icon->show();
}

void TrayIcon::notify(const QString& title, const QString& body)
{
    m_icon->showMessage(title, body, FrameStyle::picture());
}
