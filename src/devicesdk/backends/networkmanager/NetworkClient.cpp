#include "backends/networkmanager/NetworkClient.h"

#include "Log.h"
#include "backends/dbus/DBusResults.h"
#include "backends/networkmanager/ConnectionSettings.h"
#include "backends/networkmanager/NetworkDevice.h"
#include "backends/networkmanager/NetworkStates.h"
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

/// The path of the connection that was activated. It follows that of its settings, if they were added.
QString connectionIn(const QDBusMessage& reply)
{
    QString path;
    const QVariantList arguments = reply.arguments();
    for (const QVariant& argument : arguments) {
        if (argument.canConvert<QDBusObjectPath>())
            path = argument.value<QDBusObjectPath>().path();
    }
    return path;
}

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
    const bool isToConnect = request.kind == Request::Connect;
    if (!m_mirror.isPresent())
        Q_EMIT ended(modem, {request.number, QRVL_ERROR_SERVICE, {}});
    else if (!deviceOf(modem).isKnown())
        Q_EMIT ended(modem, {request.number, isToConnect ? long(QRVL_ERROR_UNSUPPORTED) : long(QRVL_OK), {}});
    else if (isToConnect)
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

void NetworkClient::awaitActivation(const QDBusPendingCall& call, const QString& modem, QString password)
{
    Link& link = m_links[modem];
    link.activating = link.connecting;
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, number = link.activating]() mutable {
        watcher->deleteLater();
        Secret::wipe(password);
        if (m_links.value(modem).activating == number) // otherwise NetworkManager or its device has gone
            finishActivation(modem, *watcher);
    });
}

/// The success of the call is only the beginning: onStateChanged() reports the end.
void NetworkClient::finishActivation(const QString& modem, const QDBusPendingCall& call)
{
    Link& link = m_links[modem];
    const bool isCurrent = std::exchange(link.activating, 0) == link.connecting;
    const long result = DBusResults::resultOf(call.error());
    if (result != QRVL_OK)
        qCWarning(logDeviceSdk, "NetworkManager does not connect the modem: %s",
                  qUtf8Printable(call.error().name()));
    if (link.disconnecting != 0)
        deactivate(modem,
                   result == QRVL_OK ? connectionIn(call.reply()) : deviceOf(modem).activeConnection());
    else if (result != QRVL_OK && isCurrent)
        endConnecting(modem, result);
}

/// What is being activated has no path before NetworkManager answers.
void NetworkClient::disconnectModem(const Request& request, const QString& modem)
{
    endConnecting(modem, QRVL_ERROR_CANCELLED);
    Link& link = m_links[modem];
    link.disconnecting = request.number;
    link.error = QRVL_OK;
    if (link.activating == 0)
        deactivate(modem, deviceOf(modem).activeConnection());
}

void NetworkClient::deactivate(const QString& modem, const QString& activeConnection)
{
    if (activeConnection.isEmpty())
        return endDisconnecting(modem, QRVL_OK);
    NetworkProxy manager(m_mirror.service(), QLatin1String(Path), m_mirror.bus());
    auto* const watcher =
        new QDBusPendingCallWatcher(manager.DeactivateConnection(QDBusObjectPath(activeConnection)), this);
    connect(
        watcher, &QDBusPendingCallWatcher::finished, this, [=, number = m_links.value(modem).disconnecting] {
            watcher->deleteLater();
            const bool isOver = watcher->isError() || deviceOf(modem).state() <= NetworkStates::Disconnected;
            if (isOver && m_links.value(modem).disconnecting == number)
                endDisconnecting(modem, DBusResults::resultOf(watcher->error()));
        });
}

/// This signal says why, and is sent for every state, while changes of the property may be put together. A connection
/// ends when its device leaves the states in use; the states after that are not the end of the next one, which may have
/// been requested already.
void NetworkClient::onStateChanged(uint state, uint before, uint reason, const QDBusMessage& message)
{
    const QString modem = modemOf(message.path());
    if (modem.isEmpty())
        return;
    Link& link = m_links[modem];
    if (state == NetworkStates::Activated) {
        link.since = QDateTime::currentSecsSinceEpoch();
        link.error = QRVL_OK;
        endConnecting(modem, QRVL_OK);
    } else if (NetworkStates::isInUse(before) && !NetworkStates::isInUse(state)) {
        const bool isUsers = reason == NetworkStates::UserRequested && link.disconnecting != 0;
        link.error = isUsers ? long(QRVL_OK) : NetworkStates::resultOf(reason);
        endConnecting(modem, link.error);
    }
    if (state < NetworkStates::Disconnected) // perhaps before it could begin
        endConnecting(modem, NetworkStates::resultOf(reason));
    if (state <= NetworkStates::Disconnected && link.activating == 0)
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
    const QString before = modemOf(path), modem = device.isModem() ? device.modem() : QString();
    if (modem != before)
        lose(before, QRVL_ERROR_NO_DEVICE);
    if (!modem.isEmpty() && modem != before) {
        lose(modem, QRVL_ERROR_NO_DEVICE); // it has had another device
        m_links[modem].path = path;
    }
    Q_EMIT changed();
}

void NetworkClient::lose(const QString& modem, long result)
{
    if (!m_links.contains(modem))
        return;
    endConnecting(modem, result);
    endDisconnecting(modem, result);
    m_links.remove(modem);
}

void NetworkClient::loseService()
{
    const QStringList modems = m_links.keys();
    for (const QString& modem : modems)
        lose(modem, QRVL_ERROR_SERVICE);
}

QString NetworkClient::modemOf(const QString& device) const
{
    const auto link = std::find_if(m_links.cbegin(), m_links.cend(),
                                   [&](const Link& candidate) { return candidate.path == device; });
    return link == m_links.cend() ? QString() : link.key();
}

NetworkDevice NetworkClient::deviceOf(const QString& modem) const
{
    return {m_mirror, m_links.value(modem).path};
}
