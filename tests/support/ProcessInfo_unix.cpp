#include "ProcessInfo.h"

#include <QFile>

bool isLibraryInMemory(const QString& fileName)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        qFatal("cannot read the memory map");
    return maps.readAll().contains('/' + QFile::encodeName(fileName) + '\n');
}
