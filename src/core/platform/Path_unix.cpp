#include "platform/Path.h"

#include <QFile>

#include <cstring>

bool Platform::canonicalisePath(const char* path, char (&canonical)[PathCapacity])
{
    canonical[0] = '\0';
    if (!path || std::strlen(path) >= PathCapacity)
        return false;
    const std::string normal =
        std::filesystem::path(path).lexically_normal().string(); // never longer than path
    std::memcpy(canonical, normal.c_str(), normal.size() + 1);
    return true;
}

std::filesystem::path Platform::nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}
