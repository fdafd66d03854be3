#pragma once

#include <QString>

/// What somebody who gives support wants to know, as plain text in the current language: versions, what the
/// installation is customised for, faults, all plugins with the rules behind their states, and the latest log
/// lines. GUI thread.
/// @param key current customisation key
QString supportReport(const QString& key);
