#pragma once

#include <QString>

/// One step of a ladder of units, such as "KB" among B, KB and MB. A ladder starts with the base unit (divisor
/// 1, threshold 0); thresholds should rise.
struct TagUnits
{
    QString name;          ///< the unit's text if there is no translation key
    int divisor = 1;       ///< base units per unit; must not be 0
    quint64 threshold = 0; ///< in base units; the step applies to values above it
    QString key;           ///< key of the unit's text in the language files; may be empty
};

Q_DECLARE_TYPEINFO(TagUnits, Q_MOVABLE_TYPE);
