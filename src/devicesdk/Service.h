#pragma once

class DeviceService;
class Settings;

/// The parts of the service, shared by all callers in the process. Each starts at its first use. When the
/// process ends it is finished but not destroyed, because static objects elsewhere may still use it.
namespace Service {

Settings& settings();
DeviceService& devices();

} // namespace Service
