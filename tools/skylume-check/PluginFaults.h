#pragma once

#include <QHash>

#include <functional>

class Findings;
class Installation;
class PluginInspection;
struct PluginStatus;

// What the application itself finds wrong with the plugins of an installation.

/// The lines of the plugins in the plugin library file, by clsid.
QHash<QString, qint64> pluginLines(const Installation& installation);

/// Adds the faults of the two configuration files.
/// @param withBroken whether to add files that are no valid XML, too
void addFileFaults(const PluginInspection& inspection, bool withBroken, Findings& findings);

/// Adds the faults of libraries, once PluginInspection::tryLibraries() has looked for them.
/// @param isWanted whether a plugin matters
void addLibraryFaults(const PluginInspection& inspection, const Installation& installation,
                      const std::function<bool(const PluginStatus&)>& isWanted, Findings& findings);
