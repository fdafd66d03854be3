#pragma once

#include <QHash>
#include <QString>

#include <chrono>
#include <mutex>

/// Counters of network interfaces, and how fast they grow. Thread-safe.
class Traffic
{
public:
    /// A value of QRVL_DevSrv_GetStatusValue(). Returns false if the key is not one of traffic, or the interface
    /// does not exist. Rates are those since an earlier reading, a second ago or more.
    bool read(const QString& interface, const QString& key, QString& value);

private:
    using Clock = std::chrono::steady_clock;

    struct Sample
    {
        Clock::time_point time;
        quint64 bytes = 0;
        quint64 rate = 0;
    };

    quint64 rateOf(const QString& counter, quint64 bytes);

    std::mutex m_mutex;
    QHash<QString, Sample> m_samples; // by the path of the counter
};
