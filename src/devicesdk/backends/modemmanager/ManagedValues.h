#pragma once

#include "devices/Modem.h"

class ModemReader;

/// The status values of a modem of ModemManager.
namespace ManagedValues {

/// Values that are not known are missing.
ModemValues statusOf(const ModemReader& reader, Modem::State state);

/// How many wrong codes for a lock the SIM still accepts; empty if that is unknown.
QString triesLeft(const ModemReader& reader, uint lock);

} // namespace ManagedValues
