#pragma once

#include "DataLimit.h"

#include <QString>

class Units;

/// Part of a sentence whose text has a direction of its own, as Latin units in Hebrew do.
QString isolated(const QString& part);

/// "8 GB of 10 GB (80 %)". Without a limit only the first number.
QString usageText(quint64 used, quint64 limit, const Units& units);

/// Tells the user on the desktop that the limit is near or reached; a click on it shows the page. GUI thread.
void showLimitNotice(LimitState state, quint64 used, quint64 limit, const Units& units);
