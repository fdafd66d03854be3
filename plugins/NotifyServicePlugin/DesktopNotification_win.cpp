#include "DesktopNotification.h"

#include "support/Look.h"

#include <QGuiApplication>
#include <QSystemTrayIcon>

/// The icon is in the taskbar as long as there is something that the user has not seen.
class DesktopNotification::Private
{
public:
    QSystemTrayIcon icon;
};

DesktopNotification::DesktopNotification()
    : d(std::make_unique<Private>())
{
    connect(&d->icon, &QSystemTrayIcon::messageClicked, this, &DesktopNotification::activated);
    connect(&d->icon, &QSystemTrayIcon::activated, this, &DesktopNotification::activated);
}

DesktopNotification::~DesktopNotification() = default;

void DesktopNotification::show(const QString& title, const QString& body, const char*)
{
    const QIcon picture = Look::tileIcon(Look::Sign::Message);
    d->icon.setIcon(picture);
    d->icon.setToolTip(QGuiApplication::applicationDisplayName());
    d->icon.show();
    d->icon.showMessage(title, body, picture);
}

void DesktopNotification::close()
{
    d->icon.hide();
}
