#pragma once

#include "PluginContainer/PluginStatus.h"
#include "support/Look.h"

/// How far a plugin has come, in a word or two.
QString describeState(const PluginStatus& status);

/// The colour that goes with describeState().
Look::Tone toneOfState(const PluginStatus& status);

/// Why a plugin is there or not, in plain words.
QString describeReason(const PluginStatus& status);

/// What a customisation key stands for, such as "modem Lume V2" or "SIM group NT-GOLD".
QString describeKey(const QString& key);
