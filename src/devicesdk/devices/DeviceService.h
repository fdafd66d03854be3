#pragma once

#include "ServiceThread.h"
#include "backends/Backend.h"
#include "devices/CallbackRegistry.h"
#include "devices/CounterReport.h"
#include "devices/RequestTable.h"

#include <QVector>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>

/// Follows the modems and reports changes on a thread of its own. Thread-safe.
class DeviceService
{
public:
    /// Modems that are attached already cause no event.
    explicit DeviceService(std::unique_ptr<Backend> backend);

    CallbackRegistry& callbacks() { return m_callbacks; }

    /// Looks after about 300 ms and reports the outcome even if nothing has changed. Calls in the meantime
    /// share at most two looks.
    void startDetect();

    /// The attached modems. During a callback this is the set that its event is about.
    Modems available() const;

    /// The attached modems that were rejected or have failed.
    Modems unusable() const;

    /// Reads a value of an attached modem or of QRVL_SERVICE, blocking as long as the modem takes to answer.
    /// Returns a result of the C interface; `value` is set on success only.
    long read(quint32 device, const QString& key, QString& value);

    /// Sets a value of QRVL_SERVICE that the backend does not know; empty for none. May be called from any thread.
    void setServiceValue(const QString& key, const QString& value);

    /// Begins a request. Returns a result of the C interface. On success `number` is set before the end of the
    /// request can be reported.
    long start(Request request, quint32& number);

    /// Ends the thread. A callback that does not return soon is left behind.
    void finish();

private:
    using Clock = Counter::Clock;

    void run();
    Clock::time_point nextTask() const;
    bool takeDetection();
    void look(bool reportAnyway, const QVector<RequestEnd>& ends);
    void report(const RequestEnd& end);
    void adopt(DeviceState& state);
    std::optional<Modem> listed(quint32 device) const;
    bool readCounter(const Modem& modem, const QString& key, QString& value);

    const std::unique_ptr<Backend> m_backend;
    CallbackRegistry m_callbacks;

    mutable std::mutex m_mutex; // guards what follows up to m_isFinished; never held during a callback
    std::deque<Clock::time_point> m_detections; // when to look
    CounterReport m_counterReport;
    DeviceState m_state;
    Modems m_available;          // of m_state
    Modems m_unusable;           // likewise
    ModemValues m_serviceValues; // beside those of the backend
    bool m_hasNewValues = false;
    RequestTable m_requests;
    bool m_isFinished = false;
    ServiceThread m_thread;
};
