#include "backends/simulator/Simulator.h"

#include "Log.h"
#include "backends/simulator/SimulatedRequest.h"
#include "backends/simulator/SimulatorFile.h"
#include "backends/simulator/SimulatorStore.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <algorithm>
#include <utility>

namespace {

struct CounterKeys
{
    const char* total;
    const char* rate;
};

constexpr CounterKeys TrafficCounters[] = {{"received", "receive-rate"}, {"sent", "send-rate"}};

quint64 number(const Modem& modem, const char* key)
{
    return modem.status.value(QLatin1String(key)).toULongLong();
}

} // namespace

Simulator::Simulator(const QStringList& files)
    : m_files(files)
    , m_watch(files)
    , m_file(files)
{
    // Creates Qt's static objects for regular expressions before finish() is registered, see Service.cpp. The file
    // itself may be empty.
    QStringList errors;
    SimulatorFile::read(IniDocument("[modem M]\nmodel=M\nstate=detached\nsignal=1\n"), errors);
}

DeviceState Simulator::look()
{
    if (const auto content = m_file.look()) {
        QStringList errors;
        if (content->status == FileAccess::Content::Unreadable)
            errors.append(QStringLiteral("it cannot be read"));
        Modems modems = SimulatorFile::read(IniDocument(content->bytes), errors);
        if (errors.isEmpty())
            adopt(std::move(modems));
        else
            qCWarning(logDeviceSdk, "Simulator file %s is ignored while %s", qUtf8Printable(m_file.path()),
                      qUtf8Printable(errors.first()));
    }
    DeviceState state = {m_modems, {{QStringLiteral("backend"), QStringLiteral("simulator")}}};
    for (Modem& modem : state.modems)
        modem.status = valuesDuringRequests(modem);
    return state;
}

/// Some values are not in the file, because they belong to this process: what is under way, and dialogues.
ModemValues Simulator::valuesDuringRequests(const Modem& modem)
{
    ModemValues values = modem.status;
    if (m_dialogues.contains(modem.id))
        values[QStringLiteral("ussd")] = QStringLiteral("reply");
    const std::lock_guard lock(m_mutex);
    for (const Task& task : m_tasks) {
        const auto kind = task.request.kind;
        if (task.request.device != modem.id)
            continue;
        if (kind == Request::Connect && values[QStringLiteral("connection")] != QLatin1String("connected")) {
            values[QStringLiteral("connection")] = QStringLiteral("connecting");
            values.remove(QStringLiteral("connection.error"));
        }
        if (kind == Request::Disconnect &&
            values[QStringLiteral("connection")] != QLatin1String("disconnected"))
            values[QStringLiteral("connection")] = QStringLiteral("disconnecting");
        if (kind == Request::SendUssd)
            values[QStringLiteral("ussd")] = QStringLiteral("active");
    }
    return values;
}

bool Simulator::wait(Clock::time_point until)
{
    const Clock::time_point next = nextTask();
    bool mayDiffer = m_watch.wait(std::min(until, next)) || Clock::now() >= next;
    const std::lock_guard lock(m_mutex);
    mayDiffer |= std::exchange(m_haveTasksChanged, false);
    return mayDiffer;
}

void Simulator::start(Request request)
{
    {
        const std::lock_guard lock(m_mutex);
        if (request.kind == Request::Disconnect)
            cancel(Request::Connect, request.device);
        if (request.kind == Request::CancelUssd)
            cancel(Request::SendUssd, request.device);
        m_tasks.push_back({Clock::time_point::min(), std::move(request)});
        m_haveTasksChanged = true;
    }
    wake();
}

void Simulator::cancel(Request::Kind kind, quint32 device)
{
    const auto isCancelled = [&](const Task& task) {
        return task.request.kind == kind && task.request.device == device;
    };
    const auto task = std::find_if(m_tasks.begin(), m_tasks.end(), isCancelled);
    if (task == m_tasks.end())
        return;
    m_cancelled.append({task->request.number, QRVL_ERROR_CANCELLED, {}});
    m_tasks.erase(task);
}

Backend::Clock::time_point Simulator::nextTask()
{
    Clock::time_point next = Clock::time_point::max();
    for (const Delivery& delivery : m_deliveries)
        next = std::min(next, delivery.due);
    const Clock::time_point now = Clock::now();
    const std::lock_guard lock(m_mutex);
    for (Task& task : m_tasks) {
        const Modem* const modem = modemWithId(task.request.device);
        if (task.due == Clock::time_point::min()) // new
            task.due = now + std::chrono::milliseconds(modem ? modem->requestTime : 0);
        next = std::min(next, task.due);
    }
    return next;
}

QVector<RequestEnd> Simulator::takeEnds()
{
    const Clock::time_point now = Clock::now();
    QVector<RequestEnd> ends;
    for (const Task& task : takeDue(now, ends))
        ends.append(carryOut(task.request));
    const auto waits = std::partition(m_deliveries.begin(), m_deliveries.end(),
                                      [&](const Delivery& delivery) { return delivery.due > now; });
    for (auto delivery = waits; delivery != m_deliveries.end(); ++delivery)
        deliver(delivery->message);
    m_deliveries.erase(waits, m_deliveries.end());
    return ends;
}

