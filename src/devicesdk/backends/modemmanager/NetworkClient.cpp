#include "backends/modemmanager/NetworkClient.h"

#include "Log.h"
#include "backends/modemmanager/ConnectionSettings.h"
#include "backends/modemmanager/DBusResults.h"
#include "backends/modemmanager/NetworkDevice.h"
#include "backends/modemmanager/NetworkStates.h"
#include "networkproxy.h"
#include "qrvl.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDateTime>

#include <algorithm>
#include <utility>

namespace {

const char Service[] = "org.freedesktop.NetworkManager";
const char Path[] = "/org/freedesktop/NetworkManager";
const char Nothing[] = "/"; // a path

} // namespace

NetworkClient::NetworkClient(const QDBusConnection& bus)
    : m_mirror(bus, QLatin1String(Service), QStringLiteral("/org/freedesktop"), NetworkDevice::interfaces())
{
    connect(&m_mirror, &DBusMirror::objectChanged, this, &NetworkClient::follow);
    connect(&m_mirror, &DBusMirror::presenceChanged, this, [this] {
        if (!m_mirror.isPresent())
            loseService();
        Q_EMIT changed();
    });
    m_mirror.connectTo(QLatin1String(NetworkDevice::Interface), QStringLiteral("StateChanged"), this,
                       SLOT(onStateChanged(uint, uint, uint, QDBusMessage)));
}

ModemValues NetworkClient::values(const QString& modem) const
{
    const NetworkDevice device = deviceOf(modem);
    if (!device.isKnown())
        return {};
    const Link link = m_links.value(modem);
    const bool isWaiting = link.connecting != 0 && device.state() != NetworkStates::Activated;
    const QString state =
        isWaiting ? QStringLiteral("connecting") : NetworkStates::connectionText(device.state());
    ModemValues values = {{QStringLiteral("connection"), state}};
    if (link.error != QRVL_OK && state == QLatin1String("disconnected"))
        values.insert(QStringLiteral("connection.error"), QString::number(link.error));
    if (state != QLatin1String("connected"))
        return values;
    const std::pair<const char*, QString> details[] = {
        {"connection.since", link.since != 0 ? QString::number(link.since) : QString()},
        {"connection.address", device.address()},
        {"connection.name", device.connectionName()},
    };
    for (const auto& [key, value] : details) {
        if (!value.isEmpty())
            values.insert(QLatin1String(key), value);
    }
    return values;
}

QString NetworkClient::interfaceOf(const QString& modem) const
{
    const NetworkDevice device = deviceOf(modem);
    return device.state() == NetworkStates::Activated ? device.interface() : QString();
}

void NetworkClient::begin(const Request& request, const QString& modem)
{
    if (request.kind == Request::Connect)
        connectModem(request, modem);
    else
        disconnectModem(request, modem);
}

void NetworkClient::connectModem(const Request& request, const QString& modem)
{
    const NetworkDevice device = deviceOf(modem);
    Link& link = m_links[modem];
    link.connecting = request.number;
    link.error = QRVL_OK;
    if (!m_mirror.isPresent())
        return endConnecting(modem, QRVL_ERROR_SERVICE);
    if (!device.isKnown())
        return endConnecting(modem, QRVL_ERROR_UNSUPPORTED);
    if (device.state() == NetworkStates::Activated)
        return endConnecting(modem, QRVL_OK);
    Q_EMIT changed();
    if (!NetworkStates::isConnecting(device.state())) // otherwise another program has begun
        activate(request, modem, device);
}

/// Without an access point a connection that the user has set up already is preferred.
void NetworkClient::activate(const Request& request, const QString& modem, const NetworkDevice& device)
{
    NetworkProxy manager(m_mirror.service(), QLatin1String(Path), m_mirror.bus());
    const QDBusObjectPath devicePath(device.path()), nothing{QLatin1String(Nothing)};
    if (request.target.isEmpty() && device.isSetUp())
        return awaitActivation(manager.ActivateConnection(nothing, devicePath, nothing), modem, {});
    const QString password = request.secret.view().toString();
    const QVariantMap options = {{QStringLiteral("persist"), QStringLiteral("volatile")}};
    awaitActivation(manager.AddAndActivateConnection2(ConnectionSettings::newFor(request, password),
                                                      devicePath, nothing, options),
                    modem, password);
}

