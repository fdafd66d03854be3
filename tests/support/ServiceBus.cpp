#include "ServiceBus.h"

#include "TestFiles.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QtTest>

namespace {

const char Connection[] = "test";
const char ModemPath[] = "/org/freedesktop/ModemManager1";
const char Mock[] = "org.freedesktop.DBus.Mock.";

} // namespace

ServiceBus::ServiceBus()
{
    qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
    m_bus.run(
        {"dbus-daemon", "--session", "--nofork", "--print-address", "--address=unix:dir=" + m_folder.path()});
    if (!m_bus.waitForReadyRead())
        qFatal("dbus-daemon does not start");
    m_address = QString::fromLocal8Bit(m_bus.readLine().trimmed());
    QDBusConnection::connectToBus(m_address, Connection);
}

ServiceBus::~ServiceBus()
{
    QDBusConnection::disconnectFromBus(Connection);
}

bool ServiceBus::start(const QString& service, const QStringList& command)
{
    Server& server = m_servers[service];
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
    environment.remove("LD_PRELOAD");
    server.setProcessEnvironment(environment);
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.setStandardOutputFile(m_folder.filePath("log"), QIODevice::Append);
    server.run(command);
    const QDBusConnection bus(Connection);
    return QTest::qWaitFor([&] { return bus.interface()->isServiceRegistered(service).value(); }, 30000);
}

bool ServiceBus::startModemManager()
{
    return start(ModemService, {"ModemManager", "--test-session", "--test-enable", "--test-no-udev",
                                "--test-no-suspend-resume", "--test-no-qrtr", "--debug"});
}

bool ServiceBus::startMock(const QString& service, const QString& mock)
{
    // Debian's Python has the modules that Debian packages.
    return start(service, {"/usr/bin/python3", "-m", "dbusmock", "--session", "--template", mock});
}

bool ServiceBus::startFakeModemManager()
{
    return startMock(ModemService, SERVICE_TEMPLATES "/modemmanager_fake.py");
}

bool ServiceBus::startNetworkManager()
{
    return startMock(NetworkService, SERVICE_TEMPLATES "/networkmanager_modem.py");
}

QString ServiceBus::controlModems(const QString& method, const QVariantList& arguments)
{
    return call(ModemService, ModemPath, Mock + method, arguments);
}

QString ServiceBus::controlNetwork(const QString& method, const QVariantList& arguments)
{
    return call(NetworkService, "/org/freedesktop", Mock + method, arguments);
}

bool ServiceBus::addModem(const QString& name, const QByteArray& port)
{
    return call(ModemService, ModemPath, "org.freedesktop.ModemManager1.Test.SetProfile",
                {name, "generic", QStringList(port)})
        .isEmpty();
}

/// Returns the answer, or the message of an error.
QString ServiceBus::call(const QString& service, const QString& path, const QString& method,
                         const QVariantList& arguments) const
{
    auto call =
        QDBusMessage::createMethodCall(service, path, method.section('.', 0, -2), method.section('.', -1));
    call.setArguments(arguments);
    const QDBusMessage reply = QDBusConnection(Connection).call(call);
    return reply.type() == QDBusMessage::ErrorMessage ? reply.errorMessage()
                                                      : reply.arguments().value(0).toString();
}

QByteArray ServiceBus::log() const
{
    return contentOf(m_folder.filePath("log")).right(6000);
}
