#pragma once

class MainWindow;

/// Opens "About this installation": where it is, what it is customised for, and its plugins. A button copies all
/// of it together with the log, for support.
void showInstallation(MainWindow* window);
