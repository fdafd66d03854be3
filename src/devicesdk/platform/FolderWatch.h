#pragma once

#include <QStringList>

#include <chrono>
#include <memory>

/// Lets a thread sleep until something changes in some folders. One source file for each operating system.
///
/// Qt's watcher is not used: it needs an event loop, and with that an application object, which a program
/// that uses the C interface may not have.
class FolderWatch
{
public:
    static constexpr std::chrono::milliseconds Forever{-1};

    FolderWatch();
    ~FolderWatch();

    /// Watches these existing folders, without their subfolders, instead of the previous ones. The paths are
    /// absolute. Returns false if changes in one of them may go unreported.
    bool watch(const QStringList& folders);

    /// Blocks until something changes in a folder, wake() is called or the time is over; it may end earlier.
    /// Returns true after a change; call watch() then before reading, so that later changes are reported.
    bool wait(std::chrono::milliseconds timeout);

    /// Ends the current wait(), or the next one if there is none. May be called from any thread.
    void wake();

private:
    struct System;
    const std::unique_ptr<System> m_system;
};
