#include "Autostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

QDir folder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                QLatin1String("/autostart"));
}

QString entryFile()
{
    return folder().filePath(QCoreApplication::applicationName() + QLatin1String(".desktop"));
}

/// A path as an argument of an Exec line: characters that have a meaning in quotes get a backslash, which the value of
/// a key doubles; a percent sign would start a field code.
QString quoted(const QString& path)
{
    QString result;
    for (const QChar sign : path) {
        if (QLatin1String("\"`$\\").contains(sign))
            result += QLatin1String(sign == QLatin1Char('\\') ? "\\\\\\" : "\\\\");
        if (sign == QLatin1Char('%'))
            result += sign;
        result += sign;
    }
    return QLatin1Char('"') + result + QLatin1Char('"');
}

QString entry()
{
    return QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2 --background\n")
        .arg(QGuiApplication::applicationDisplayName(), quoted(QCoreApplication::applicationFilePath()));
}

} // namespace

bool Autostart::isOn()
{
    QFile file(entryFile());
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains("\nHidden=true");
}

bool Autostart::setOn(bool isOn)
{
    if (!isOn)
        return !QFile::exists(entryFile()) || QFile::remove(entryFile());
    if (!folder().mkpath(QStringLiteral(".")))
        return false;
    QSaveFile file(entryFile());
    return file.open(QIODevice::WriteOnly) && file.write(entry().toUtf8()) > 0 && file.commit();
}
