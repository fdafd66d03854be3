#include "ServiceThread.h"

#include <utility>

void ServiceThread::start(std::function<void()> body)
{
    std::packaged_task<void()> task(std::move(body));
    m_done = task.get_future();
    m_thread = std::thread(std::move(task));
}

bool ServiceThread::finish(std::chrono::milliseconds patience)
{
    if (!m_thread.joinable())
        return true;
    const bool canWait = m_thread.get_id() != std::this_thread::get_id();
    const bool hasEnded = canWait && m_done.wait_for(patience) == std::future_status::ready;
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
    return hasEnded;
}
