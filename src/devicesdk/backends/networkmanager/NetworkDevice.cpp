#include "backends/networkmanager/NetworkDevice.h"

#include "backends/dbus/DBusMirror.h"

#include <QDBusArgument>

namespace {

constexpr char ActiveInterface[] = "org.freedesktop.NetworkManager.Connection.Active";
constexpr char AddressInterface[] = "org.freedesktop.NetworkManager.IP4Config";
constexpr uint ModemDevice = 8;

} // namespace

QStringList NetworkDevice::interfaces()
{
    return {QLatin1String(Interface), QLatin1String(ActiveInterface), QLatin1String(AddressInterface)};
}

bool NetworkDevice::isKnown() const
{
    return m_mirror.contains(m_path, QLatin1String(Interface));
}

bool NetworkDevice::isModem() const
{
    return value("DeviceType").toUInt() == ModemDevice;
}

QString NetworkDevice::address() const
{
    const QString path = value("Ip4Config").value<QDBusObjectPath>().path();
    const QVariant list =
        m_mirror.value(path, QLatin1String(AddressInterface), QStringLiteral("AddressData"));
    QStringList addresses;
    for (const QVariantMap& address : qdbus_cast<VariantMapList>(list))
        addresses.append(address.value(QStringLiteral("address")).toString());
    return addresses.join(QLatin1Char(' '));
}

QString NetworkDevice::activeConnection() const
{
    const QString path = value("ActiveConnection").value<QDBusObjectPath>().path();
    return path == QLatin1String("/") ? QString() : path;
}

QString NetworkDevice::connectionName() const
{
    return m_mirror.value(activeConnection(), QLatin1String(ActiveInterface), QStringLiteral("Id"))
        .toString();
}

bool NetworkDevice::isSetUp() const
{
    return !qdbus_cast<QList<QDBusObjectPath>>(value("AvailableConnections")).isEmpty();
}

QVariant NetworkDevice::value(const char* property) const
{
    return m_mirror.value(m_path, QLatin1String(Interface), QLatin1String(property));
}
