#pragma once

#include <QtGlobal>

#include <chrono>

/// A number that grows at a steady rate. It is computed when it is asked for, so that no thread has to count.
struct Counter
{
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::seconds;

    quint64 start = 0;
    quint64 rate = 0;    // added each full second
    quint64 counted = 0; // added before `since`
    Clock::time_point since;

    quint64 valueAt(Clock::time_point now) const { return start + growthAt(now); }

    /// Continues counting where `before` is `now`, with this start and rate.
    void resume(const Counter& before, Clock::time_point now)
    {
        counted = before.growthAt(now);
        since = before.since + before.passedAt(now);
    }

private:
    Seconds passedAt(Clock::time_point now) const { return std::chrono::duration_cast<Seconds>(now - since); }
    quint64 growthAt(Clock::time_point now) const { return counted + rate * quint64(passedAt(now).count()); }
};
