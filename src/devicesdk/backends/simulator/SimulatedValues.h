#pragma once

#include "devices/Modem.h"

/// The values that simulated modems report.
namespace SimulatedValues {

constexpr int PinTries = 3;
constexpr int PukTries = 10;

bool isRoaming(const QString& imsi, const QString& network);

/// Adds the values that follow from those of the file. Values that need the SIM are missing while it is locked
/// or absent.
void complete(Modem& modem);

} // namespace SimulatedValues
