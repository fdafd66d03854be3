#pragma once

#include "ServiceThread.h"
#include "devices/CallbackRegistry.h"
#include "devices/Modem.h"
#include "simulator/Simulator.h"

#include <QVector>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

/// Follows the modems and tells of them on a thread of its own. Thread-safe.
class DeviceService
{
public:
    /// Looks once; modems that are there already cause no event.
    explicit DeviceService(const QStringList& simulatorFiles);

    CallbackRegistry& callbacks() { return m_callbacks; }

    /// Looks in about 300 ms and then tells of it in any case. Calls until then share at most two looks.
    void startDetect();

    /// The attached modems. During a callback this is the set that its event tells of.
    Modems available() const;

    /// Ends the thread. A callback that goes on for long is left to itself.
    void finish();

private:
    using Clock = std::chrono::steady_clock;

    void run();
    bool isDetectionDue() const;
    void look(bool tellAnyway);

    Simulator m_simulator; // used by the constructor and the thread alone
    CallbackRegistry m_callbacks;

    mutable std::mutex m_mutex; // guards what follows; never held during a callback
    std::condition_variable m_wake;
    std::deque<Clock::time_point> m_detections; // when to look
    Modems m_modems;
    bool m_isFinished = false;
    ServiceThread m_thread;
};

/// The events that tell of a change, in order: QRVL_EVENT_DEV_DEVICE_INVALID when a modem has gone or became
/// another, QRVL_EVENT_DEV_REJECT when one was refused (also when it was available before: then nothing else
/// tells that it has gone), QRVL_EVENT_DEV_DETECTED when the available modems differ or `tellAnyway`, and
/// QRVL_EVENT_DEV_STATUS and QRVL_EVENT_DEV_MESSAGES when modems that were available before have other
/// values. Each comes once, however many modems it is about.
QVector<int> eventsBetween(const Modems& before, const Modems& after, bool tellAnyway);
