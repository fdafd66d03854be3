#pragma once

#include "TestFiles.h"

#include <unistd.h>

#include <cstdio>

/// What a call writes to standard error, which is redirected to a file for that time.
template <typename Call>
QByteArray errorOutput(const QString& path, Call call)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    std::fflush(stderr);
    const int original = dup(2);
    dup2(file.handle(), 2);
    call();
    std::fflush(stderr);
    dup2(original, 2);
    close(original);
    return contentOf(path);
}
