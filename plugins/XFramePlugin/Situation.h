#pragma once

#include "support/Modems.h"

/// What the main window follows.
struct Situation
{
    Modems modems;
    QString key;             ///< customisation key in force
    bool wasRefused = false; ///< as DeviceEvents::wasRefused()
};
