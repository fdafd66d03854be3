#include "ServiceThread.h"

#include <utility>

void ServiceThread::start(std::function<void()> body)
{
    std::packaged_task<void()> task(std::move(body));
    m_done = task.get_future();
    m_thread = std::thread(std::move(task));
}

void ServiceThread::finish(std::chrono::milliseconds patience)
{
    if (!m_thread.joinable())
        return;
    const bool canWait = m_thread.get_id() != std::this_thread::get_id();
    if (canWait && m_done.wait_for(patience) == std::future_status::ready)
        m_thread.join();
    else
        m_thread.detach();
}
