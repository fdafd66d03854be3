#pragma once

class MainWindow;

/// Opens the settings: the main window's own pages, and those of the plugins that have one.
void showSettings(MainWindow& window);
