#pragma once

#include "Findings.h"
#include "PluginContainer/PluginStatus.h"

/// The kind of finding for a plugin whose library cannot be used.
Kind kindOf(PluginStatus::Fault fault);

/// What is wrong with a plugin's library, with its path, what is wanted and what was found.
QString describeLibraryFault(const PluginStatus& plugin);
