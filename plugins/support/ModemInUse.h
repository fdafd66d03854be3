#pragma once

#include "support/Modems.h"

// With several modems attached, one is in use: the one that the user chose or that was last attached alone. Pages
// show this one, and the application is customised for it.

/// The name of the modem that was used last, also in an earlier run; empty when there never was one. Any thread.
QString lastUsedModem();

/// The modem in use; the first one if the modem in use is not among them. Any thread.
/// @param modems must not be empty
Modem modemInUse(const Modems& modems);

/// The same for the attached modems; a modem with id 0 if there is none. Any thread.
Modem modemInUse();

/// Remembers that a modem is in use. Any thread.
void rememberModem(const Modem& modem);

/// Remembers that the user chose a modem, and has the device service report a detection: about 300 ms later
/// DeviceEvents::changed() is emitted in all plugins, and the main window is customised for the modem. Any thread.
void useModem(const Modem& modem);
