#pragma once

#include <QStringList>
#include <QVariant>

class DBusMirror;

/// A device as NetworkManager describes it.
class NetworkDevice
{
public:
    static constexpr char Interface[] = "org.freedesktop.NetworkManager.Device";

    /// The interfaces that a mirror must follow.
    static QStringList interfaces();

    NetworkDevice(const DBusMirror& mirror, const QString& path)
        : m_mirror(mirror)
        , m_path(path)
    {
    }

    const QString& path() const { return m_path; }

    /// Whether NetworkManager has it. If not, all values are empty.
    bool isKnown() const;

    bool isModem() const;

    /// The path of the modem in ModemManager.
    QString modem() const { return value("Udi").toString(); }

    /// A number of NetworkStates.
    uint state() const { return value("State").toUInt(); }

    QString interface() const { return value("IpInterface").toString(); }

    /// Its IP addresses, separated by spaces.
    QString address() const;

    /// The path of the connection; empty if there is none.
    QString activeConnection() const;
    QString connectionName() const;

    /// Whether the user has set up a connection for it.
    bool isSetUp() const;

private:
    QVariant value(const char* property) const;

    const DBusMirror& m_mirror;
    QString m_path;
};
