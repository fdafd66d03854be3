#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>

/// A thread of the service that can be left behind: the end of a process must not wait for ever for a
/// callback of somebody else.
class ServiceThread
{
public:
    /// Starts `body`, which must not throw. At most once.
    void start(std::function<void()> body);

    /// Waits for the body, which its owner has told to return. After `patience`, and when called by the body
    /// itself, the thread is left to itself: what the body uses must not be destroyed then. Harmless when it
    /// never started.
    void finish(std::chrono::milliseconds patience);

private:
    std::thread m_thread;
    std::future<void> m_done;
};
