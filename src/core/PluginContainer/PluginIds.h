#pragma once

#include <QLatin1String>

/// Identifiers that the core library and the plugins agree on.
namespace PluginIds {

// Interface numbers for IPluginContainer::GetPlugin.
constexpr int RootObject = 0;
/// IDeviceMgr, ICallUIPlugin, ILayout, IUIPlugin of an embedded page; of the notification service the object
/// that workers connect to, see INotifyService.h.
constexpr int FirstService = 0x1001;
constexpr int MainFrameService = 0x1011; ///< IMainFrameUIService
/// IUIPlugin whose page is shown in the settings dialog; for plugins with the element setting_title. It is another
/// object than the one that builds the plugin's page in the main window.
constexpr int SettingsPage = 0x1021;
constexpr int NotifyStopService = 0x2011; ///< INotifyService

// Class identifiers of plugins with a role of their own.
constexpr QLatin1String DeviceManager("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");
constexpr QLatin1String MainFrame("D754AE84-535F-4c18-85F8-F154CFE34DDF");
constexpr QLatin1String NotifyService("C986A689-A5F6-4215-84BD-39BA626F1F57");
constexpr QLatin1String CallUI("58A0343A-93DB-4ea2-92B4-C51589629381");

// UI-embedded plugins that LoadAllStaticOrActivePlugin() skips; they are loaded on first use. Both identifiers
// are reserved: no plugin in this source tree has one of them.
constexpr QLatin1String LateEmbeddedA("FCDC307E-06DC-4dfa-AC83-834D0E306D48");
constexpr QLatin1String LateEmbeddedB("D2AB6727-AF80-4ef7-B37E-F217803B85A4");

} // namespace PluginIds
