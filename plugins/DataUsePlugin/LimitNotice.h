#pragma once

#include "DataLimit.h"

#include <QtGlobal>

class Units;

/// Tells the user on the desktop that the limit is near or reached; a click on it shows the page. GUI thread.
void showLimitNotice(LimitState state, quint64 used, quint64 limit, const Units& units);