/// The tasks to carry out now, in the order in which they were started.
std::vector<Simulator::Task> Simulator::takeDue(Clock::time_point now, QVector<RequestEnd>& cancelled)
{
    const std::lock_guard lock(m_mutex);
    cancelled = std::exchange(m_cancelled, {});
    const auto isDue = [&](const Task& task) {
        return task.due != Clock::time_point::min() && task.due <= now;
    };
    const auto due =
        std::stable_partition(m_tasks.begin(), m_tasks.end(), [&](const Task& task) { return !isDue(task); });
    std::vector<Task> tasks(std::make_move_iterator(due), std::make_move_iterator(m_tasks.end()));
    m_tasks.erase(due, m_tasks.end());
    return tasks;
}

RequestEnd Simulator::carryOut(const Request& request)
{
    RequestEnd end = {request.number, QRVL_ERROR_NO_DEVICE, {}};
    const Modem* const modem = modemWithId(request.device);
    if (!modem)
        return end;
    QString dialogue = m_dialogues.take(request.device);
    const QString cancelled = dialogue;
    const auto edit = [&](IniDocument& document, QString&) {
        end = SimulatedRequest::carryOut(request, modem->name, dialogue, document);
        return true;
    };
    QString error;
    if (!SimulatorStore::change(m_files, false, edit, error)) {
        qCWarning(logDeviceSdk, "Simulator file %s cannot be changed: %s", qUtf8Printable(m_files.first()),
                  qUtf8Printable(error));
        return {request.number, QRVL_ERROR_FAILED, {}};
    }
    if (!dialogue.isEmpty())
        m_dialogues.insert(request.device, dialogue);
    if (request.kind == Request::SendMessage && end.result == QRVL_OK)
        m_deliveries.push_back({Clock::now() + std::chrono::milliseconds(modem->requestTime), end.text});
    return end;
}

void Simulator::deliver(const QString& message)
{
    QString error; // the next request reports it
    SimulatorStore::change(
        m_files, false,
        [&](IniDocument& document, QString&) {
            SimulatedRequest::deliver(message, document);
            return true;
        },
        error);
}

const Modem* Simulator::modemWithId(quint32 id) const
{
    const auto found =
        std::find_if(m_modems.cbegin(), m_modems.cend(), [&](const Modem& modem) { return modem.id == id; });
    return found == m_modems.cend() ? nullptr : &*found;
}

void Simulator::adopt(Modems modems)
{
    const Clock::time_point now = Clock::now();
    for (Modem& modem : modems) {
        modem.id = idOf(modem);
        SimulatedRequest::completeValues(modem);
        startCounters(modem, now);
    }
    m_modems = std::move(modems);
    forgetRequestsOfMissing();
    const auto attached = std::count_if(m_modems.cbegin(), m_modems.cend(),
                                        [](const Modem& modem) { return modem.state == Modem::Attached; });
    if (attached > QRVL_MAX_DEVICES)
        qCWarning(logDeviceSdk, "Simulator file %s attaches %d modems; the first %d are available",
                  qUtf8Printable(m_file.path()), int(attached), QRVL_MAX_DEVICES);
}

/// The service has ended the requests of modems that were removed.
void Simulator::forgetRequestsOfMissing()
{
    const auto isMissing = [&](quint32 id) {
        const Modem* const modem = modemWithId(id);
        return !modem || modem->state != Modem::Attached;
    };
    const std::lock_guard lock(m_mutex);
    m_tasks.erase(std::remove_if(m_tasks.begin(), m_tasks.end(),
                                 [&](const Task& task) { return isMissing(task.request.device); }),
                  m_tasks.end());
    for (const quint32 id : m_dialogues.keys()) {
        if (isMissing(id))
            m_dialogues.remove(id);
    }
}

quint32 Simulator::idOf(const Modem& modem)
{
    const QPair<QString, QString> identity(modem.name, modem.model);
    const auto known = m_ids.constFind(identity);
    return known != m_ids.cend() ? *known : *m_ids.insert(identity, quint32(m_ids.size()) + 1);
}

/// A modem that stays attached goes on counting; one that is attached again starts anew.
void Simulator::startCounters(Modem& modem, Clock::time_point now) const
{
    if (modem.state != Modem::Attached)
        return;
    const auto before = std::find_if(m_modems.cbegin(), m_modems.cend(),
                                     [&](const Modem& known) { return known.id == modem.id; });
    for (const CounterKeys& keys : TrafficCounters) {
        const QString total = QLatin1String(keys.total);
        if (!modem.status.contains(total) && !modem.status.contains(QLatin1String(keys.rate)))
            continue;
        Counter counter{number(modem, keys.total), number(modem, keys.rate), 0, now};
        if (before != m_modems.cend() && before->counters.contains(total))
            counter.resume(before->counters[total], now);
        modem.counters.insert(total, counter);
    }
}
