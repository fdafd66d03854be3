#pragma once

#include <QString>

/// A visible text as a QString that owns its characters. A QStringLiteral would point into the plugin's
/// library, and a copy that another library still holds after unloading would point nowhere.
inline QString text(const char16_t* characters)
{
    return QString::fromUtf16(characters);
}
