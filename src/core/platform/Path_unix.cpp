#include "platform/Path_p.h"

#include <QFile>

#include <cstring>
#include <new>

bool Platform::canonicalisePath(const char* path, char (&canonical)[PathCapacity])
{
    canonical[0] = '\0';
    if (!path || std::strlen(path) >= PathCapacity)
        return false;
    try {
        const std::string normal = std::filesystem::path(path).lexically_normal().string();
        std::memcpy(canonical, normal.c_str(), normal.size() + 1); // never longer than path
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

std::filesystem::path Platform::nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}
