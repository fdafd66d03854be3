#pragma once

#include "backends/dbus/DBusMirror.h"

#include <ModemManager.h>

/// The properties of a modem and its SIM.
class ModemReader
{
public:
    ModemReader(const DBusMirror& mirror, const QString& path)
        : m_mirror(mirror)
        , m_path(path)
        , m_sim(modem("Sim").value<QDBusObjectPath>().path())
    {
    }

    QVariant modem(const char* property) const { return value(m_path, MM_DBUS_INTERFACE_MODEM, property); }
    QVariant network(const char* property) const
    {
        return value(m_path, MM_DBUS_INTERFACE_MODEM_MODEM3GPP, property);
    }
    QVariant ussd(const char* property) const
    {
        return value(m_path, MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD, property);
    }
    QVariant messaging(const char* property) const
    {
        return value(m_path, MM_DBUS_INTERFACE_MODEM_MESSAGING, property);
    }
    QVariant sim(const char* property) const { return value(m_sim, MM_DBUS_INTERFACE_SIM, property); }

    int state() const { return modem("State").toInt(); }
    uint lock() const { return modem("UnlockRequired").toUInt(); }
    bool isLocked() const { return state() == MM_MODEM_STATE_LOCKED; }
    bool hasSim() const { return !simPath().isEmpty(); }
    QString simPath() const { return m_sim == QLatin1String("/") ? QString() : m_sim; }
    uint failure() const
    {
        return state() == MM_MODEM_STATE_FAILED ? modem("StateFailedReason").toUInt()
                                                : uint(MM_MODEM_STATE_FAILED_REASON_NONE);
    }

private:
    QVariant value(const QString& path, const char* interface, const char* property) const
    {
        return m_mirror.value(path, QLatin1String(interface), QLatin1String(property));
    }

    const DBusMirror& m_mirror;
    QString m_path;
    QString m_sim;
};
