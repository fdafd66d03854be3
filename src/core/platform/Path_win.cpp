#include "platform/Path_p.h"

#include <QString>

#include <windows.h>

#include <shlwapi.h>

static_assert(Platform::PathCapacity == MAX_PATH, "the system may write this many characters");

bool Platform::canonicalisePath(const char* path, char (&canonical)[PathCapacity])
{
    if (PathCanonicalizeA(canonical, path))
        return true;
    canonical[0] = '\0';
    return false;
}

std::filesystem::path Platform::nativePath(const QString& path)
{
    return path.toStdWString();
}
