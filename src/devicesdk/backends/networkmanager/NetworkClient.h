#pragma once

#include "backends/dbus/DBusMirror.h"
#include "devices/Modem.h"
#include "devices/Request.h"

#include <QHash>

class NetworkDevice;

/// Connects modems through NetworkManager, and follows their connections, whoever made them. Lives on one
/// thread with an event loop.
class NetworkClient : public QObject
{
    Q_OBJECT

public:
    explicit NetworkClient(const QDBusConnection& bus);

    void start() { m_mirror.start(); }

    /// Whether NetworkManager is missing.
    bool isMissing() const { return m_mirror.isDecided() && !m_mirror.isPresent(); }

    /// The values that begin with "connection", of the modem with that path in ModemManager. Empty if
    /// NetworkManager does not know it.
    ModemValues values(const QString& modem) const;

    /// The network interface whose traffic is that of the modem; empty if it is not connected.
    QString interfaceOf(const QString& modem) const;

    /// Begins a request to connect or disconnect. ended() reports its end, perhaps before this returns.
    void begin(const Request& request, const QString& modem);

Q_SIGNALS:
    /// A connection, or whether NetworkManager is there, has changed.
    void changed();

    void ended(const QString& modem, const RequestEnd& end);

private Q_SLOTS:
    void onStateChanged(uint state, uint before, uint reason, const QDBusMessage& message);

private:
    /// What is known about the connection of a modem besides the values of NetworkManager.
    struct Link
    {
        quint32 connecting = 0;    // the request under way
        quint32 disconnecting = 0; // likewise
        quint32 activating = 0;    // the request whose call to activate has not been answered
        long error = 0;
        qint64 since = 0; // when it was connected, in seconds since 1970
        QString path;     // of the device
    };

    void connectModem(const Request& request, const QString& modem);
    void disconnectModem(const Request& request, const QString& modem);
    void activate(const Request& request, const QString& modem, const NetworkDevice& device);
    void awaitActivation(const QDBusPendingCall& call, const QString& modem, QString password);
    void finishActivation(const QString& modem, const QDBusPendingCall& call);
    void deactivate(const QString& modem, const QString& activeConnection);
    void endConnecting(const QString& modem, long result);
    void endDisconnecting(const QString& modem, long result);
    void finish(const QString& modem, quint32& number, long result);
    void follow(const QString& path);
    void lose(const QString& modem, long result);
    void loseService();
    QString modemOf(const QString& device) const;
    NetworkDevice deviceOf(const QString& modem) const;

    DBusMirror m_mirror;
    QHash<QString, Link> m_links; // by the modem's path in ModemManager
};
