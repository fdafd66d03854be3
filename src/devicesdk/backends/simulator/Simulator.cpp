#include "backends/simulator/Simulator.h"

#include "Log.h"
#include "backends/simulator/SimulatedRequest.h"
#include "backends/simulator/SimulatedValues.h"
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
    m_tasks.showIn(modem.id, values);
    return values;
}

bool Simulator::wait(Clock::time_point until)
{
    const Clock::time_point next = nextTask();
    const bool mayDiffer = m_watch.wait(std::min(until, next)) || Clock::now() >= next;
    return m_tasks.takeChanged() || mayDiffer;
}

void Simulator::start(Request request)
{
    m_tasks.add(std::move(request));
    wake();
}

Backend::Clock::time_point Simulator::nextTask()
{
    Clock::time_point next = m_tasks.next(Clock::now(), [this](quint32 id) {
        const Modem* const modem = modemWithId(id);
        return std::chrono::milliseconds(modem ? modem->requestTime : 0);
    });
    for (const Delivery& delivery : m_deliveries)
        next = std::min(next, delivery.due);
    return next;
}

QVector<RequestEnd> Simulator::takeEnds()
{
    const Clock::time_point now = Clock::now();
    QVector<RequestEnd> ends = m_tasks.takeCancelled();
    for (const Request& request : m_tasks.takeDue(now))
        ends.append(carryOut(request));
    const auto waits = std::partition(m_deliveries.begin(), m_deliveries.end(),
                                      [&](const Delivery& delivery) { return delivery.due > now; });
    for (auto delivery = waits; delivery != m_deliveries.end(); ++delivery)
        deliver(delivery->message);
    m_deliveries.erase(waits, m_deliveries.end());
    return ends;
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
        SimulatedValues::complete(modem);
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
    m_tasks.forget(isMissing);
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
