#pragma once

#include "platform/FolderWatch.h"

#include <QStringList>

#include <chrono>

/// Lets a thread sleep until one of some files may have changed.
///
/// Changes are reported by the operating system, however they are made: by writing to the file, replacing it,
/// creating or removing it, or its folders. What is written to a file that stays open is reported within a
/// second or two. Where the system cannot report them, as on a network drive, the
/// thread is woken every 30 seconds.
class FileWatch
{
public:
    using Clock = std::chrono::steady_clock;

    /// Watches from now on. The files and their folders need not exist.
    explicit FileWatch(const QStringList& files);

    /// Blocks until a file may have changed, wake() is called or it is `until`; it may end earlier. Returns
    /// true if the files should be read again; no change after that is missed. Changes of other files in the
    /// same folders are reported too.
    bool wait(Clock::time_point until = Clock::time_point::max());

    /// Ends the current wait(), or the next one if there is none. May be called from any thread.
    void wake() { m_folders.wake(); }

private:
    void renew();
    void settle();

    QStringList m_files;
    FolderWatch m_folders;
    Clock::time_point m_nextLook = Clock::time_point::max(); // unless all changes are reported
};
