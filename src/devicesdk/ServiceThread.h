#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>

/// A thread that can be left behind: a process must be able to end although a callback does not return.
class ServiceThread
{
public:
    /// Starts `body`, which must not throw. Call it once at most.
    void start(std::function<void()> body);

    /// Waits for the body to return; telling it to do so is up to the owner. Returns false if it is still
    /// running after `patience`, or calls this itself: it is left behind then, and whatever it uses must not be
    /// destroyed.
    bool finish(std::chrono::milliseconds patience);

private:
    std::thread m_thread;
    std::future<void> m_done;
};
