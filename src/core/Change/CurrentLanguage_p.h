#pragma once

#include <QString>

/// The current language and the shortcut switch. They have their own lock and can be used with or
/// without g_mutex held. Any thread.
namespace CurrentLanguage {

/// Language and country code, "en-us" at first.
QString name();
void setName(const QString& name);

/// Whether texts keep their shortcuts; true at first.
bool hasShortcuts();

/// Reads the shortcut switch from the settings.
void readShortcutSwitch();

} // namespace CurrentLanguage
