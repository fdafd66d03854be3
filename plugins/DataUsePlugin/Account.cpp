#include "Account.h"

Account::Account(const QString& imsi)
    : m_file(imsi)
    , m_history(m_file.load())
{
}

void Account::read(const Reading& reading, const QDate& today, qint64 now)
{
    const bool isNew = !m_isConnected || reading.since != m_since;
    m_isChanged |= !(m_history.counters == reading.counters);
    const Traffic added = m_history.take(reading.counters, today);
    if (isNew) {
        // The counters of a connection that is older than this run say what it has transferred.
        m_sinceConnecting = m_wasSeen ? Traffic() : reading.counters;
        m_speeds.restart(now);
    } else {
        m_sinceConnecting += added;
        m_speeds.add(added, now);
    }
    m_since = reading.since;
    m_isConnected = m_wasSeen = true;
}

void Account::forgetCounters()
{
    m_history.counters.reset();
    m_wasSeen = true; // what the counters show was not transferred by a connection of this SIM card
}

void Account::disconnect()
{
    m_isConnected = false;
    m_wasSeen = true;
}

void Account::save()
{
    m_isChanged = m_isChanged && !m_file.save(m_history);
}

bool Account::noteState(LimitState state, const Period& period)
{
    const LimitState before = m_history.warned;
    const bool isNew = m_history.noteState(state, period);
    m_isChanged |= isNew || m_history.warned != before;
    return isNew;
}
