#include "devices/DeviceService.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto LookInterval = 200ms;
constexpr auto DetectionTime = 300ms; // what real modems take at the least; callers get ready for the answer
constexpr auto Patience = 2s;
constexpr std::size_t DetectionsAtOnce = 2;

Modems inState(const Modems& modems, Modem::State state)
{
    Modems found;
    std::copy_if(modems.begin(), modems.end(), std::back_inserter(found),
                 [&](const Modem& modem) { return modem.state == state; });
    return found;
}

bool hasId(const Modems& modems, quint32 id)
{
    return std::any_of(modems.begin(), modems.end(), [&](const Modem& modem) { return modem.id == id; });
}

/// Whether some of the modems are in none of the two other lists.
bool isAnyMissing(const Modems& modems, const Modems& here, const Modems& orHere = {})
{
    return std::any_of(modems.begin(), modems.end(), [&](const Modem& modem) {
        return !hasId(here, modem.id) && !hasId(orHere, modem.id);
    });
}

/// Whether a modem in both lists has other values in the second.
bool isAnyChanged(const Modems& before, const Modems& after, ModemValues Modem::*values)
{
    return std::any_of(after.begin(), after.end(), [&](const Modem& modem) {
        return std::any_of(before.begin(), before.end(), [&](const Modem& old) {
            return old.id == modem.id && old.*values != modem.*values;
        });
    });
}

} // namespace

QVector<int> eventsBetween(const Modems& before, const Modems& after, bool tellAnyway)
{
    const Modems availableBefore = inState(before, Modem::Attached);
    const Modems available = inState(after, Modem::Attached);
    const Modems rejected = inState(after, Modem::Rejected);
    QVector<int> events;
    if (isAnyMissing(availableBefore, available, rejected))
        events.append(QRVL_EVENT_DEV_DEVICE_INVALID);
    if (isAnyMissing(rejected, inState(before, Modem::Rejected)))
        events.append(QRVL_EVENT_DEV_REJECT);
    if (tellAnyway || available != availableBefore)
        events.append(QRVL_EVENT_DEV_DETECTED);
    if (isAnyChanged(availableBefore, available, &Modem::status))
        events.append(QRVL_EVENT_DEV_STATUS);
    if (isAnyChanged(availableBefore, available, &Modem::messages))
        events.append(QRVL_EVENT_DEV_MESSAGES);
    return events;
}

DeviceService::DeviceService(const QStringList& simulatorFiles)
    : m_simulator(simulatorFiles)
    , m_modems(m_simulator.look())
{
    m_thread.start([this] { run(); });
}

void DeviceService::startDetect()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_detections.size() == DetectionsAtOnce)
            m_detections.pop_back();
        m_detections.push_back(Clock::now() + DetectionTime);
    }
    m_wake.notify_one();
}

Modems DeviceService::available() const
{
    const std::lock_guard lock(m_mutex);
    return inState(m_modems, Modem::Attached).mid(0, QRVL_MAX_DEVICES);
}

void DeviceService::finish()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isFinished = true;
    }
    m_wake.notify_one();
    m_thread.finish(Patience);
}

void DeviceService::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_isFinished) {
        const Clock::time_point nextLook = Clock::now() + LookInterval;
        while (!m_isFinished && !isDetectionDue() && Clock::now() < nextLook)
            m_wake.wait_until(lock,
                              m_detections.empty() ? nextLook : std::min(nextLook, m_detections.front()));
        if (m_isFinished)
            return;
        const bool isAsked = isDetectionDue();
        if (isAsked)
            m_detections.pop_front();
        lock.unlock();
        look(isAsked);
        lock.lock();
    }
}

bool DeviceService::isDetectionDue() const
{
    return !m_detections.empty() && m_detections.front() <= Clock::now();
}

void DeviceService::look(bool tellAnyway)
{
    const Modems modems = m_simulator.look();
    QVector<int> events;
    {
        const std::lock_guard lock(m_mutex);
        events = eventsBetween(m_modems, modems, tellAnyway);
        m_modems = modems;
    }
    for (const int event : events)
        m_callbacks.dispatch(event);
}
