#pragma once

#include <QString>
#include <QStringList>

/// Where the device service keeps its files. See docs/device-service.md for the environment variables.
///
/// The installation's files are found through the application's folder: without an application object only
/// the environment variables name them.
namespace Places {

/// The user's settings store.
QString userSettings();

/// The defaults of the installation; empty when it is not known.
QString defaultSettings();

/// The simulator's files in the order of preference; the first that exists counts. The first is the one to
/// write.
QStringList simulatorFiles();

} // namespace Places
