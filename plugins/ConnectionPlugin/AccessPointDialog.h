#pragma once

#include "support/Modems.h"

#include <functional>

class QWidget;

/// Lets the user choose how the SIM card in a modem is connected. Returns at once. GUI thread only.
/// @param parent owns the dialog
/// @param saved  called when the user has changed something and it has been stored
void showAccessPoint(const Modem& modem, QWidget* parent, const std::function<void()>& saved);
