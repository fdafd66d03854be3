#include "backends/modemmanager/Traffic.h"

#include <QFile>

#include <algorithm>
#include <iterator>

using namespace std::chrono_literals;

namespace {

constexpr auto ShortestPeriod = 1s;
constexpr auto LongestPeriod = 5s; // an average over more says nothing about the present

struct Key
{
    const char* name;
    const char* file;
    bool isRate;
};

constexpr Key Keys[] = {
    {"received", "rx_bytes", false},
    {"sent", "tx_bytes", false},
    {"receive-rate", "rx_bytes", true},
    {"send-rate", "tx_bytes", true},
};

} // namespace

bool Traffic::read(const QString& interface, const QString& key, QString& value)
{
    const auto* const found = std::find_if(std::begin(Keys), std::end(Keys),
                                           [&](const Key& k) { return key == QLatin1String(k.name); });
    if (interface.isEmpty() || interface.contains(QLatin1Char('/')) || found == std::end(Keys))
        return false;
    const QString path =
        QStringLiteral("/sys/class/net/%1/statistics/%2").arg(interface, QLatin1String(found->file));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const quint64 bytes = file.readAll().trimmed().toULongLong();
    value = QString::number(found->isRate ? rateOf(path, bytes) : bytes);
    return true;
}

quint64 Traffic::rateOf(const QString& counter, quint64 bytes)
{
    const Clock::time_point now = Clock::now();
    const std::lock_guard lock(m_mutex);
    const auto known = m_samples.find(counter);
    if (known == m_samples.end() || now - known->time > LongestPeriod) {
        m_samples.insert(counter, {now, bytes, 0});
        return 0;
    }
    const std::chrono::duration<double> period = now - known->time;
    if (period >= ShortestPeriod)
        *known = {now, bytes, quint64(double(bytes - std::min(bytes, known->bytes)) / period.count())};
    return known->rate;
}
