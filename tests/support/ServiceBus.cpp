#include "ServiceBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QStandardPaths>
#include <QtTest>

namespace {

const char Connection[] = "test";
const char Service[] = "org.freedesktop.ModemManager1";

QString programPath(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin", "/usr/libexec"}) : found;
}

} // namespace

ServiceBus::ServiceBus()
{
    m_bus.start(programPath("dbus-daemon"), {"--session", "--nofork", "--print-address"});
    if (!m_bus.waitForStarted() || !m_bus.waitForReadyRead())
        qFatal("dbus-daemon does not start");
    m_address = QString::fromLocal8Bit(m_bus.readLine().trimmed());
    QDBusConnection::connectToBus(m_address, Connection);
}

ServiceBus::~ServiceBus()
{
    killModemManager();
    killNetworkManager();
    QDBusConnection::disconnectFromBus(Connection);
    m_bus.kill();
    m_bus.waitForFinished();
}

void ServiceBus::start(QProcess& process, const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
    environment.remove("LD_PRELOAD");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(m_folder.filePath("log"), QIODevice::Append);
    process.start(program.startsWith(QLatin1Char('/')) ? program : programPath(program), arguments);
}

bool ServiceBus::startModemManager()
{
    start(m_modemManager, "ModemManager",
          {"--test-session", "--test-enable", "--test-no-udev", "--test-no-suspend-resume", "--test-no-qrtr",
           "--debug"});
    return waitForName(Service);
}

void ServiceBus::killModemManager()
{
    m_modemManager.kill();
    m_modemManager.waitForFinished();
}

bool ServiceBus::startNetworkManager()
{
    start(m_networkManager, "/usr/bin/python3",
          {"-m", "dbusmock", "--session", "--template", SERVICE_TEMPLATES "/networkmanager_modem.py"});
    return waitForName("org.freedesktop.NetworkManager");
}

bool ServiceBus::startFakeModemManager()
{
    start(m_modemManager, "/usr/bin/python3",
          {"-m", "dbusmock", "--session", "--template", SERVICE_TEMPLATES "/modemmanager_fake.py"});
    return waitForName(Service);
}

void ServiceBus::killNetworkManager()
{
    m_networkManager.kill();
    m_networkManager.waitForFinished();
}

QString ServiceBus::controlNetwork(const QString& method, const QVariantList& arguments)
{
    return control("org.freedesktop.NetworkManager", "/org/freedesktop", method, arguments);
}

QString ServiceBus::controlModems(const QString& method, const QVariantList& arguments)
{
    return control(Service, "/org/freedesktop/ModemManager1", method, arguments);
}

QString ServiceBus::control(const QString& service, const QString& path, const QString& method,
                            const QVariantList& arguments) const
{
    auto call = QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Mock", method);
    call.setArguments(arguments);
    const QDBusMessage reply = QDBusConnection(Connection).call(call);
    return reply.type() == QDBusMessage::ErrorMessage ? reply.errorMessage()
                                                      : reply.arguments().value(0).toString();
}

bool ServiceBus::addModem(const QString& name, const QByteArray& port)
{
    auto call = QDBusMessage::createMethodCall(Service, "/org/freedesktop/ModemManager1",
                                               "org.freedesktop.ModemManager1.Test", "SetProfile");
    call << name << "generic" << QStringList(port);
    return QDBusConnection(Connection).call(call).type() == QDBusMessage::ReplyMessage;
}

QByteArray ServiceBus::log() const
{
    QFile file(m_folder.filePath("log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().right(6000) : QByteArray();
}

bool ServiceBus::waitForName(const QString& name) const
{
    const QDBusConnection bus(Connection);
    return QTest::qWaitFor([&] { return bus.interface()->isServiceRegistered(name).value(); }, 20000);
}
