#pragma once

#include "devices/Modem.h"

#include <QString>

/// The modems as lines of text in columns, under a line of headings.
QString modemTable(const Modems& modems);
