#pragma once

#include <QString>

class MainWindow;

/// Opens the settings: the main window's own pages, and those of the plugins that have one. If they are open already,
/// brings them to the front.
/// @param shown clsid of the plugin whose page is shown; without one, the first page is, or the current one
void showSettings(MainWindow& window, const QString& shown = {});
