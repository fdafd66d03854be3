#pragma once

#include <QString>

/// One step of a ladder of units, such as "KB" among B, KB and MB. A ladder begins with the base unit
/// (divisor 1, threshold 0); thresholds are meant to rise.
struct TagUnits
{
    QString name;          ///< the unit's text when there is no translation key
    int divisor = 1;       ///< base units in one of this unit; never 0
    quint64 threshold = 0; ///< in base units; the step is for values above it
    QString key;           ///< of the unit's text in the language files; empty for none
};

Q_DECLARE_TYPEINFO(TagUnits, Q_MOVABLE_TYPE);
