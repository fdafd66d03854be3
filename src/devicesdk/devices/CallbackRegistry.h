#pragma once

#include "qrvl.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

/// The lists of event callbacks. Thread-safe, but for dispatch(), which belongs to one thread.
class CallbackRegistry
{
public:
    enum List { Initialisation, Manager, ListCount };
    static constexpr std::size_t kPlaces = 32;

    /// False when the list is full. A callback that is in it already stays where it is.
    bool add(List list, QRVL_DevCallback callback);

    /// False when the list does not hold the callback. Waits while another thread runs the callback.
    bool remove(List list, QRVL_DevCallback callback);

    /// Calls each registered callback once with the event, without any lock. Exceptions end here, with a
    /// warning.
    void dispatch(int event);

private:
    bool isRegistered(QRVL_DevCallback callback) const;
    std::vector<QRVL_DevCallback> everyCallback() const;
    bool begin(QRVL_DevCallback callback);
    void end();

    mutable std::mutex m_mutex;
    std::condition_variable m_ended;
    std::array<std::vector<QRVL_DevCallback>, ListCount> m_lists;
    QRVL_DevCallback m_running = nullptr;
    std::thread::id m_dispatcher;
};
