#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QMap>
#include <QVariantMap>

/// The values of an object by interface, and other maps of maps: a{sa{sv}}.
using VariantMaps = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(VariantMaps)

/// Objects by path: a{oa{sa{sv}}}.
using ManagedObjects = QMap<QDBusObjectPath, VariantMaps>;
Q_DECLARE_METATYPE(ManagedObjects)

/// A list of maps: aa{sv}.
using VariantMapList = QList<QVariantMap>;

namespace DBusTypes {

/// Lets Qt read and write the types above. May be called again.
void declare();

/// A new connection to the bus of the system's services. With QRVL_BUS it is the session's bus ("session") or the
/// bus with that address.
QDBusConnection connectToBus();

} // namespace DBusTypes
