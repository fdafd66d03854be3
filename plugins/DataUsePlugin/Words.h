#pragma once

#include <QString>

class QDate;
class Units;
struct Period;

// What the page and the notifications say, in the current language. GUI thread.

/// Part of a sentence whose text has a direction of its own, as Latin units in Hebrew do.
QString isolated(const QString& part);

/// A date in its short form.
QString dateText(const QDate& day);

/// "1/3/24 – 31/3/24".
QString periodText(const Period& period);

/// "8 GB of 10 GB (80 %)". Without a limit only the first number.
QString usageText(quint64 used, quint64 limit, const Units& units);
