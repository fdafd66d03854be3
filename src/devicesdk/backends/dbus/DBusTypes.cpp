#include "backends/dbus/DBusTypes.h"

#include <QDBusMetaType>
#include <QUuid>

void DBusTypes::declare()
{
    qDBusRegisterMetaType<VariantMaps>();
    qDBusRegisterMetaType<ManagedObjects>();
    qDBusRegisterMetaType<VariantMapList>();
}

QDBusConnection DBusTypes::connectToBus()
{
    const QString name = QUuid::createUuid().toString(); // connections with the same name are the same
    const QString bus = qEnvironmentVariable("QRVL_BUS");
    if (bus.isEmpty() || bus == QLatin1String("system"))
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    if (bus == QLatin1String("session"))
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    return QDBusConnection::connectToBus(bus, name);
}
