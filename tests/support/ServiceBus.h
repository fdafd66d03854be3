#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QVariantList>

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
    void killModemManager() { end(m_modemManager); }

    /// Gives ModemManager a modem behind these ports.
    bool addModem(const QString& name, const QByteArray& port);

    /// Starts a NetworkManager that does what the test says, see networkmanager_modem.py.
    bool startNetworkManager();
    void killNetworkManager() { end(m_networkManager); }

    /// Calls a method of that NetworkManager's control interface. Returns what it answers.
    QString controlNetwork(const QString& method, const QVariantList& arguments = {});

    /// The last lines of ModemManager's log.
    QByteArray log() const;

private:
    /// Starts a program and waits until it has its name on the bus.
    bool start(QProcess& process, const QString& service, const QString& program,
               const QStringList& arguments);
    static void end(QProcess& process);
    QString call(const QString& service, const QString& path, const QString& method,
                 const QVariantList& arguments) const;

    QTemporaryDir m_folder;
    QString m_address;
    QProcess m_bus;
    QProcess m_modemManager;
    QProcess m_networkManager;
};
