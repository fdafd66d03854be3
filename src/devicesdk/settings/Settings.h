#pragma once

#include "ServiceThread.h"
#include "files/FileWatch.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsTable.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

/// The user's settings and the installation's defaults. Thread-safe.
///
/// Reading is a look-up in memory. set() changes the memory; a thread writes the change to disk at once,
/// together with others made while it was busy. The thread also adopts changes made by other processes.
class Settings
{
public:
    enum class View { Merged, User, Defaults };

    /// Reads both files. Paths as for SettingsFile.
    Settings(const QString& userFile, const QString& defaultsFile);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// Calls `take` with the value; `take` must not use this object. Returns false if there is no value.
    template <typename Take>
    bool get(View view, const SettingName& name, Take take) const
    {
        const std::lock_guard lock(m_mutex);
        const QString* const value = find(view, name);
        if (value)
            take(*value);
        return value;
    }

    /// From now on calls a function, on any thread, when changes can no longer be written, and when they can be again;
    /// at once if they cannot be now. The function must not use this object.
    void onFailing(std::function<void(bool isFailing)> report);

    /// Changes one of the user's values. Returns false if it stays in memory for now because the store cannot
    /// be written.
    bool set(const QString& section, const QString& key, const QString& value);

    /// Waits until all changes are on disk. Returns false if they cannot be written, or not within 5 seconds.
    bool drain();

    /// Ends the thread and writes what is pending. From then on set() itself writes.
    void finish();

private:
    using Clock = FileWatch::Clock;

    const QString* find(View view, const SettingName& name) const;
    void run();
    bool hasChanges() const { return !m_pending.empty() || !m_writing.empty(); }
    Clock::time_point nextWrite() const;
    void look();
    void write();
    void scheduleRetry();
    void adopt(SettingsTable& entries);
    void reportFailing();

    FileWatch m_watch;        // before the files, so that no change after the first look is missed
    std::mutex m_reportMutex; // orders the reports; locked before m_mutex
    std::function<void(bool)> m_report;
    bool m_isReportedFailing = false;
    std::mutex m_fileMutex; // guards the files; locked before m_mutex
    SettingsFile m_userFile;
    SettingsFile m_defaultsFile;

    mutable std::mutex m_mutex; // guards what follows up to m_retryDelay
    std::condition_variable m_settled;
    SettingsTable m_user; // includes the changes that are not written yet
    SettingsTable m_defaults;
    SettingsChanges m_pending;
    SettingsChanges m_writing; // kept until they are on disk
    bool m_isFailing = false;
    bool m_isFinished = false;
    Clock::time_point m_repairTime = Clock::time_point::max(); // when to remove broken lines
    Clock::time_point m_retryTime;
    Clock::duration m_retryDelay;

    ServiceThread m_thread;
};