/// The success of the call is only the beginning: onStateChanged() reports the end.
void NetworkClient::awaitActivation(const QDBusPendingCall& call, const QString& modem, QString password)
{
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=]() mutable {
        watcher->deleteLater();
        Secret::wipe(password);
        const long result = DBusResults::resultOf(watcher->error());
        if (result == QRVL_OK)
            return;
        qCWarning(logDeviceSdk, "NetworkManager does not connect the modem: %s",
                  qUtf8Printable(watcher->error().name()));
        endConnecting(modem, result);
    });
}

void NetworkClient::disconnectModem(const Request& request, const QString& modem)
{
    endConnecting(modem, QRVL_ERROR_CANCELLED);
    Link& link = m_links[modem];
    link.disconnecting = request.number;
    link.error = QRVL_OK;
    if (!m_mirror.isPresent())
        return endDisconnecting(modem, QRVL_ERROR_SERVICE);
    const QString active = deviceOf(modem).activeConnection();
    if (active.isEmpty())
        return endDisconnecting(modem, QRVL_OK);
    NetworkProxy manager(m_mirror.service(), QLatin1String(Path), m_mirror.bus());
    auto* const watcher =
        new QDBusPendingCallWatcher(manager.DeactivateConnection(QDBusObjectPath(active)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=] {
        watcher->deleteLater();
        if (watcher->isError() || deviceOf(modem).state() <= NetworkStates::Disconnected)
            endDisconnecting(modem, DBusResults::resultOf(watcher->error()));
    });
}

/// This signal says why, and is sent for every state, while changes of the property may be put together. A connection
/// ends when its device leaves the states in use; the states after that are not the end of the next one, which may have
/// been requested already.
void NetworkClient::onStateChanged(uint state, uint before, uint reason, const QDBusMessage& message)
{
    const auto entry = std::find_if(m_links.begin(), m_links.end(),
                                    [&](const Link& link) { return link.path == message.path(); });
    if (entry == m_links.end())
        return;
    const QString modem = entry.key();
    const bool isUsers = reason == NetworkStates::UserRequested && entry->disconnecting != 0;
    if (state == NetworkStates::Activated) {
        entry->since = QDateTime::currentSecsSinceEpoch();
        entry->error = QRVL_OK;
        endConnecting(modem, QRVL_OK);
    } else if (NetworkStates::isInUse(before) && !NetworkStates::isInUse(state)) {
        entry->error = isUsers ? long(QRVL_OK) : NetworkStates::resultOf(reason);
        endConnecting(modem, entry->error);
    }
    if (state <= NetworkStates::Disconnected)
        endDisconnecting(modem, QRVL_OK);
    Q_EMIT changed();
}

void NetworkClient::endConnecting(const QString& modem, long result)
{
    Link& link = m_links[modem];
    if (link.connecting != 0 && result != QRVL_ERROR_CANCELLED)
        link.error = result;
    finish(modem, link.connecting, result);
}

void NetworkClient::endDisconnecting(const QString& modem, long result)
{
    finish(modem, m_links[modem].disconnecting, result);
}

/// Reads the device first, whose new values may not have been sent yet.
void NetworkClient::finish(const QString& modem, quint32& number, long result)
{
    const RequestEnd end = {std::exchange(number, 0), result, {}};
    if (end.number == 0)
        return;
    const NetworkDevice device = deviceOf(modem);
    if (!device.isKnown())
        Q_EMIT ended(modem, end);
    else
        m_mirror.fetch(device.path(), QLatin1String(NetworkDevice::Interface),
                       [=] { Q_EMIT ended(modem, end); });
}

void NetworkClient::follow(const QString& path)
{
    const NetworkDevice device(m_mirror, path);
    if (device.isModem()) {
        Link& link = m_links[device.modem()];
        if (link.path != path)
            link = {};
        link.path = path;
    }
    Q_EMIT changed();
}

void NetworkClient::loseService()
{
    const QStringList modems = m_links.keys();
    for (const QString& modem : modems) {
        endConnecting(modem, QRVL_ERROR_SERVICE);
        endDisconnecting(modem, QRVL_ERROR_SERVICE);
    }
    m_links.clear();
}

NetworkDevice NetworkClient::deviceOf(const QString& modem) const
{
    return {m_mirror, m_links.value(modem).path};
}
