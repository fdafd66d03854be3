#pragma once

#include "backends/Backend.h"
#include "backends/modemmanager/Traffic.h"

#include <QThread>

#include <condition_variable>
#include <mutex>

class ModemClient;

/// Real modems, through the ModemManager service of the system. A thread of its own talks to the bus.
class ModemManagerBackend : public Backend
{
public:
    /// The file with the rules for customisation names may be missing. Needs a QCoreApplication; without one
    /// there are no modems.
    explicit ModemManagerBackend(const QString& rulesFile);
    ~ModemManagerBackend() override { end(); }

    DeviceState look() override;
    bool wait(Clock::time_point until) override;
    void wake() override;
    void start(Request request) override;
    QVector<RequestEnd> takeEnds() override;
    void detect() override;
    bool readLive(const Modem& modem, const QString& key, QString& value) override
    {
        return m_traffic.read(modem.trafficInterface, key, value);
    }
    void finish() override { end(); }

private:
    void run(const QString& rulesFile);
    void adopt(DeviceState state, const QVector<RequestEnd>& ends);
    void end();

    template <typename Function>
    bool callClient(Function function);

    Traffic m_traffic;

    std::mutex m_mutex; // guards what follows up to m_isWoken
    std::condition_variable m_wakeUp;
    ModemClient* m_client = nullptr; // while the thread can be called
    DeviceState m_state;
    QVector<RequestEnd> m_ends;
    bool m_hasChanged = false;
    bool m_isWoken = false;

    std::unique_ptr<QThread> m_thread;
};
