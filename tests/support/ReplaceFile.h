#pragma once

#include "files/FileAccess.h"

/// Replaces a file that the device service may be reading. Ends the test program if that fails.
inline void replaceFile(const QString& path, const QByteArray& content)
{
    QString error;
    if (!FileAccess::replace(path, content, error))
        qFatal("cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(error));
}
