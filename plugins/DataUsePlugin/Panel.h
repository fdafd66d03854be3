#pragma once

class QVBoxLayout;
class QWidget;

/// Gives a panel a heading, and a widget at the other end of the heading's line.
/// @param title  identifier of the heading's string
/// @param corner may be null
/// @return the column below the heading
QVBoxLayout* makePanel(QWidget* panel, const char* title, QWidget* corner = nullptr);
