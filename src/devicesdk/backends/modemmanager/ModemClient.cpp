#include "backends/modemmanager/ModemClient.h"

#include "Log.h"
#include "backends/dbus/DBusResults.h"
#include "backends/modemmanager/ManagedModem.h"
#include "managerproxy.h"
#include "modemproxy.h"
#include "qrvl.h"

#include <QDBusPendingCallWatcher>

#include <ModemManager.h>
#include <algorithm>

namespace {

constexpr int EnablingTimeout = 120 * 1000;

QString modemInterface()
{
    return QStringLiteral(MM_DBUS_INTERFACE_MODEM);
}

} // namespace

ModemClient::ModemClient(const QDBusConnection& bus, const Customization& rules)
    : m_rules(rules)
    , m_mirror(bus, QStringLiteral(MM_DBUS_SERVICE), QStringLiteral(MM_DBUS_PATH),
               {QStringLiteral(MM_DBUS_INTERFACE_MODEM), QStringLiteral(MM_DBUS_INTERFACE_MODEM_MODEM3GPP),
                QStringLiteral(MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD),
                QStringLiteral(MM_DBUS_INTERFACE_MODEM_MESSAGING), QStringLiteral(MM_DBUS_INTERFACE_SIM),
                QStringLiteral(MM_DBUS_INTERFACE_SMS)})
    , m_requests(m_mirror, [this](const QString& path) { return messagesOf(path); })
    , m_network(bus)
{
    m_publishing.setSingleShot(true);
    connect(&m_publishing, &QTimer::timeout, this, &ModemClient::publish);
    connect(&m_mirror, &DBusMirror::objectChanged, this, &ModemClient::noteChange);
    connect(&m_mirror, &DBusMirror::presenceChanged, this, &ModemClient::schedule);
    connect(&m_requests, &ModemRequests::ended, this, &ModemClient::noteEnd);
    connect(&m_requests, &ModemRequests::networkChosen, this, &ModemClient::noteChoice);
    connect(&m_network, &NetworkClient::ended, this, &ModemClient::noteEnd);
    connect(&m_network, &NetworkClient::changed, this, &ModemClient::schedule);
}

void ModemClient::start()
{
    m_mirror.start();
    m_network.start();
}

/// Once ModemManager is gone, so are its modems, whatever the bus says of a call that was still under way.
void ModemClient::noteEnd(const QString& modem, const RequestEnd& end)
{
    const RequestEnd gone = {end.number, QRVL_ERROR_NO_DEVICE, {}};
    m_ends.emplace_back(modem, m_mirror.isPresent() || end.result == QRVL_OK ? end : gone);
    schedule();
}

/// ModemManager does not report how a modem chooses its network, so this is only known after a request.
void ModemClient::noteChoice(const QString& modem, bool isManual)
{
    const auto followed = m_modems.find(modem);
    if (followed != m_modems.end())
        followed->second.networkChoice = isManual ? QStringLiteral("manual") : QStringLiteral("automatic");
}

void ModemClient::begin(const Request& request)
{
    const QString path = pathOf(request.device);
    if (!path.isEmpty()) // otherwise the service ends the request
        m_requests.begin(request, path, m_network);
}

void ModemClient::detect()
{
    ManagerProxy(m_mirror.service(), QStringLiteral(MM_DBUS_PATH), m_mirror.bus()).ScanDevices();
}

void ModemClient::noteChange(const QString& path)
{
    for (auto& [modemPath, modem] : m_modems) {
        if (modemPath == path)
            modem.messages.noteModemChange();
        if (modem.messages.contains(path))
            modem.messages.noteChange();
    }
    schedule();
}

void ModemClient::publish()
{
    if (m_mirror.isPresent() && m_requests.isUnlockingRemovedModem())
        return; // until the request has ended
    followModems();
    Q_EMIT changed(state(), takeEnds());
}

void ModemClient::followModems()
{
    const QStringList paths = m_mirror.paths(modemInterface());
    for (auto modem = m_modems.begin(); modem != m_modems.end();) {
        const bool isThere = paths.contains(modem->first);
        if (!isThere)
            forget(modem->second);
        modem = isThere ? std::next(modem) : m_modems.erase(modem);
    }
    for (const QString& path : paths) {
        Followed& modem = m_modems[path];
        if (modem.id == 0)
            modem.id = idOf(path);
        follow(path, modem);
    }
}

/// Its paths may be given to other objects.
void ModemClient::forget(const Followed& modem)
{
    m_mirror.forget(modem.sim);
    modem.messages.forget(m_mirror);
}

