#pragma once

#include <cstdio>
#include <memory>

/// A file that is read and written in large pieces. It has no buffer, since plaintext would remain there.
using UnbufferedFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Opens a file as fopen() does; null on failure and for a null path.
inline UnbufferedFile openUnbuffered(const char* path, const char* mode)
{
    UnbufferedFile file(path ? std::fopen(path, mode) : nullptr, &std::fclose);
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}
