#pragma once

#include "devices/Counter.h"

#include <utility>

/// When to report that growing counters have other values: once a second while somebody reads them, and not
/// at all while nobody does.
class CounterReport
{
public:
    using Clock = Counter::Clock;
    static constexpr std::chrono::seconds Interval{1};

    /// Notes that a growing counter was read. Returns true if that changed next().
    bool noteReading(Clock::time_point now)
    {
        m_wereRead = true;
        if (m_next != Clock::time_point::max())
            return false;
        m_next = now + Interval;
        return true;
    }

    /// When to call take().
    Clock::time_point next() const { return m_next; }

    /// Returns true if a report is due. Counters that are read because of it cause the next one.
    bool take(Clock::time_point now)
    {
        if (now < m_next)
            return false;
        const bool wereRead = std::exchange(m_wereRead, false);
        m_next = wereRead ? now + Interval : Clock::time_point::max();
        return wereRead;
    }

private:
    Clock::time_point m_next = Clock::time_point::max();
    bool m_wereRead = false; // since the last report
};
