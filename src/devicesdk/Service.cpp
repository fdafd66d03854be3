#include "Service.h"

#include "devices/DeviceService.h"
#include "files/Places.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

// A part's end is registered after the part was made, whose constructor uses what it needs of Qt: so Qt's own
// static objects are still there at its end.

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
        auto* const made = new DeviceService(Places::simulatorFiles());
        Platform::atExit([] { Service::devices().finish(); });
        return made;
    }();
    return *devices;
}
