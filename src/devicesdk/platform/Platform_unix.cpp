#include "platform/Platform.h"

#include <QFile>
#include <QStandardPaths>

#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

QString Platform::userConfigFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

bool Platform::syncFolder(const QString& folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isSynced = fsync(descriptor) == 0;
    close(descriptor);
    return isSynced;
}

void Platform::atExit(void (*function)())
{
    std::atexit(function);
}
