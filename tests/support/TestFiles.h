#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

/// The content of a file; empty if it cannot be read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Replaces a file as a whole, and makes its folder. Ends the test program if that fails.
inline void writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        qFatal("cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
}
