#include "devices/DeviceService.h"

#include "Log.h"
#include "devices/DeviceChanges.h"

#include <algorithm>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

using DeviceChanges::availableOf;
using DeviceChanges::hasId;
using DeviceChanges::unusableOf;

namespace {

constexpr auto DetectionTime = 300ms; // as real modems need; gives callers time to wait for the answer
constexpr auto Patience = 2s;
constexpr std::size_t DetectionsAtOnce = 2;

bool isAnyCounting(const Modems& modems)
{
    return std::any_of(modems.begin(), modems.end(), [](const Modem& modem) {
        return !modem.trafficInterface.isEmpty() ||
               std::any_of(modem.counters.begin(), modem.counters.end(),
                           [](const Counter& counter) { return counter.rate > 0; });
    });
}

Modem serviceAsModem(const ModemValues& values)
{
    Modem service;
    service.id = QRVL_SERVICE;
    service.status = values;
    return service;
}

} // namespace

DeviceService::DeviceService(std::unique_ptr<Backend> backend)
    : m_backend(std::move(backend))
{
    DeviceState state = m_backend->look();
    adopt(state);
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
    m_backend->detect();
    m_backend->wake();
}

Modems DeviceService::available() const
{
    const std::lock_guard lock(m_mutex);
    return m_available;
}

Modems DeviceService::unusable() const
{
    const std::lock_guard lock(m_mutex);
    return m_unusable;
}

long DeviceService::read(quint32 device, const QString& key, QString& value)
{
    const std::optional<Modem> modem = listed(device);
    if (!modem)
        return QRVL_ERROR_NO_DEVICE;
    if (readCounter(*modem, key, value))
        return QRVL_OK;
    const bool isOnSim = modem->messages.contains(key);
    if (!isOnSim && !modem->status.contains(key))
        return QRVL_ERROR_NOT_FOUND;
    if (isOnSim)
        std::this_thread::sleep_for(std::chrono::milliseconds(modem->answerTime));
    value = isOnSim ? modem->messages[key] : modem->status[key];
    return QRVL_OK;
}

void DeviceService::setServiceValue(const QString& key, const QString& value)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_isFinished)
            return;
        if (value.isEmpty())
            m_serviceValues.remove(key);
        else
            m_serviceValues.insert(key, value);
        m_hasNewValues = true;
    }
    m_backend->wake();
}

long DeviceService::start(Request request, quint32& number)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!hasId(m_available, request.device))
            return QRVL_ERROR_NO_DEVICE;
        const long result = m_requests.add(request);
        if (result != QRVL_OK)
            return result;
        number = request.number;
    }
    m_backend->start(std::move(request));
    return QRVL_OK;
}

/// The modem with that id if it is in one of the lists, or QRVL_SERVICE. A copy shares its values.
std::optional<Modem> DeviceService::listed(quint32 device) const
{
    const std::lock_guard lock(m_mutex);
    if (device == QRVL_SERVICE)
        return serviceAsModem(m_state.service);
    for (const Modems* const modems : {&m_available, &m_unusable}) {
        for (const Modem& modem : *modems) {
            if (modem.id == device)
                return modem;
        }
    }
    return {};
}

/// Returns false if the value is not a counter.
bool DeviceService::readCounter(const Modem& modem, const QString& key, QString& value)
{
    const auto counter = modem.counters.constFind(key);
    const bool isSimulated = counter != modem.counters.cend();
    const Clock::time_point now = Clock::now();
    if (isSimulated)
        value = QString::number(counter->valueAt(now));
    else if (!m_backend->readLive(modem, key, value))
        return false;
    const bool isGrowing = !isSimulated || counter->rate > 0;
    std::unique_lock lock(m_mutex);
    const bool isFirst = isGrowing && m_counterReport.noteReading(now);
    lock.unlock();
    if (isFirst)
        m_backend->wake();
    return true;
}

void DeviceService::finish()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isFinished = true;
    }
    m_backend->wake();
    m_thread.finish(Patience);
    m_backend->finish();
}

void DeviceService::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_isFinished) {
        const Clock::time_point next = nextTask();
        lock.unlock();
        const bool mayDiffer = m_backend->wait(next);
        // Taken before the look, which then shows what the requests have changed.
        const QVector<RequestEnd> ends = m_backend->takeEnds();
        lock.lock();
        if (m_isFinished)
            return;
        const bool isAsked = takeDetection();
        const bool hasNewValues = std::exchange(m_hasNewValues, false);
        const bool haveCountersGrown = m_counterReport.take(Clock::now()) && isAnyCounting(m_available);
        lock.unlock();
        if (mayDiffer || isAsked || hasNewValues || !ends.isEmpty())
            look(isAsked, ends);
        if (haveCountersGrown)
            m_callbacks.dispatch(QRVL_EVENT_DEV_STATUS);
        for (const RequestEnd& end : ends)
            report(end);
        lock.lock();
    }
}

DeviceService::Clock::time_point DeviceService::nextTask() const
{
    const Clock::time_point report = m_counterReport.next();
    return m_detections.empty() ? report : std::min(report, m_detections.front());
}

bool DeviceService::takeDetection()
{
    if (m_detections.empty() || m_detections.front() > Clock::now())
        return false;
    m_detections.pop_front();
    return true;
}

/// Leaves the old state to the caller, who releases it without the lock.
void DeviceService::adopt(DeviceState& state)
{
    std::swap(m_state, state);
    m_available = availableOf(m_state.modems);
    m_unusable = unusableOf(m_state.modems);
}

/// Also ends the requests of modems that were removed, unless they are among those that have ended.
void DeviceService::look(bool reportAnyway, const QVector<RequestEnd>& ends)
{
    DeviceState state = m_backend->look();
    {
        const std::lock_guard lock(m_mutex);
        for (auto value = m_serviceValues.cbegin(); value != m_serviceValues.cend(); ++value)
            state.service.insert(value.key(), value.value());
    }
    // Only this thread writes m_state. To compare and to release thousands of messages takes milliseconds, for which
    // nobody else should wait.
    const QVector<int> events = DeviceChanges::eventsBetween(m_state, state, reportAnyway);
    QVector<quint32> abandoned;
    {
        const std::lock_guard lock(m_mutex);
        adopt(state);
        abandoned = m_requests.withoutDevice([&](quint32 device) { return hasId(m_available, device); });
    }
    for (const int event : events)
        m_callbacks.dispatch(event);
    for (const RequestEnd& end : ends)
        abandoned.removeOne(end.number);
    for (const quint32 number : qAsConst(abandoned))
        report({number, QRVL_ERROR_NO_DEVICE, {}});
}

/// Each request is reported once, even if the backend ends one that was abandoned.
void DeviceService::report(const RequestEnd& end)
{
    quint32 device = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_requests.take(end.number, device))
            return;
    }
    qCDebug(logDeviceSdk, "Request %u has ended with %ld", end.number, end.result);
    const auto* const text = reinterpret_cast<const char16_t*>(end.text.utf16());
    QRVL_RequestEnd record = {end.number, device, int32_t(end.result), 0, text};
    m_callbacks.dispatch(QRVL_EVENT_DEV_REQUEST, &record);
}
