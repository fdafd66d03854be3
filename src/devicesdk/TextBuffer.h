#pragma once

#include <QString>

#include <cstring>

/// A string from the C interface. QString::fromUtf16() would drop a byte order mark.
inline QString textOf(const char16_t* text)
{
    return QStringView(text).toString();
}

/// A zero-terminated copy that the caller of the C interface releases with `delete[]`.
inline char16_t* newTextBuffer(const QString& text)
{
    const auto size = std::size_t(text.size()) + 1;
    auto* const copy = new char16_t[size];
    std::memcpy(copy, text.utf16(), size * sizeof(char16_t));
    return copy;
}
