#pragma once

#include "ExtendDialog/ExtendDialog.h"

/// Puts content into a dialog of the application and fits the dialog to it. GUI thread only.
/// @param content its minimum size is kept; the dialog owns it from now on
void fillDialog(ExtendDialog* dialog, QWidget* content);

/// Lets the user resize a dialog, whatever frame it has. Call it after fillDialog().
/// @param dialog of the kind enWidgetNormal
void makeResizable(ExtendDialog* dialog);
