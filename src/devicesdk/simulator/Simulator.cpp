#include "simulator/Simulator.h"

#include "Log.h"
#include "files/IniDocument.h"
#include "qrvl.h"
#include "simulator/SimulatorFile.h"

#include <algorithm>
#include <utility>

using std::chrono::seconds;

namespace {

/// What grows while a modem works, and by how much each second.
struct Counter
{
    const char* total;
    const char* rate;
};

constexpr Counter TrafficCounters[] = {{"received", "receive-rate"}, {"sent", "send-rate"}};

quint64 number(const ModemValues& values, const QString& key)
{
    return values.value(key).toULongLong();
}

void add(ModemValues& values, const QString& key, quint64 bytes)
{
    values.insert(key, QString::number(number(values, key) + bytes));
}

} // namespace

Simulator::Simulator(const QStringList& files)
    : m_file(files)
{
}

const Modems& Simulator::look()
{
    readFile();
    transfer();
    return m_modems;
}

void Simulator::readFile()
{
    const auto content = m_file.look();
    if (!content)
        return;
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

void Simulator::adopt(Modems modems)
{
    for (Modem& modem : modems)
        modem.id = idOf(modem);
    m_modems = std::move(modems);
    resumeTransfers();
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

/// Modems that stay attached go on; what the others have transferred is forgotten.
void Simulator::resumeTransfers()
{
    const QHash<quint32, ModemValues> before = std::exchange(m_transferred, {});
    for (Modem& modem : m_modems) {
        if (modem.state != Modem::Attached)
            continue;
        const ModemValues transferred = before.value(modem.id);
        m_transferred.insert(modem.id, transferred);
        for (auto total = transferred.cbegin(); total != transferred.cend(); ++total)
            add(modem.status, total.key(), total->toULongLong());
    }
}

void Simulator::transfer()
{
    const auto passed = std::chrono::duration_cast<seconds>(Clock::now() - m_counted);
    m_counted += passed;
    for (Modem& modem : m_modems) {
        if (modem.state == Modem::Attached && passed > seconds(0))
            transfer(modem, quint64(passed.count()));
    }
}

void Simulator::transfer(Modem& modem, quint64 seconds)
{
    for (const Counter& counter : TrafficCounters) {
        const quint64 bytes = number(modem.status, QLatin1String(counter.rate)) * seconds;
        if (bytes == 0)
            continue;
        add(modem.status, QLatin1String(counter.total), bytes);
        add(m_transferred[modem.id], QLatin1String(counter.total), bytes);
    }
}
