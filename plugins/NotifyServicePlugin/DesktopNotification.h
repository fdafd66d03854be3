#pragma once

#include <QObject>

#include <memory>

/// A notification that the desktop shows: through the notification service of the desktop on Linux, as a balloon of
/// an icon in the taskbar on Windows. If the desktop shows none, nothing is reported. GUI thread.
class DesktopNotification : public QObject
{
    Q_OBJECT

public:
    DesktopNotification();

    /// Withdraws the notification.
    ~DesktopNotification() override;

    /// Shows a notification; it replaces the previous one. Returns without waiting for the desktop.
    /// @param title, body plain text
    /// @param category    what it is about, in the words of desktops: "im.received", "device"
    void show(const QString& title, const QString& body, const char* category);

    /// Withdraws the notification, if the user has not closed it already.
    void close();

Q_SIGNALS:
    /// The user has clicked on the notification.
    void activated();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
