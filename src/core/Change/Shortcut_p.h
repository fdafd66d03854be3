#pragma once

#include <QString>

/// The keyboard shortcut at the end of a text: "Save (Ctrl+S)", "Delete Del". Pure text work; the language
/// decides on the words only.
namespace Shortcut {

/// Where the shortcut begins.
/// @return a position greater than 0; when there is none, -1 or 0
int find(const QString& text, const QString& language);

/// What a shortcut says.
struct Keys
{
    QString text;         ///< the shortcut without brackets
    int code = 0;         ///< the sum of the keys that it names, as QKeySequence takes it
    bool isKnown = false; ///< whether it names a known key at all
};

Keys parse(const QString& shortcut);

} // namespace Shortcut
