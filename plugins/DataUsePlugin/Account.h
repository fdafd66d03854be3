#pragma once

#include "HistoryFile.h"
#include "SpeedLog.h"

/// What a SIM card transfers: by day, now, and since it was connected. GUI thread.
class Account
{
public:
    struct Reading
    {
        Traffic counters; ///< of the modem
        qint64 since = 0; ///< when the connection was established, in seconds since 1970; 0 if unknown
    };

    explicit Account(const QString& imsi);

    /// Takes note of a modem's values while it is connected, and for the last time when it no longer is.
    /// @param now in milliseconds of a clock that never goes back
    void read(const Reading& reading, const QDate& today, qint64 now);

    /// What the counters show at the next reading was transferred by another SIM card. Only later growth is counted.
    void forgetCounters();

    /// Takes note that there is no connection.
    void disconnect();

    /// Writes the history if it has changed since it was last written successfully.
    void save();

    bool isConnected() const { return m_isConnected; }
    qint64 connectedSince() const { return m_since; }

    /// Transferred by the present connection.
    const Traffic& sinceConnecting() const { return m_sinceConnecting; }

    const History& history() const { return m_history; }
    const SpeedLog& speeds() const { return m_speeds; }

    /// See History::noteState().
    bool noteState(LimitState state, const Period& period);

private:
    HistoryFile m_file;
    History m_history;
    SpeedLog m_speeds;
    Traffic m_sinceConnecting;
    qint64 m_since = 0;
    bool m_isConnected = false;
    bool m_wasSeen = false; ///< in this run, connected or not
    bool m_isChanged = false;
};