void ModemClient::follow(const QString& path, Followed& modem)
{
    const QString sim = ManagedModem::simOf(m_mirror, path);
    const bool isLocked = ManagedModem::isLocked(m_mirror, path);
    if (!sim.isEmpty() && (sim != modem.sim || isLocked != modem.isLocked))
        m_mirror.fetch(sim, QStringLiteral(MM_DBUS_INTERFACE_SIM));
    modem.sim = sim;
    modem.isLocked = isLocked;
    modem.messages.follow(m_mirror, path);
    const int state = ManagedModem::valueOf(m_mirror, path, "State").toInt();
    if (state == MM_MODEM_STATE_DISABLED && !modem.wasEnabled) {
        modem.wasEnabled = true;
        enable(path);
    }
}

/// A modem that is not enabled reports neither networks nor messages. This is tried once, because somebody may
/// disable it on purpose.
void ModemClient::enable(const QString& path)
{
    ModemProxy proxy(m_mirror.service(), path, m_mirror.bus());
    proxy.setTimeout(EnablingTimeout);
    auto* const watcher = new QDBusPendingCallWatcher(proxy.Enable(true), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher] {
        watcher->deleteLater();
        const long result = DBusResults::resultOf(watcher->error());
        if (result == QRVL_ERROR_FAILED || result == QRVL_ERROR_PERMISSION)
            qCWarning(logDeviceSdk, "A modem could not be enabled: %s",
                      qUtf8Printable(watcher->error().name()));
    });
}

/// A modem keeps its number when it is plugged in again or ModemManager is restarted. Serial numbers are not
/// always unique.
quint32 ModemClient::idOf(const QString& path)
{
    QString identity = ManagedModem::identityOf(m_mirror, path);
    const auto isTaken = [&] {
        const quint32 id = m_ids.value(identity);
        return id != 0 && std::any_of(m_modems.begin(), m_modems.end(),
                                      [&](const auto& modem) { return modem.second.id == id; });
    };
    while (isTaken())
        identity += QLatin1Char('+');
    const auto known = m_ids.constFind(identity);
    return known != m_ids.cend() ? *known : *m_ids.insert(identity, quint32(m_ids.size()) + 1);
}

Modem ModemClient::snapshot(const QString& path, Followed& followed) const
{
    Modem modem = ManagedModem::modemAt(m_mirror, path, m_rules);
    modem.id = followed.id;
    modem.name.clear(); // the path, which changes
    modem.messages = followed.messages.values(m_mirror);
    modem.trafficInterface = m_network.interfaceOf(path);
    if (!followed.networkChoice.isEmpty())
        modem.status.insert(QStringLiteral("network-choice"), followed.networkChoice);
    const ModemValues connection = m_network.values(path);
    for (auto value = connection.cbegin(); value != connection.cend(); ++value)
        modem.status.insert(value.key(), value.value());
    return modem;
}

DeviceState ModemClient::state()
{
    DeviceState state;
    state.service.insert(QStringLiteral("backend"), QStringLiteral("modemmanager"));
    if (m_mirror.isDecided() && !m_mirror.isPresent())
        state.service.insert(QStringLiteral("problem"), QStringLiteral("no-modemmanager"));
    if (m_network.isMissing())
        state.service.insert(QStringLiteral("connection-problem"), QStringLiteral("no-networkmanager"));
    for (auto& [path, modem] : m_modems) {
        const bool isKnown = modem.sim.isEmpty() ||
                             m_mirror.contains(modem.sim, QStringLiteral(MM_DBUS_INTERFACE_SIM)) ||
                             !m_mirror.isFetching(modem.sim);
        if (isKnown)
            state.modems.append(snapshot(path, modem));
    }
    std::sort(state.modems.begin(), state.modems.end(),
              [](const Modem& a, const Modem& b) { return a.id < b.id; });
    return state;
}

/// The requests whose effects are in state(), which lacks messages that are still being read.
QVector<RequestEnd> ModemClient::takeEnds()
{
    const auto isWaiting = [this](const std::pair<QString, RequestEnd>& end) {
        const ModemMessages* const messages = messagesOf(end.first);
        return messages && messages->isReading(m_mirror);
    };
    const auto ready = std::stable_partition(m_ends.begin(), m_ends.end(), isWaiting);
    QVector<RequestEnd> ends;
    for (auto end = ready; end != m_ends.end(); ++end)
        ends.append(end->second);
    m_ends.erase(ready, m_ends.end());
    return ends;
}

QString ModemClient::pathOf(quint32 id) const
{
    const auto found = std::find_if(m_modems.begin(), m_modems.end(),
                                    [&](const auto& modem) { return modem.second.id == id; });
    return found == m_modems.end() ? QString() : found->first;
}

ModemMessages* ModemClient::messagesOf(const QString& path)
{
    const auto found = m_modems.find(path);
    return found == m_modems.end() ? nullptr : &found->second.messages;
}
