#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QVariant>
#include <QVector>

/// A session bus for this process, and on it a desktop that accepts notifications.
class NotificationDaemon
{
public:
    ~NotificationDaemon();

    /// Starts both. This process must not have used its session bus before.
    bool start();

    /// The arguments of every call of a method since the start.
    static QVector<QVariantList> calls(const QString& method);

    /// Reports that the user has clicked on a notification.
    static void click(uint notification, const QString& action = QStringLiteral("default"));

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_desktop;
};
