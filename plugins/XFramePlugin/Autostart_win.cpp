#include "Autostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QSettings>

namespace {

constexpr char Run[] = "Run"; ///< the programs that Windows starts when the user logs in, by name

/// By the same names: the first byte is odd if the user has switched the program off in the Task Manager.
constexpr char Approved[] = "Explorer\\StartupApproved\\Run";

class Key : public QSettings
{
public:
    explicit Key(const char* name)
        : QSettings(QLatin1String("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\") +
                        QLatin1String(name),
                    QSettings::NativeFormat)
    {
    }
};

/// QSettings reads two bytes as a character.
bool isSwitchedOff(const QString& name)
{
    const QString bytes = Key(Approved).value(name).toString();
    return !bytes.isEmpty() && bytes.at(0).unicode() % 2 != 0;
}

QString command()
{
    const QString path = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    return QLatin1Char('"') + path + QLatin1String("\" --background");
}

} // namespace

bool Autostart::isOn()
{
    const QString name = QGuiApplication::applicationDisplayName();
    const QString started = Key(Run).value(name).toString();
    return started.compare(command(), Qt::CaseInsensitive) == 0 && !isSwitchedOff(name);
}

bool Autostart::setOn(bool isOn)
{
    Key key(Run);
    const QString name = QGuiApplication::applicationDisplayName();
    Key(Approved).remove(name);
    if (isOn)
        key.setValue(name, command());
    else
        key.remove(name);
    key.sync();
    return key.status() == QSettings::NoError;
}
