#pragma once

#include "ServiceThread.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsTable.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>

/// The user's settings over the installation's defaults. Thread-safe.
///
/// Reading is a look-up in memory. A change is in memory when set() returns; a thread of its own writes it at
/// once, together with what was changed during the write before. The thread also takes over changes of other
/// processes.
class Settings
{
public:
    enum class View { Merged, User, Defaults };

    /// Reads both files. Paths as for SettingsFile.
    Settings(const QString& userFile, const QString& defaultsFile);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// Hands the value to `take`, which must not use this object; false when there is none.
    template <typename Take>
    bool get(View view, const SettingName& name, Take take) const
    {
        const std::lock_guard lock(m_mutex);
        const QString* const value = find(view, name);
        if (value)
            take(*value);
        return value;
    }

    /// Changes a value of the user's. False when it is kept in memory because the store cannot be written at
    /// present.
    bool set(const QString& section, const QString& key, const QString& value);

    /// Waits until all changes are on the disk; false when they cannot be written, or not within five
    /// seconds.
    bool drain();

    /// Ends the thread and writes what is left. From then on set() writes by itself.
    void finish();

private:
    using Clock = std::chrono::steady_clock;

    const QString* find(View view, const SettingName& name) const;
    void run();
    bool hasChanges() const { return !m_pending.empty() || !m_writing.empty(); }
    bool isWriteDue() const;
    void look();
    void write();
    void scheduleRetry();
    void adopt(SettingsTable& entries);

    mutable std::mutex m_mutex; // guards all but the files
    std::condition_variable m_wake;
    std::condition_variable m_settled;
    SettingsTable m_user; // with the changes that are not written yet
    SettingsTable m_defaults;
    SettingsChanges m_pending;
    SettingsChanges m_writing; // changed by the writer alone; kept until they are on the disk
    bool m_isFailing = false;
    bool m_isFinished = false;
    Clock::time_point m_retryTime;
    Clock::duration m_retryDelay;

    std::mutex m_fileMutex; // guards the files; taken before m_mutex
    SettingsFile m_userFile;
    SettingsFile m_defaultsFile;
    ServiceThread m_thread;
};
