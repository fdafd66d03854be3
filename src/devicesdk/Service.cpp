#include "Service.h"

#include "backends/simulator/Simulator.h"
#include "devices/DeviceService.h"
#include "files/Places.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

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
        auto* const made = new DeviceService(std::make_unique<Simulator>(Places::simulatorFiles()));
        Platform::atExit([] { Service::devices().finish(); });
        return made;
    }();
    return *devices;
}
