#include "devices/CallbackRegistry.h"

#include "Log.h"

#include <algorithm>
#include <exception>

namespace {

using Callbacks = std::vector<QRVL_DevCallback>;

bool contains(const Callbacks& list, QRVL_DevCallback callback)
{
    return std::find(list.begin(), list.end(), callback) != list.end();
}

void call(QRVL_DevCallback callback, int event, void* data)
{
    try {
        callback(event, data);
    } catch (const std::exception& exception) {
        qCWarning(logDeviceSdk, "A callback threw at event %d: %s", event, exception.what());
    } catch (...) {
        qCWarning(logDeviceSdk, "A callback threw at event %d", event);
    }
}

} // namespace

bool CallbackRegistry::add(List list, QRVL_DevCallback callback)
{
    const std::lock_guard lock(m_mutex);
    Callbacks& callbacks = m_lists[list];
    if (contains(callbacks, callback))
        return true;
    if (callbacks.size() == Places)
        return false;
    callbacks.push_back(callback);
    return true;
}

bool CallbackRegistry::remove(List list, QRVL_DevCallback callback)
{
    std::unique_lock lock(m_mutex);
    Callbacks& callbacks = m_lists[list];
    const auto place = std::find(callbacks.begin(), callbacks.end(), callback);
    if (place == callbacks.end())
        return false;
    callbacks.erase(place);
    if (std::this_thread::get_id() != m_dispatcher)
        m_ended.wait(lock, [&] { return m_running != callback; });
    return true;
}

void CallbackRegistry::dispatch(int event, void* data)
{
    qCDebug(logDeviceSdk, "Event %d", event);
    for (const QRVL_DevCallback callback : everyCallback()) {
        if (!begin(callback))
            continue;
        call(callback, event, data);
        end();
    }
}

bool CallbackRegistry::isRegistered(QRVL_DevCallback callback) const
{
    return std::any_of(m_lists.begin(), m_lists.end(),
                       [&](const Callbacks& l) { return contains(l, callback); });
}

Callbacks CallbackRegistry::everyCallback() const
{
    const std::lock_guard lock(m_mutex);
    Callbacks callbacks;
    for (const Callbacks& list : m_lists) {
        for (const QRVL_DevCallback callback : list) {
            if (!contains(callbacks, callback))
                callbacks.push_back(callback);
        }
    }
    return callbacks;
}

/// Returns false if the callback was removed since the dispatch began, perhaps by another callback.
bool CallbackRegistry::begin(QRVL_DevCallback callback)
{
    const std::lock_guard lock(m_mutex);
    if (!isRegistered(callback))
        return false;
    m_running = callback;
    m_dispatcher = std::this_thread::get_id();
    return true;
}

void CallbackRegistry::end()
{
    {
        const std::lock_guard lock(m_mutex);
        m_running = nullptr;
    }
    m_ended.notify_all();
}
