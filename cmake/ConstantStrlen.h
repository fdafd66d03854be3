// Included first in every file that Clang compiles: Qt's QLatin1String counts with strlen(), which Clang, other than GCC,
// does not evaluate while compiling, so that no such text could be a constant.
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
