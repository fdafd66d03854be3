#include "settings/Settings.h"

#include "Log.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto LookInterval = 200ms;
constexpr auto FirstRetryDelay = 100ms;
constexpr auto LongestRetryDelay = 10s;
constexpr auto Patience = 5s;

} // namespace

Settings::Settings(const QString& userFile, const QString& defaultsFile)
    : m_retryDelay(FirstRetryDelay)
    , m_userFile(userFile)
    , m_defaultsFile(defaultsFile)
{
    qCDebug(logDeviceSdk, "Settings of the user: %s, defaults: %s", qUtf8Printable(userFile),
            qUtf8Printable(defaultsFile));
    look();
    m_isFailing = !m_userFile.isReadable();
    m_thread.start([this] { run(); });
}

Settings::~Settings()
{
    finish();
}

const QString* Settings::find(View view, const SettingName& name) const
{
    const QString* found = view == View::Defaults ? nullptr : m_user.find(name);
    if (!found && view != View::User)
        found = m_defaults.find(name);
    return found;
}

bool Settings::set(const QString& section, const QString& key, const QString& value)
{
    std::unique_lock lock(m_mutex);
    m_user.set(section, key, value);
    m_pending[{section, key}] = value;
    if (m_isFinished) {
        lock.unlock();
        write();
        lock.lock();
    }
    const bool isFailing = m_isFailing;
    lock.unlock();
    m_wake.notify_one();
    return !isFailing;
}

bool Settings::drain()
{
    std::unique_lock lock(m_mutex);
    m_settled.wait_for(lock, Patience, [this] { return !hasChanges() || m_isFailing || m_isFinished; });
    return !hasChanges();
}

void Settings::finish()
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_isFinished, true))
            return;
    }
    m_wake.notify_one();
    m_thread.finish(Patience);
    std::unique_lock lock(m_mutex);
    const bool isUnwritten = hasChanges();
    lock.unlock();
    if (isUnwritten)
        write();
}

void Settings::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_isFinished) {
        const bool isDue = isWriteDue();
        lock.unlock();
        if (isDue)
            write();
        else
            look();
        lock.lock();
        m_wake.wait_for(lock, LookInterval, [this] { return m_isFinished || isWriteDue(); });
    }
}

bool Settings::isWriteDue() const
{
    return (hasChanges() || m_userFile.needsRepair()) && (!m_isFailing || Clock::now() >= m_retryTime);
}

void Settings::look()
{
    const std::lock_guard fileLock(m_fileMutex);
    std::optional<SettingsTable> user = m_userFile.look();
    std::optional<SettingsTable> defaults = m_defaultsFile.look();
    const std::lock_guard lock(m_mutex);
    if (user) {
        adopt(*user);
        m_isFailing = m_isFailing && hasChanges();
    }
    if (defaults)
        m_defaults.swap(*defaults);
}

void Settings::write()
{
    const std::lock_guard fileLock(m_fileMutex);
    {
        const std::lock_guard lock(m_mutex);
        m_pending.merge(m_writing);
        m_writing = std::exchange(m_pending, {});
    }
    std::optional<SettingsTable> entries = m_userFile.write(m_writing);
    const std::lock_guard lock(m_mutex);
    if (entries) {
        m_writing.clear();
        adopt(*entries);
        m_retryDelay = FirstRetryDelay;
    } else {
        scheduleRetry();
    }
    m_isFailing = !entries;
    m_settled.notify_all();
}

void Settings::scheduleRetry()
{
    m_retryTime = Clock::now() + m_retryDelay;
    m_retryDelay = std::min<Clock::duration>(m_retryDelay * 2, LongestRetryDelay);
}

/// Takes over what the file holds. Changes that are not in the file yet win.
void Settings::adopt(SettingsTable& entries)
{
    for (const SettingsChanges* changes : {&m_writing, &m_pending}) {
        for (const auto& [name, value] : *changes)
            entries.set(name.first, name.second, value);
    }
    m_user.swap(entries);
}
