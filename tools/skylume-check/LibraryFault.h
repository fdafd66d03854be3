#pragma once

#include "Findings.h"
#include "PluginContainer/PluginStatus.h"

#include <QHash>

class Installation;

/// The lines of the plugins in the plugin library file, by clsid.
QHash<QString, qint64> pluginLines(const Installation& installation);

/// The kind of finding for a plugin whose library cannot be used.
Kind kindOf(PluginStatus::Fault fault);

/// What is wrong with a plugin's library, with its path, what is wanted and what was found.
QString describeLibraryFault(const PluginStatus& plugin);
