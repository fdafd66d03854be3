#pragma once

#include "Server.h"

#include <QTemporaryDir>
#include <QVariantList>

#include <map>

/// A message bus of its own, and services on it, for tests. When this object is destroyed they end.
class ServiceBus
{
public:
    ServiceBus();
    ~ServiceBus();
    Q_DISABLE_COPY_MOVE(ServiceBus)

    QString address() const { return m_address; }

    /// Starts ModemManager in its test mode and waits until it has its name.
    bool startModemManager();

    /// Starts a ModemManager that does what the test says, see modemmanager_fake.py. Not together with the other.
    bool startFakeModemManager();

    /// Calls a method of its control interface. Returns what it answers.
    QString controlModems(const QString& method, const QVariantList& arguments);

    /// Ends ModemManager as if it had crashed.
    void killModemManager() { m_servers[ModemService].crash(); }

    /// Gives ModemManager a modem behind these ports.
    bool addModem(const QString& name, const QByteArray& port);

    /// Starts a NetworkManager that does what the test says, see networkmanager_modem.py.
    bool startNetworkManager();
    void killNetworkManager() { m_servers[NetworkService].crash(); }
    void haltNetworkManager(bool isHalted) { m_servers[NetworkService].halt(isHalted); }

    /// Calls a method of that NetworkManager's control interface. Returns what it answers.
    QString controlNetwork(const QString& method, const QVariantList& arguments = {});

    /// The last lines of ModemManager's log.
    QByteArray log() const;

    /// Starts a service by python3-dbusmock, from one of its templates or a file.
    bool startMock(const QString& service, const QString& mock);

private:
    static constexpr QLatin1String ModemService{"org.freedesktop.ModemManager1"};
    static constexpr QLatin1String NetworkService{"org.freedesktop.NetworkManager"};

    /// Starts a program and waits until it has its name on the bus.
    bool start(const QString& service, const QStringList& command);
    QString call(const QString& service, const QString& path, const QString& method,
                 const QVariantList& arguments) const;

    QTemporaryDir m_folder;
    QString m_address;
    Server m_bus;
    std::map<QString, Server> m_servers; // by name on the bus
};
