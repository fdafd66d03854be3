#include "backends/modemmanager/NetworkClient.h"

#include "Log.h"
#include "backends/modemmanager/DBusResults.h"
#include "networkproxy.h"
#include "qrvl.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDateTime>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

const char Service[] = "org.freedesktop.NetworkManager";
const char Path[] = "/org/freedesktop/NetworkManager";
const char DeviceInterface[] = "org.freedesktop.NetworkManager.Device";
const char ActiveInterface[] = "org.freedesktop.NetworkManager.Connection.Active";
const char AddressInterface[] = "org.freedesktop.NetworkManager.IP4Config";
const char Nothing[] = "/"; // a path
constexpr uint ModemDevice = 8;

/// States of NetworkManager's devices.
enum DeviceState : uint {
    Disconnected = 30,
    Prepare = 40,
    Secondaries = 90,
    Activated = 100,
    Deactivating = 110,
    Failed = 120
};

/// Reasons for a new state.
enum Reason : uint {
    NoSecrets = 7,
    PppStartFailed = 12,
    PppDisconnect = 13,
    PppFailed = 14,
    ModemBusy = 23,
    ModemNoCarrier = 25,
    ModemDialTimeout = 26,
    GsmApnFailed = 29,
    GsmNotSearching = 30,
    GsmDenied = 31,
    GsmTimeout = 32,
    GsmRegistrationFailed = 33,
    GsmPinCheckFailed = 34,
    Removed = 36,
    ConnectionRemoved = 38,
    UserRequested = 39,
    Carrier = 40,
    ModemNotFound = 43,
    GsmSimNotInserted = 45,
    GsmSimPinRequired = 46,
    GsmSimPukRequired = 47,
    GsmSimWrong = 48,
    ModemManagerUnavailable = 52,
    SimPinIncorrect = 59,
    NewActivation = 60
};

struct Meaning
{
    Reason reason;
    long result;
};

constexpr Meaning Meanings[] = {
    {NoSecrets, QRVL_ERROR_ACCESS_POINT},
    {PppStartFailed, QRVL_ERROR_ACCESS_POINT},
    {PppDisconnect, QRVL_ERROR_REFUSED},
    {PppFailed, QRVL_ERROR_ACCESS_POINT},
    {ModemBusy, QRVL_ERROR_BUSY},
    {ModemNoCarrier, QRVL_ERROR_NO_COVERAGE},
    {ModemDialTimeout, QRVL_ERROR_TIMEOUT},
    {GsmApnFailed, QRVL_ERROR_ACCESS_POINT},
    {GsmNotSearching, QRVL_ERROR_NO_COVERAGE},
    {GsmDenied, QRVL_ERROR_REFUSED},
    {GsmTimeout, QRVL_ERROR_NO_COVERAGE},
    {GsmRegistrationFailed, QRVL_ERROR_NO_COVERAGE},
    {GsmPinCheckFailed, QRVL_ERROR_LOCKED},
    {Removed, QRVL_ERROR_NO_DEVICE},
    {ConnectionRemoved, QRVL_ERROR_CANCELLED},
    {UserRequested, QRVL_ERROR_CANCELLED},
    {Carrier, QRVL_ERROR_NO_COVERAGE},
    {ModemNotFound, QRVL_ERROR_NO_DEVICE},
    {GsmSimNotInserted, QRVL_ERROR_NO_SIM},
    {GsmSimPinRequired, QRVL_ERROR_LOCKED},
    {GsmSimPukRequired, QRVL_ERROR_LOCKED},
    {GsmSimWrong, QRVL_ERROR_NO_SIM},
    {ModemManagerUnavailable, QRVL_ERROR_SERVICE},
    {SimPinIncorrect, QRVL_ERROR_LOCKED},
    {NewActivation, QRVL_ERROR_CANCELLED},
};

long resultOf(uint reason)
{
    const auto* const found = std::find_if(std::begin(Meanings), std::end(Meanings),
                                           [&](const Meaning& meaning) { return meaning.reason == reason; });
    return found == std::end(Meanings) ? long(QRVL_ERROR_FAILED) : found->result;
}

