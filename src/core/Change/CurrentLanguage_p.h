#pragma once

#include <QString>

/// The language in force and what goes with it. Behind a lock of its own, so that it can be asked for with
/// and without the lock of the texts. Any thread.
namespace CurrentLanguage {

/// Language and country code, "en-us" at first.
QString name();
void setName(const QString& name);

/// Whether texts keep their shortcuts; true at first.
bool hasShortcuts();

/// Reads that from the settings.
void readShortcutSwitch();

} // namespace CurrentLanguage
