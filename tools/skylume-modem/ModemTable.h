#pragma once

#include "devices/Modem.h"

#include <QString>

/// A table of the modems as text, with a line of headings.
QString modemTable(const Modems& modems);
