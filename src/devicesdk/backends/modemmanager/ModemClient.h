#pragma once

#include "backends/dbus/DBusMirror.h"
#include "backends/modemmanager/Customization.h"
#include "backends/modemmanager/ModemMessages.h"
#include "backends/modemmanager/ModemRequests.h"
#include "backends/networkmanager/NetworkClient.h"

#include <QTimer>

#include <map>
#include <vector>

/// Follows ModemManager: the modems that it has, and requests to them. Lives on one thread with an event loop.
class ModemClient : public QObject
{
    Q_OBJECT

public:
    ModemClient(const QDBusConnection& bus, const Customization& rules);

    /// Begins to follow ModemManager and NetworkManager, which may start later. Call it once.
    void start();

    /// Begins a request. changed() reports its end, except for a modem that has gone: DeviceService ends its requests.
    void begin(const Request& request);

    /// Asks ModemManager to look for modems that do not report themselves. changed() reports those that it finds.
    void detect();

Q_SIGNALS:
    /// The modems and values of the service are these now, and these requests have ended.
    void changed(const DeviceState& state, const QVector<RequestEnd>& ends);

private:
    struct Followed
    {
        quint32 id = 0;
        QString sim;
        bool isLocked = false;
        bool wasEnabled = false; // this was tried
        QString networkChoice;   // empty while it is unknown
        ModemMessages messages;
    };

    void noteChange(const QString& path);
    void noteChoice(const QString& modem, bool isManual);
    void noteEnd(const QString& modem, const RequestEnd& end);
    void schedule() { m_publishing.start(); }
    void publish();
    void followModems();
    void follow(const QString& path, Followed& modem);
    void forget(const Followed& modem);
    void enable(const QString& path);
    quint32 idOf(const QString& path);
    Modem snapshot(const QString& path, Followed& modem) const;
    DeviceState state();
    QVector<RequestEnd> takeEnds();
    QString pathOf(quint32 id) const;
    ModemMessages* messagesOf(const QString& path);

    Customization m_rules;
    DBusMirror m_mirror;
    ModemRequests m_requests;
    NetworkClient m_network;
    std::map<QString, Followed> m_modems;               // by path
    QHash<QString, quint32> m_ids;                      // by identity, of all modems that were ever there
    std::vector<std::pair<QString, RequestEnd>> m_ends; // with the paths of the modems
    QTimer m_publishing;                                // collects changes that arrive together
};
