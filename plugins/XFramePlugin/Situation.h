#pragma once

#include "support/Modems.h"

/// What the main window currently shows and is customised for.
struct Situation
{
    Modems modems;
    QString key;      ///< current customisation key
    QString unusable; ///< unusableState()
};
