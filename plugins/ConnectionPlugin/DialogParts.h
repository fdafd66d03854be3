#pragma once

class QDialog;
class QLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

/// Adds a field with a caption above it, both in a widget of their own, which can be hidden.
/// @param caption identifier of a string
QLineEdit* addField(QVBoxLayout* column, const char* caption);

/// Makes the last line of a dialog: a button that closes it, and the one for what most users want.
/// @param label identifier of the string on that button
QLayout* makeButtons(QDialog* dialog, QPushButton* primary, const char* label);
