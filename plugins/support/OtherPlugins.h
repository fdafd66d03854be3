#pragma once

#include <QStringList>

// Calls to other plugins. They have no effect if the plugin is missing, and exceptions are logged. GUI thread only.

/// Shows the page of a plugin and brings the main window to the front.
/// @return false if the main window has no such page
bool showPage(const QString& clsid);

/// Opens the settings with the page of a plugin.
void openSettings(const QString& clsid);

/// Calls a slot of another plugin. Loads the plugin if it is enabled.
/// @param number    of the object that has the slot, see PluginIds.h
/// @param arguments at most four
/// @return false if there is no such plugin or slot, or if it has thrown an exception
bool callSlot(const QString& clsid, int number, const char* slot, const QStringList& arguments);
