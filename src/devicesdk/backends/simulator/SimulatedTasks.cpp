#include "backends/simulator/SimulatedTasks.h"

#include "qrvl.h"

#include <algorithm>
#include <utility>

void SimulatedTasks::add(Request request)
{
    const std::lock_guard lock(m_mutex);
    if (request.kind == Request::Disconnect)
        cancel(Request::Connect, request.device);
    if (request.kind == Request::CancelUssd)
        cancel(Request::SendUssd, request.device);
    m_tasks.push_back({Clock::time_point::min(), std::move(request)});
    m_haveChanged = true;
}

void SimulatedTasks::cancel(Request::Kind kind, quint32 modem)
{
    const auto task = std::find_if(m_tasks.begin(), m_tasks.end(), [&](const Task& candidate) {
        return candidate.request.kind == kind && candidate.request.device == modem;
    });
    if (task == m_tasks.end())
        return;
    m_cancelled.append({task->request.number, QRVL_ERROR_CANCELLED, {}});
    m_tasks.erase(task);
}

bool SimulatedTasks::takeChanged()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_haveChanged, false);
}

SimulatedTasks::Clock::time_point
SimulatedTasks::next(Clock::time_point now,
                     const std::function<std::chrono::milliseconds(quint32 modem)>& timeOf)
{
    Clock::time_point next = Clock::time_point::max();
    const std::lock_guard lock(m_mutex);
    for (Task& task : m_tasks) {
        if (task.due == Clock::time_point::min())
            task.due = now + timeOf(task.request.device);
        next = std::min(next, task.due);
    }
    return next;
}

std::vector<Request> SimulatedTasks::takeDue(Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    const auto due = std::stable_partition(m_tasks.begin(), m_tasks.end(), [&](const Task& task) {
        return task.due == Clock::time_point::min() || task.due > now;
    });
    std::vector<Request> requests;
    for (auto task = due; task != m_tasks.end(); ++task)
        requests.push_back(std::move(task->request));
    m_tasks.erase(due, m_tasks.end());
    return requests;
}

QVector<RequestEnd> SimulatedTasks::takeCancelled()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_cancelled, {});
}

void SimulatedTasks::showIn(quint32 modem, ModemValues& values) const
{
    const QString connection = QStringLiteral("connection");
    const std::lock_guard lock(m_mutex);
    for (const Task& task : m_tasks) {
        const auto kind = task.request.kind;
        if (task.request.device != modem)
            continue;
        if (kind == Request::Connect && values[connection] != QLatin1String("connected")) {
            values[connection] = QStringLiteral("connecting");
            values.remove(QStringLiteral("connection.error"));
        }
        if (kind == Request::Disconnect && values[connection] != QLatin1String("disconnected"))
            values[connection] = QStringLiteral("disconnecting");
        if (kind == Request::SendUssd)
            values[QStringLiteral("ussd")] = QStringLiteral("active");
    }
}

void SimulatedTasks::forget(const std::function<bool(quint32 modem)>& isMissing)
{
    const std::lock_guard lock(m_mutex);
    m_tasks.erase(std::remove_if(m_tasks.begin(), m_tasks.end(),
                                 [&](const Task& task) { return isMissing(task.request.device); }),
                  m_tasks.end());
}
