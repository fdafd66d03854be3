#include "Autostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>

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
    for (const QChar character : path) {
        if (QLatin1String("\"`$\\").contains(character))
            result += QLatin1String(character == QLatin1Char('\\') ? R"(\\\)" : R"(\\)");
        if (character == QLatin1Char('%'))
            result += character;
        result += character;
    }
    return QLatin1Char('"') + result + QLatin1Char('"');
}

QByteArray execLine()
{
    return "\nExec=" + quoted(QCoreApplication::applicationFilePath()).toUtf8() + " --background\n";
}

QByteArray entry()
{
    return "[Desktop Entry]\nType=Application\nName=" + QGuiApplication::applicationDisplayName().toUtf8() +
           execLine();
}

/// What desktops add to an entry that the user has switched off in their settings.
constexpr const char* SwitchedOff[] = {"\nHidden=true", "\nX-GNOME-Autostart-enabled=false"};

} // namespace

bool Autostart::isOn()
{
    QFile file(entryFile());
    const QByteArray lines = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return lines.contains(execLine()) &&
           std::none_of(std::begin(SwitchedOff), std::end(SwitchedOff),
                        [&lines](const char* line) { return lines.contains(line); });
}

bool Autostart::setOn(bool isOn)
{
    if (!isOn)
        return !QFile::exists(entryFile()) || QFile::remove(entryFile());
    if (!folder().mkpath(QStringLiteral(".")))
        return false;
    QSaveFile file(entryFile());
    return file.open(QIODevice::WriteOnly) && file.write(entry()) > 0 && file.commit();
}
