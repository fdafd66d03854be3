#pragma once

class QWidget;

/// Opens the about box: name and version of the application, and the notices for third-party software.
void showAbout(QWidget* parent);