bool isConnecting(uint state)
{
    return state >= Prepare && state <= Secondaries;
}

QString connectionText(uint state)
{
    if (isConnecting(state))
        return QStringLiteral("connecting");
    if (state == Activated)
        return QStringLiteral("connected");
    return state == Deactivating ? QStringLiteral("disconnecting") : QStringLiteral("disconnected");
}

/// The settings of a new connection. NetworkManager forgets it when it ends, so no password is stored.
VariantMaps settingsFor(const Request& request, const QString& password)
{
    const QVariantMap connection = {{QStringLiteral("id"), QStringLiteral("Skylume")},
                                    {QStringLiteral("type"), QStringLiteral("gsm")},
                                    {QStringLiteral("autoconnect"), false}};
    QVariantMap gsm = {{QStringLiteral("home-only"), request.isHomeOnly}};
    if (request.target.isEmpty())
        gsm.insert(QStringLiteral("auto-config"), true);
    else
        gsm.insert(QStringLiteral("apn"), request.target);
    if (!request.text.isEmpty())
        gsm.insert(QStringLiteral("username"), request.text);
    if (!password.isEmpty())
        gsm.insert(QStringLiteral("password"), password);
    return {{QStringLiteral("connection"), connection}, {QStringLiteral("gsm"), gsm}};
}

} // namespace

NetworkClient::NetworkClient(const QDBusConnection& bus)
    : m_mirror(
          bus, QLatin1String(Service), QStringLiteral("/org/freedesktop"),
          {QLatin1String(DeviceInterface), QLatin1String(ActiveInterface), QLatin1String(AddressInterface)})
{
    connect(&m_mirror, &DBusMirror::objectChanged, this, &NetworkClient::follow);
    connect(&m_mirror, &DBusMirror::presenceChanged, this, [this] {
        if (!m_mirror.isPresent())
            loseService();
        Q_EMIT changed();
    });
    m_mirror.connectTo(QLatin1String(DeviceInterface), QStringLiteral("StateChanged"), this,
                       SLOT(onStateChanged(uint, uint, uint, QDBusMessage)));
}

ModemValues NetworkClient::values(const QString& modem) const
{
    if (deviceOf(modem).isEmpty())
        return {};
    const Link link = m_links.value(modem);
    const bool isWaiting = link.connecting != 0 && stateOf(modem) != Activated;
    const QString state = isWaiting ? QStringLiteral("connecting") : connectionText(stateOf(modem));
    ModemValues values = {{QStringLiteral("connection"), state}};
    if (link.error != QRVL_OK && state == QLatin1String("disconnected"))
        values.insert(QStringLiteral("connection.error"), QString::number(link.error));
    if (state != QLatin1String("connected"))
        return values;
    const QString active = deviceValue(modem, "ActiveConnection").value<QDBusObjectPath>().path();
    const std::pair<const char*, QString> details[] = {
        {"connection.since", link.since != 0 ? QString::number(link.since) : QString()},
        {"connection.address", addressOf(modem)},
        {"connection.name",
         m_mirror.value(active, QLatin1String(ActiveInterface), QStringLiteral("Id")).toString()},
    };
    for (const auto& [key, value] : details) {
        if (!value.isEmpty())
            values.insert(QLatin1String(key), value);
    }
    return values;
}

QString NetworkClient::interfaceOf(const QString& modem) const
{
    return stateOf(modem) == Activated ? deviceValue(modem, "IpInterface").toString() : QString();
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
    const QString device = deviceOf(modem);
    Link& link = m_links[modem];
    link.connecting = request.number;
    link.error = QRVL_OK;
    if (!m_mirror.isPresent())
        return endConnecting(modem, QRVL_ERROR_SERVICE);
    if (device.isEmpty())
        return endConnecting(modem, QRVL_ERROR_UNSUPPORTED);
    if (stateOf(modem) == Activated)
        return endConnecting(modem, QRVL_OK);
    Q_EMIT changed();
    if (!isConnecting(stateOf(modem))) // otherwise another program has begun
        activate(request, modem, device);
}

