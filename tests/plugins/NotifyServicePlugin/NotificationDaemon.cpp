#include "NotificationDaemon.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QtTest>

namespace {

constexpr int LongestWait = 20000; // milliseconds

const QString Service = "org.freedesktop.Notifications";

/// Calls a method of the stand-in for the desktop.
QDBusMessage call(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Service, "/org/freedesktop/Notifications",
                                                          "org.freedesktop.DBus.Mock", method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

void end(QProcess& process)
{
    process.kill();
    process.waitForFinished();
}

} // namespace

NotificationDaemon::~NotificationDaemon()
{
    end(m_desktop);
    end(m_bus);
}

bool NotificationDaemon::start()
{
    // They must not outlive a test that crashes.
    m_bus.start("setpriv", {"--pdeathsig=KILL", "dbus-daemon", "--session", "--nofork", "--print-address",
                            "--address=unix:dir=" + m_folder.path()});
    if (!m_bus.waitForReadyRead(LongestWait))
        return false;
    const QByteArray address = m_bus.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    m_desktop.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_desktop.start("setpriv",
                    {"--pdeathsig=KILL", PYTHON, "-m", "dbusmock", "--template", "notification_daemon"});
    const auto isThere = [] {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(Service).value();
    };
    return m_desktop.waitForStarted() && QTest::qWaitFor(isThere, LongestWait);
}

QVector<QVariantList> NotificationDaemon::calls(const QString& method)
{
    QVector<QVariantList> found;
    const QDBusMessage answer = call("GetMethodCalls", {method});
    const auto entries = answer.arguments().value(0).value<QDBusArgument>();
    entries.beginArray();
    while (!entries.atEnd()) {
        quint64 time = 0;
        QVariantList arguments;
        entries.beginStructure();
        entries >> time >> arguments;
        entries.endStructure();
        found.append(arguments);
    }
    entries.endArray();
    return found;
}

void NotificationDaemon::click(uint notification, const QString& action)
{
    call("EmitSignal", {Service, "ActionInvoked", "us", QVariantList{notification, action}});
}
