#pragma once

#include "Part.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <QTemporaryDir>

/// A session bus for this process, and on it a desktop that accepts notifications.
class NotificationDaemon
{
public:
    ~NotificationDaemon()
    {
        for (QProcess* process : {&m_desktop, &m_bus}) {
            process->kill();
            process->waitForFinished();
        }
    }

    /// Starts both. This process must not have used its session bus before.
    bool start()
    {
        run(m_bus, {"dbus-daemon", "--session", "--nofork", "--print-address",
                    "--address=unix:dir=" + m_folder.path()});
        if (!m_bus.waitForReadyRead(LongestWait))
            return false;
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
        run(m_desktop, {PYTHON, "-m", "dbusmock", "--template", "notification_daemon"});
        const auto isThere = [] {
            return QDBusConnection::sessionBus().interface()->isServiceRegistered(Service).value();
        };
        return m_desktop.waitForStarted() && QTest::qWaitFor(isThere, LongestWait);
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

    /// It must not outlive a test that crashes.
    static void run(QProcess& process, const QStringList& command)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start("setpriv", QStringList("--pdeathsig=KILL") + command);
    }

    /// Calls a method of the stand-in for the desktop.
    static QDBusMessage call(const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(Service, "/org/freedesktop/Notifications",
                                                              "org.freedesktop.DBus.Mock", method);
        message.setArguments(arguments);
        return QDBusConnection::sessionBus().call(message);
    }

    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_desktop;
};