/// Without an access point a connection that the user has set up already is preferred.
void NetworkClient::activate(const Request& request, const QString& modem, const QString& device)
{
    NetworkProxy manager(m_mirror.service(), QLatin1String(Path), m_mirror.bus());
    const QDBusObjectPath devicePath(device), nothing{QLatin1String(Nothing)};
    const bool isSetUp =
        !qdbus_cast<QList<QDBusObjectPath>>(deviceValue(modem, "AvailableConnections")).isEmpty();
    if (request.target.isEmpty() && isSetUp)
        return awaitActivation(manager.ActivateConnection(nothing, devicePath, nothing), modem, {});
    const QString password = request.secret.view().toString();
    const QVariantMap options = {{QStringLiteral("persist"), QStringLiteral("volatile")}};
    awaitActivation(
        manager.AddAndActivateConnection2(settingsFor(request, password), devicePath, nothing, options),
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
    const QString active = deviceValue(modem, "ActiveConnection").value<QDBusObjectPath>().path();
    if (active.isEmpty() || active == QLatin1String(Nothing))
        return endDisconnecting(modem, QRVL_OK);
    NetworkProxy manager(m_mirror.service(), QLatin1String(Path), m_mirror.bus());
    auto* const watcher =
        new QDBusPendingCallWatcher(manager.DeactivateConnection(QDBusObjectPath(active)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=] {
        watcher->deleteLater();
        if (watcher->isError() || stateOf(modem) <= Disconnected)
            endDisconnecting(modem, DBusResults::resultOf(watcher->error()));
    });
}

/// This signal says why, and is sent for every state, while changes of the property may be put together.
void NetworkClient::onStateChanged(uint state, uint before, uint reason, const QDBusMessage& message)
{
    const auto entry = std::find_if(m_links.begin(), m_links.end(),
                                    [&](const Link& link) { return link.path == message.path(); });
    if (entry == m_links.end())
        return;
    const QString modem = entry.key();
    const bool isUsers = reason == UserRequested && entry->disconnecting != 0;
    if (state == Activated) {
        entry->since = QDateTime::currentSecsSinceEpoch();
        entry->error = QRVL_OK;
        endConnecting(modem, QRVL_OK);
    } else if (state == Failed || (state <= Disconnected && before != Failed && before > Disconnected)) {
        entry->error = isUsers ? long(QRVL_OK) : resultOf(reason);
        endConnecting(modem, entry->error);
    }
    if (state <= Disconnected)
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
    const QString device = deviceOf(modem);
    if (device.isEmpty())
        Q_EMIT ended(modem, end);
    else
        m_mirror.fetch(device, QLatin1String(DeviceInterface), [=] { Q_EMIT ended(modem, end); });
}

void NetworkClient::follow(const QString& path)
{
    const auto value = [&](const char* property) {
        return m_mirror.value(path, QLatin1String(DeviceInterface), QLatin1String(property));
    };
    if (value("DeviceType").toUInt() == ModemDevice) {
        Link& link = m_links[value("Udi").toString()];
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

QString NetworkClient::deviceOf(const QString& modem) const
{
    const QString path = m_links.value(modem).path;
    return m_mirror.contains(path, QLatin1String(DeviceInterface)) ? path : QString();
}

QVariant NetworkClient::deviceValue(const QString& modem, const char* property) const
{
    return m_mirror.value(m_links.value(modem).path, QLatin1String(DeviceInterface), QLatin1String(property));
}

QString NetworkClient::addressOf(const QString& modem) const
{
    const QString path = deviceValue(modem, "Ip4Config").value<QDBusObjectPath>().path();
    const QVariant list =
        m_mirror.value(path, QLatin1String(AddressInterface), QStringLiteral("AddressData"));
    QStringList addresses;
    for (const QVariantMap& address : qdbus_cast<QList<QVariantMap>>(list))
        addresses.append(address.value(QStringLiteral("address")).toString());
    return addresses.join(QLatin1Char(' '));
}
