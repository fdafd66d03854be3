#pragma once

#include <mutex>

/// A value for several threads. One at a time has access, as long as the result of lock() lives.
template <typename T>
class Guarded
{
public:
    struct Access
    {
        T& value;
        const std::lock_guard<std::mutex> guard;
        T* operator->() { return &value; }
    };
    Access lock() { return {m_value, std::lock_guard(m_mutex)}; }

private:
    T m_value;
    std::mutex m_mutex;
};
