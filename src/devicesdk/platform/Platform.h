#pragma once

#include <QString>

/// What the device service needs from the operating system. There is a source file for each system.
namespace Platform {

/// The folder in which programs keep the user's configuration files.
QString userConfigFolder();

/// Writes the names of a folder's files to disk. Returns false if the system reports a failure.
bool syncFolder(const QString& folder);

/// Calls `function` when the process ends through exit() or the return of main(), while all threads are still
/// running, and before the library with this code is unloaded.
void atExit(void (*function)());

} // namespace Platform
