#pragma once

#include <QString>
#include <QStringList>

/// The paths of the device service's files. See docs/device-service.md for the environment variables.
///
/// The installation's files are in the application's folder. A process without a Qt application object finds
/// them only through the environment variables.
namespace Places {

/// The user's settings store.
QString userSettings();

/// The defaults of the installation; empty if unknown.
QString defaultSettings();

/// The simulator's files in order of preference: the first that exists is read. The first one is written.
QStringList simulatorFiles();

/// The rules for customisation names of real modems; empty if unknown.
QString customizationRules();

} // namespace Places
