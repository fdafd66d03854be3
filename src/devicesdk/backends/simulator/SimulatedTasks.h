#pragma once

#include "backends/Backend.h"

#include <functional>
#include <mutex>
#include <vector>

/// The requests that simulated modems are carrying out. Thread-safe.
class SimulatedTasks
{
public:
    using Clock = Backend::Clock;

    /// Adds a request. It cancels one that it is meant to end.
    void add(Request request);

    /// Whether requests were added since the last call.
    bool takeChanged();

    /// When the next request ends; max() without one.
    /// @param timeOf how long requests of a modem take, for those that are new
    Clock::time_point next(Clock::time_point now,
                           const std::function<std::chrono::milliseconds(quint32 modem)>& timeOf);

    /// The requests that end now, in the order in which they were added.
    std::vector<Request> takeDue(Clock::time_point now);

    /// The requests that were cancelled since the last call.
    QVector<RequestEnd> takeCancelled();

    /// Adds to a modem's values that requests are under way.
    void showIn(quint32 modem, ModemValues& values) const;

    /// Forgets the requests of modems.
    void forget(const std::function<bool(quint32 modem)>& isMissing);

private:
    struct Task
    {
        Clock::time_point due = Clock::time_point::min(); // that of new ones
        Request request;
    };

    void cancel(Request::Kind kind, quint32 modem);

    mutable std::mutex m_mutex; // guards what follows
    std::vector<Task> m_tasks;
    QVector<RequestEnd> m_cancelled;
    bool m_haveChanged = false;
};
