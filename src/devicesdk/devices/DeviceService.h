#pragma once

#include "ServiceThread.h"
#include "devices/CallbackRegistry.h"
#include "devices/CounterReport.h"
#include "devices/Modem.h"
#include "simulator/Simulator.h"

#include <QVector>

#include <deque>
#include <mutex>

/// Follows the modems and reports changes on a thread of its own. Thread-safe.
class DeviceService
{
public:
    /// Modems that are attached already cause no event.
    explicit DeviceService(const QStringList& simulatorFiles);

    CallbackRegistry& callbacks() { return m_callbacks; }

    /// Looks after about 300 ms and reports the outcome even if nothing has changed. Calls in the meantime
    /// share at most two looks.
    void startDetect();

    /// The attached modems. During a callback this is the set that its event is about.
    Modems available() const;

    /// Reads a value of an available modem, blocking as long as the modem takes to answer. Returns a result
    /// of the C interface; `value` is set on success only.
    long read(quint32 device, const QString& key, QString& value);

    /// Ends the thread. A callback that does not return soon is left behind.
    void finish();

private:
    using Clock = Counter::Clock;

    void run();
    Clock::time_point nextTask() const;
    bool takeDetection();
    void look(bool reportAnyway);
    bool readCounter(const Modem& modem, const QString& key, QString& value);

    Simulator m_simulator; // used by the constructor and the thread only, except for wake()
    CallbackRegistry m_callbacks;

    mutable std::mutex m_mutex;                 // guards what follows; never held during a callback
    std::deque<Clock::time_point> m_detections; // when to look
    CounterReport m_counterReport;
    Modems m_modems;
    bool m_isFinished = false;
    ServiceThread m_thread;
};

/// The events that report a change, in order, each once however many modems it is about:
/// - QRVL_EVENT_DEV_DEVICE_INVALID when a modem was removed, or replaced by another model
/// - QRVL_EVENT_DEV_REJECT when one was rejected; if it was available before, no other event reports its loss
/// - QRVL_EVENT_DEV_DETECTED when the available modems differ, or if `reportAnyway`
/// - QRVL_EVENT_DEV_STATUS and QRVL_EVENT_DEV_MESSAGES when modems that stay available have other values;
///   counters that have grown are no such change
QVector<int> eventsBetween(const Modems& before, const Modems& after, bool reportAnyway);
