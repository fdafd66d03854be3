#include "simulator/Simulator.h"

#include "Log.h"
#include "files/IniDocument.h"
#include "qrvl.h"
#include "simulator/SimulatorFile.h"

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
    : m_watch(files)
    , m_file(files)
{
}

const Modems& Simulator::look()
{
    const auto content = m_file.look();
    if (!content)
        return m_modems;
    QStringList errors;
    if (content->status == FileAccess::Content::Unreadable)
        errors.append(QStringLiteral("it cannot be read"));
    Modems modems = SimulatorFile::read(IniDocument(content->bytes), errors);
    if (errors.isEmpty())
        adopt(std::move(modems));
    else
        qCWarning(logDeviceSdk, "Simulator file %s is ignored while %s", qUtf8Printable(m_file.path()),
                  qUtf8Printable(errors.first()));
    return m_modems;
}

void Simulator::adopt(Modems modems)
{
    const Clock::time_point now = Clock::now();
    for (Modem& modem : modems) {
        modem.id = idOf(modem);
        startCounters(modem, now);
    }
    m_modems = std::move(modems);
    const auto attached = std::count_if(m_modems.cbegin(), m_modems.cend(),
                                        [](const Modem& modem) { return modem.state == Modem::Attached; });
    if (attached > QRVL_MAX_DEVICES)
        qCWarning(logDeviceSdk, "Simulator file %s attaches %d modems; the first %d are available",
                  qUtf8Printable(m_file.path()), int(attached), QRVL_MAX_DEVICES);
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
