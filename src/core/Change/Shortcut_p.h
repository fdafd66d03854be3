#pragma once

#include <QString>

/// The keyboard shortcut at the end of a string: "Save (Ctrl+S)", "Delete Del".
namespace Shortcut {

/// Finds the start of the shortcut.
/// @param language decides on the names of the keys
/// @return a position greater than 0; -1 or 0 if there is none
int find(const QString& text, const QString& language);

/// The meaning of a shortcut.
struct Keys
{
    QString text;         ///< the shortcut without brackets
    int code = 0;         ///< the sum of the named keys, for QKeySequence
    bool isKnown = false; ///< whether it names at least one known key
};

Keys parse(const QString& shortcut);

} // namespace Shortcut
