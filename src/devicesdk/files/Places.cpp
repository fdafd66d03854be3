#include "files/Places.h"

#include "platform/Platform.h"

#include <QCoreApplication>
#include <QDir>

namespace {

QString userFolder()
{
    const QString folder = qEnvironmentVariable("QRVL_USER_DIR");
    return folder.isEmpty() ? Platform::userConfigFolder() + QStringLiteral("/skylume")
                            : QDir::fromNativeSeparators(folder);
}

QString installedFile(const QString& name)
{
    if (!QCoreApplication::instance())
        return {};
    return QCoreApplication::applicationDirPath() + QStringLiteral("/config/") + name;
}

} // namespace

QString Places::userSettings()
{
    return userFolder() + QStringLiteral("/settings.ini");
}

QString Places::defaultSettings()
{
    const QString file = qEnvironmentVariable("QRVL_DEFAULTS_FILE");
    return file.isEmpty() ? installedFile(QStringLiteral("defaults.ini")) : file;
}

QString Places::customizationRules()
{
    const QString file = qEnvironmentVariable("QRVL_CUSTOMIZATION_FILE");
    return file.isEmpty() ? installedFile(QStringLiteral("customization.ini")) : file;
}

QStringList Places::simulatorFiles()
{
    const QString file = qEnvironmentVariable("QRVL_SIMULATOR_FILE");
    if (!file.isEmpty())
        return {file};
    const QString name = QStringLiteral("simulator.ini");
    QStringList files = {userFolder() + QLatin1Char('/') + name, installedFile(name)};
    files.removeAll(QString());
    return files;
}
