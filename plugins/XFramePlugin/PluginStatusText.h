#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "PluginContainer/PluginStatus.h"
#include "support/Look.h"

/// The state of a plugin in a word or two.
QString describeState(const PluginStatus& status);

/// The colour that goes with describeState().
Look::Tone toneOfState(const PluginStatus& status);

/// Why a plugin is available, unavailable or has failed.
QString describeReason(const PluginStatus& status);

/// For a failure the file, what was needed and what was found, the latter two in English. Otherwise
/// describeReason() and the place of the rule.
QString describeDetails(const PluginStatus& status);

/// What is wrong with a configuration file, and where.
QString describeFault(const ConfigurationFault& fault);

/// The meaning of a customisation key, such as "modem Lume V2" or "SIM group NT-GOLD".
QString describeKey(const QString& key);

/// What describeKey() returns, or words for no key.
QString keyInWords(const QString& key);

/// The operator of the installation, or words for none.
QString operatorInWords();
