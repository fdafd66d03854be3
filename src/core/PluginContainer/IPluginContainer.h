#pragma once

#include "PluginContainer/IBaseInterface.h"

#include <QList>
#include <QString>
#include <QStringList>

class QObject;

/// The plugin host for launcher and plugins; get it from Startup::GetPluginContainer().
///
/// A plugin is named by its class identifier ("clsid"): a GUID as text without braces, compared with exact
/// case. Every operation may be called from any thread, also from within a plugin's Init(): the container's
/// lock is recursive. No operation throws. Failures are reported as a null pointer, false, -1 or an
/// empty string, and most of them are logged.
///
/// Plugins are compiled against the order of the virtual operations. It never changes.
class SKYLUME_EXPORT IPluginContainer : public IBaseInterface
{
public:
    ~IPluginContainer() override;

    /// Whether the plugin is known, enabled and can be loaded. Loads its library, but does not initialise it.
    virtual bool IsPluginAvailable(QString clsid) = 0;

    /// Whether the plugin's library is loaded; false for an unknown clsid.
    virtual bool IsPluginLoaded(QString clsid) = 0;

    /// The clsids of all loaded plugins, in the order of the plugin library file.
    virtual QStringList GetLoadedPluginClsids() = 0;

    /// The clsids of all plugins of this type, in file order.
    virtual QStringList GetPluginClsidsByType(int type) = 0;

    /// The clsids of all plugins that contribute a page to the settings dialog, in file order.
    virtual QStringList GetSettingsPlugins() = 0;

    /// Loads and initialises a plugin if that has not happened yet, and asks it for one of its interfaces.
    ///
    /// @param key a clsid, or the name of a plugin
    /// @param iid number of the interface, see PluginIds.h; 0 is the plugin's root object
    /// @return the object that answers the interface, ready for qobject_cast, or null when the plugin is
    ///         unknown, disabled, cannot be loaded or does not know the interface. It belongs to the plugin
    ///         and lives until the plugin is destroyed or unloaded.
    virtual QObject* GetPlugin(QString key, int iid) = 0;

    /// The plugin's type number; -1 for an unknown clsid.
    virtual int GetPluginType(QString clsid) = 0;

    /// The clsid of the main-frame plugin; empty when the plugin library file names none.
    virtual QString GetMainFramePluginName() = 0;

    /// Bulk load for the main frame: loads every enabled plugin that is static or active, then initialises
    /// all that are loaded. The two UI-embedded plugins of PluginIds.h are left for later.
    virtual void LoadAllStaticOrActivePlugin() = 0;

    /// Whether ApplyCustomizationForDevice(key) would change the enabled state of some plugin. Does not
    /// change any.
    virtual bool IsCustomizationForDevice(QString key) = 0;

    /// Unloads a plugin's library.
    /// @param key a clsid, or the name of a plugin
    /// @return true when it was loaded and is now unloaded
    virtual bool UnloadPlugin(QString key) = 0;

    /// Shuts every plugin down and unloads it, the main frame last.
    /// @return true when every library other than the main frame's was unloaded
    virtual bool UnloadAllPlugins() = 0;

    /// Disables every plugin, enables the common and operator plugins again and applies the rules of one key.
    /// @param key a device name, "IMSI" followed by the digits of an IMSI, "GID" followed by a group name, or
    ///         empty for the common set alone
    virtual void ApplyCustomizationForDevice(QString key) = 0;

    /// The plugin's name; empty for an unknown clsid.
    virtual QString GetPluginNameByClsid(QString clsid) = 0;

    /// The clsid of the last plugin of that name in file order; empty when there is none.
    virtual QString GetClsidByName(QString name) = 0;

    /// Applies the customisation for another device and reports which plugins that enabled and disabled. Does
    /// not load or unload any: call UpdateAllStaticOrActivePlugins() afterwards.
    /// @param enabledNow  the clsids that the switch enabled are appended, in file order
    /// @param disabledNow the clsids that the switch disabled are appended, in file order
    virtual void HandleDeviceSwitched(QString device, QList<QString>& enabledNow,
                                      QList<QString>& disabledNow) = 0;

    /// Calls the Destroy() of a loaded, initialised plugin other than the main frame. Its library stays
    /// loaded.
    /// @return whether Destroy() was called
    virtual bool DestroyPlugin(QString clsid) = 0;

    /// Whether the device-dependent customisation of the start has been applied. Takes no lock, so
    /// it may be polled.
    virtual bool IsPluginsConfigInitialized() = 0;

    /// Finds the name of the attached device and applies its customisation. Blocks for up to 10 s until the
    /// device service reports. The container calls it once, on the configuration thread.
    virtual void StartInitPluginsConfig() = 0;

    /// Brings the loaded set in line with the enabled flags: unloads what is disabled (never the main frame),
    /// loads and initialises what is enabled and static or active.
    virtual void UpdateAllStaticOrActivePlugins() = 0;

    /// The group names of all "GID" rules in file order. Takes no lock.
    virtual QStringList GetGIDGroups() = 0;

    /// Calls the UnSDKRegisterEvent() of a loaded, initialised plugin other than the main frame.
    /// @return whether UnSDKRegisterEvent() was called
    virtual bool UnRegisterFormPluginContainer(QString clsid) = 0;
};
