#include "Service.h"

#include "backends/Backends.h"
#include "devices/DeviceService.h"
#include "files/Places.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

namespace {

/// The backend to use: that of the environment, otherwise that of the installation.
QString backendName()
{
    QString name = qEnvironmentVariable("QRVL_BACKEND");
    if (name.isEmpty())
        Service::settings().get(Settings::View::Defaults,
                                SettingName(QStringLiteral("modems"), QStringLiteral("backend")),
                                [&](const QString& text) { name = text; });
    return name;
}

} // namespace

// The constructor of a part uses everything that the part needs from Qt. finish() is registered after that, so
// it is called before Qt's static objects are destroyed.

Settings& Service::settings()
{
    static Settings* const settings = [] {
        auto* const made = new Settings(Places::userSettings(), Places::defaultSettings());
        Platform::atExit([] { Service::settings().finish(); });
        return made;
    }();
    return *settings;
}

DeviceService& Service::devices()
{
    static DeviceService* const devices = [] {
        auto* const made = new DeviceService(Backends::create(backendName()));
        Platform::atExit([] { Service::devices().finish(); });
        Service::settings().onFailing([made](bool isFailing) {
            made->setServiceValue(QStringLiteral("settings-problem"),
                                  isFailing ? QStringLiteral("not-writable") : QString());
        });
        return made;
    }();
    return *devices;
}
