#pragma once

#include <QString>

class MainWindow;

/// Opens the settings: the main window's own pages, and those of the plugins that have one.
/// @param shown clsid of the plugin whose page is shown first; without one, the first page is
void showSettings(MainWindow& window, const QString& shown = {});
