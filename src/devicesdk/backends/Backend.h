#pragma once

#include "devices/Modem.h"
#include "devices/Request.h"

#include <QVector>

/// A source of modems. One thread calls look(), wait() and takeEnds(); start() and wake() may be called from
/// any thread, also during these.
class Backend
{
public:
    using Clock = Counter::Clock;

    Backend() = default;
    virtual ~Backend() = default;
    Q_DISABLE_COPY_MOVE(Backend)

    /// The modems and the values of the service itself as they are now.
    virtual DeviceState look() = 0;

    /// Blocks until look() or takeEnds() may return something new, wake() is called or it is `until`. Returns
    /// true in the first case.
    virtual bool wait(Clock::time_point until) = 0;

    /// Ends the current wait(), or the next one if there is none.
    virtual void wake() = 0;

    /// Begins a request for an available modem. Its end is reported once by takeEnds(), unless the modem is
    /// removed.
    virtual void start(Request request) = 0;

    /// Reads a value that changes all the time. Returns false if the backend does not report it in this way. May
    /// be called from any thread.
    virtual bool readLive(const Modem&, const QString&, QString&) { return false; }

    /// Ends the backend's own threads. One that does not end soon is left behind; then the backend must not be destroyed.
    virtual void finish() {}

    /// Looks for modems that do not report themselves. May be called from any thread.
    virtual void detect() {}

    /// The requests that have ended since the last call. What they changed is visible to the next look().
    virtual QVector<RequestEnd> takeEnds() = 0;
};
