#pragma once

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>

/// A short name for this installation and the user's settings. Instances with another name may run at the same time.
inline QByteArray instanceName()
{
    const QByteArray place = QDir::homePath().toUtf8() + '\n' + qgetenv("QRVL_USER_DIR") + '\n' +
                             QCoreApplication::applicationDirPath().toUtf8();
    return "skylume-" + QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex().left(16);
}
