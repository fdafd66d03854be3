// Included first in every file that Clang compiles. Qt's QLatin1String calls strlen(). Unlike GCC, Clang does not
// evaluate strlen() at compile time, so QLatin1String constants could not be constexpr.
#pragma once

#ifdef __cplusplus
#include <cstring>

constexpr std::size_t constantStrlen(const char* text)
{
    return __builtin_strlen(text);
}

namespace std {
using ::constantStrlen;
}

#define strlen(text) constantStrlen(text)
#endif
