#pragma once

#include "ServiceBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>

/// A session bus for this process, and on it a desktop that accepts notifications.
class NotificationDaemon
{
public:
    /// Starts the desktop. This process must not have used its session bus before.
    bool start()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toLocal8Bit());
        return m_bus.startMock(Service, "notification_daemon");
    }

    /// The arguments of every call of a method since the start.
    static QVector<QVariantList> calls(const QString& method)
    {
        QVector<QVariantList> found;
        const QDBusMessage answer = call("GetMethodCalls", {method});
        const auto entries = answer.arguments().value(0).value<QDBusArgument>();
        for (entries.beginArray(); !entries.atEnd(); entries.endStructure()) {
            quint64 time = 0;
            found.append(QVariantList());
            entries.beginStructure();
            entries >> time >> found.last();
        }
        entries.endArray(); // frees it
        return found;
    }

    /// Reports that the user has clicked on a notification.
    static void click(uint notification, const QString& action = "default")
    {
        call("EmitSignal", {Service, "ActionInvoked", "us", QVariantList{notification, action}});
    }

private:
    static constexpr QLatin1String Service{"org.freedesktop.Notifications"};

    /// Calls a method of the stand-in for the desktop.
    static QDBusMessage call(const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(Service, "/org/freedesktop/Notifications",
                                                              "org.freedesktop.DBus.Mock", method);
        message.setArguments(arguments);
        return QDBusConnection::sessionBus().call(message);
    }

    ServiceBus m_bus;
};
