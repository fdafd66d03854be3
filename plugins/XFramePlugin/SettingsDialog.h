#pragma once

class QWidget;

/// Opens the settings: a page of the main window's own, and those of the plugins that have one.
void showSettings(QWidget* parent);
