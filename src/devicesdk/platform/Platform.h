#pragma once

#include <QString>

/// What the device service needs of the operating system; one source file for each.
namespace Platform {

/// The folder for the user's configuration files of all programs.
QString userConfigFolder();

/// Makes renamed files of a folder durable. False when the system reports a failure.
bool syncFolder(const QString& folder);

/// Has `function` called when the process ends by exit() or the end of main(), while all threads still run.
/// Where the library that holds this code can be unloaded, it is called before that as well.
void atExit(void (*function)());

} // namespace Platform
