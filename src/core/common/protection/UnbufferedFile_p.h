#pragma once

#include <cstdio>
#include <memory>

/// Files that are read and written in large pieces. They have no buffer: plain text would stay behind in it.
using UnbufferedFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Opens like fopen(); null on failure, and for a null path.
inline UnbufferedFile openUnbuffered(const char* path, const char* mode)
{
    UnbufferedFile file(path ? std::fopen(path, mode) : nullptr, &std::fclose);
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}
