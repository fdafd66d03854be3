#pragma once

#include "backends/dbus/DBusMirror.h"
#include "devices/Request.h"

#include <functional>

class QDBusPendingCall;

/// What all requests that ModemManager serves have in common: calls of its methods, and the ends of requests.
/// Lives on the mirror's thread.
class ModemCalls : public QObject
{
    Q_OBJECT

public:
    explicit ModemCalls(DBusMirror& mirror)
        : m_mirror(mirror)
    {
    }

    DBusMirror& mirror() const { return m_mirror; }

    template <typename Proxy>
    Proxy proxy(const QString& path) const
    {
        return Proxy(m_mirror.service(), path, m_mirror.bus());
    }

    /// Calls a function when the call has ended, with its result of the C interface.
    using Then = std::function<void(const QDBusPendingCall& call, long result)>;
    void await(const QDBusPendingCall& call, const Then& then);

    void end(const QString& modem, const RequestEnd& end) { Q_EMIT ended(modem, end); }

    /// Reads an interface of the modem before: property changes are sent when the daemon is idle, often after the
    /// reply that they belong to.
    void endAfterRead(const QString& modem, const RequestEnd& end, const char* interface);

Q_SIGNALS:
    /// The mirror already has what the request changed, except for messages that are still being read.
    void ended(const QString& modem, const RequestEnd& end);

private:
    DBusMirror& m_mirror;
};
