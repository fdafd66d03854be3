#include "ServiceBus.h"

#include "TestFiles.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QtTest>

namespace {

const char Connection[] = "test";
const char ModemService[] = "org.freedesktop.ModemManager1";
const char ModemPath[] = "/org/freedesktop/ModemManager1";
const char NetworkService[] = "org.freedesktop.NetworkManager";
const char Mock[] = "org.freedesktop.DBus.Mock.";

QStringList mockOf(const QString& fileName)
{
    return {"-m", "dbusmock", "--session", "--template", SERVICE_TEMPLATES "/" + fileName};
}

} // namespace

ServiceBus::ServiceBus()
{
    qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
    m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    if (!m_bus.waitForReadyRead())
        qFatal("dbus-daemon does not start");
    m_address = QString::fromLocal8Bit(m_bus.readLine().trimmed());
    QDBusConnection::connectToBus(m_address, Connection);
}

ServiceBus::~ServiceBus()
{
    end(m_modemManager);
    end(m_networkManager);
    QDBusConnection::disconnectFromBus(Connection);
    end(m_bus);
}

bool ServiceBus::start(QProcess& process, const QString& service, const QString& program,
                       const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
    environment.remove("LD_PRELOAD");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(m_folder.filePath("log"), QIODevice::Append);
    process.start(program, arguments);
    const QDBusConnection bus(Connection);
    return QTest::qWaitFor([&] { return bus.interface()->isServiceRegistered(service).value(); }, 20000);
}

bool ServiceBus::startModemManager()
{
    return start(m_modemManager, ModemService, "ModemManager",
                 {"--test-session", "--test-enable", "--test-no-udev", "--test-no-suspend-resume",
                  "--test-no-qrtr", "--debug"});
}

bool ServiceBus::startFakeModemManager()
{
    return start(m_modemManager, ModemService, "/usr/bin/python3", mockOf("modemmanager_fake.py"));
}

bool ServiceBus::startNetworkManager()
{
    return start(m_networkManager, NetworkService, "/usr/bin/python3", mockOf("networkmanager_modem.py"));
}

void ServiceBus::end(QProcess& process)
{
    process.kill();
    process.waitForFinished();
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
