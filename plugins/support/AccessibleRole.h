#pragma once

#include <QAccessible>

class QWidget;

/// Tells screen readers what a widget is, where Qt's own answer says too little. Call it before the widget is shown.
/// The name is the accessible name, or else the text of a label or the title of a window. GUI thread only.
void setAccessibleRole(QWidget* widget, QAccessible::Role role);
