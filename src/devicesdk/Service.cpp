#include "Service.h"

#include "devices/DeviceService.h"
#include "files/Places.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

#include <QCoreApplication>

namespace {

/// Finishes a part at the end of the process. Made after the part, whose constructor uses what it needs of
/// Qt: so Qt's own static objects are still there when this one is destroyed.
template <typename Part>
struct Finisher
{
    explicit Finisher(Part* part)
        : part(part)
    {
        Platform::keepLibraryLoaded();
    }
    ~Finisher() { part->finish(); }
    Finisher(const Finisher&) = delete;
    Finisher& operator=(const Finisher&) = delete;

    Part* const part;
};

void drainSettings()
{
    Service::settings().drain();
}

/// Writes settings when the application object goes: on Windows the only moment at the end when all threads
/// live.
struct DrainWithApplication
{
    DrainWithApplication() { qAddPostRoutine(&drainSettings); }
    ~DrainWithApplication() { qRemovePostRoutine(&drainSettings); }
    DrainWithApplication(const DrainWithApplication&) = delete;
    DrainWithApplication& operator=(const DrainWithApplication&) = delete;
};

} // namespace

Settings& Service::settings()
{
    static auto* const settings = new Settings(Places::userSettings(), Places::defaultSettings());
    static const Finisher finisher(settings);
    static const DrainWithApplication drainWithApplication;
    return *settings;
}

DeviceService& Service::devices()
{
    static auto* const devices = new DeviceService(Places::simulatorFiles());
    static const Finisher finisher(devices);
    return *devices;
}
