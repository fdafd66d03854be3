#pragma once

#include <QLatin1String>

/// Identifiers of reference plugins that other plugins refer to, as in pluginslib.xml. See PluginIds.h for those that the
/// core knows, too.
namespace Clsids {

constexpr QLatin1String Connection("227AB861-6F54-4094-857F-40B0663C5817");
constexpr QLatin1String DataUse("C43A8D5E-07B1-4F92-86DA-3E51F9B27A60");
constexpr QLatin1String DeviceInfo("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38");
constexpr QLatin1String Help("9C27F1E4-B83D-4056-8A1F-2D64E9735CB0");
constexpr QLatin1String Layout("A8E2B5C1-6F0D-4C57-9B3E-51D07C2F8A46");
constexpr QLatin1String Messages("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46");
constexpr QLatin1String SimInfo("E5F09A6B-1C83-4D7E-A240-7B8D3F61C095");
constexpr QLatin1String StatusBar("6A0C9E37-28D5-4B91-9F4E-17B3A5D2C860");

} // namespace Clsids
