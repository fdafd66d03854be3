#pragma once

#include <QString>

/// What the device service needs of the operating system; one source file for each.
namespace Platform {

/// The folder for the user's configuration files of all programs.
QString userConfigFolder();

/// Makes renamed files of a folder durable. False when the system reports a failure.
bool syncFolder(const QString& folder);

/// True at the end of a process whose other threads were ended by force: their locks stay locked for ever.
bool otherThreadsAreGone();

/// Keeps the library that holds this code loaded until the process ends, where unloading it is not safe.
void keepLibraryLoaded();

} // namespace Platform
