#include "settings/Settings.h"

#include "Log.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto RepairDelay = 2s; // somebody may be editing the file
constexpr auto FirstRetryDelay = 100ms;
constexpr auto LongestRetryDelay = 10s;
constexpr auto Patience = 5s;

} // namespace

Settings::Settings(const QString& userFile, const QString& defaultsFile)
    : m_watch({userFile, defaultsFile})
    , m_userFile(userFile)
    , m_defaultsFile(defaultsFile)
    , m_retryDelay(FirstRetryDelay)
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
    const bool isFirst = m_pending.empty();
    m_pending[{section, key}] = value;
    if (m_isFinished) {
        lock.unlock();
        write();
        lock.lock();
    }
    const bool isFailing = m_isFailing;
    lock.unlock();
    if (isFirst)
        m_watch.wake();
    return !isFailing;
}

void Settings::onFailing(std::function<void(bool isFailing)> report)
{
    {
        const std::lock_guard lock(m_reportMutex);
        m_report = std::move(report);
    }
    reportFailing();
}

void Settings::reportFailing()
{
    const std::lock_guard reportLock(m_reportMutex);
    std::unique_lock lock(m_mutex);
    const bool isFailing = m_isFailing;
    lock.unlock();
    if (m_report && isFailing != std::exchange(m_isReportedFailing, isFailing))
        m_report(isFailing);
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
    m_watch.wake();
    if (!m_thread.finish(Patience))
        return; // still writing: waiting for it could take for ever
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
        const Clock::time_point next = nextWrite();
        lock.unlock();
        if (next <= Clock::now())
            write();
        else if (m_watch.wait(next))
            look();
        reportFailing();
        lock.lock();
    }
}

Settings::Clock::time_point Settings::nextWrite() const
{
    const Clock::time_point wanted = hasChanges() ? Clock::time_point::min() : m_repairTime;
    return m_isFailing ? std::max(wanted, m_retryTime) : wanted;
}

void Settings::look()
{
    const std::lock_guard fileLock(m_fileMutex);
    std::optional<SettingsTable> user = m_userFile.look();
    std::optional<SettingsTable> defaults = m_defaultsFile.look();
    const std::lock_guard lock(m_mutex);
    if (user) {
        adopt(*user);
        m_repairTime = m_userFile.isBroken() ? Clock::now() + RepairDelay : Clock::time_point::max();
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
        m_repairTime = Clock::time_point::max();
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

/// Takes over the content of the file. Changes that are not in the file yet win.
void Settings::adopt(SettingsTable& entries)
{
    for (const SettingsChanges* changes : {&m_writing, &m_pending}) {
        for (const auto& [name, value] : *changes)
            entries.set(name.first, name.second, value);
    }
    m_user.swap(entries);
}
