#pragma once

/// Messages about a start that went wrong. Call these while Startup exists.
namespace StartReport {

/// Reports each configuration file that could not be read to its end on standard error, in English: what is
/// wrong and where. Writes nothing if both files are fine.
void reportConfigurationFaults();

/// Reports why there is no main window, in the language of the application: the plugin library file, the
/// main-frame plugin it names, and what happened to that plugin.
void reportMissingWindow();

} // namespace StartReport
