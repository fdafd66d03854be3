#pragma once

#include <QProcess>
#include <QTemporaryDir>

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

    /// Ends ModemManager as if it had crashed.
    void killModemManager();

    /// Gives ModemManager a modem behind these ports.
    bool addModem(const QString& name, const QByteArray& port);

    /// The last lines of ModemManager's log.
    QByteArray log() const;

private:
    bool waitForName(const QString& name) const;

    QTemporaryDir m_folder;
    QString m_address;
    QProcess m_bus;
    QProcess m_modemManager;
};
