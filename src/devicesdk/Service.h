#pragma once

class DeviceService;
class Settings;

/// The parts of the service that all callers in this process share. Each starts with its first use and is
/// finished, but not destroyed, when the process ends or the library is unloaded: static objects of others
/// may still use it.
namespace Service {

Settings& settings();
DeviceService& devices();

} // namespace Service
