#pragma once

#include "qrvl.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

/// The lists of event callbacks. Thread-safe; dispatch() is called by one thread only.
class CallbackRegistry
{
public:
    enum List { Initialisation, Manager, ListCount };
    static constexpr std::size_t Places = 32;

    /// Returns false if the list is full. Adding a callback again changes nothing.
    bool add(List list, QRVL_DevCallback callback);

    /// Returns false if the list does not hold the callback. Waits for the callback to return, unless it is
    /// called during a callback.
    bool remove(List list, QRVL_DevCallback callback);

    /// Calls each registered callback once with the event, holding no lock. Exceptions are logged as warnings.
    void dispatch(int event, void* data = nullptr);

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
