#include "Autostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QSettings>

namespace {

/// The programs that Windows starts when the user logs in, by name.
class RunKey : public QSettings
{
public:
    RunKey()
        : QSettings(QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"),
                    QSettings::NativeFormat)
    {
    }
};

QString command()
{
    const QString path = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    return QLatin1Char('"') + path + QLatin1String("\" --background");
}

} // namespace

bool Autostart::isOn()
{
    return RunKey().contains(QGuiApplication::applicationDisplayName());
}

bool Autostart::setOn(bool isOn)
{
    RunKey key;
    const QString name = QGuiApplication::applicationDisplayName();
    if (isOn)
        key.setValue(name, command());
    else
        key.remove(name);
    key.sync();
    return key.status() == QSettings::NoError;
}
