#pragma once

#include "skylume_global.h"

#include <QtPlugin>

/// The operations that shut a plugin down. Part of every base plugin; the interface has no identifier.
class SKYLUME_EXPORT IPluginTeardown
{
public:
    virtual ~IPluginTeardown();

    /// Releases everything the plugin holds: widgets, timers, threads, interfaces of other plugins. Called
    /// on the GUI thread when customisation disables the plugin, and at shut-down while all plugins are still
    /// loaded. May be called more than once.
    virtual void Destroy() = 0;

    /// Unregisters the plugin's callbacks from the device service. At shut-down this is called for all plugins
    /// before the first Destroy().
    virtual void UnSDKRegisterEvent() = 0;
};

/// Base interface of every plugin, implemented by the root object of its library. BasePlugin is an
/// implementation to derive from.
class SKYLUME_EXPORT IBasePlugin : public IPluginTeardown
{
public:
    ~IBasePlugin() override;

    /// Called once after loading, under the container's lock; the plugin may call back into the container.
    /// Must return soon: the application waits for it.
    /// @return a status, which is logged. The device manager must return non-zero for success; otherwise the
    ///         container does not look for modems.
    virtual int Init() = 0;

    /// Returns one of the plugin's interfaces.
    /// @param iid number of the interface, see PluginIds.h; 0 is the root object
    /// @param out receives a `QObject*` (stored as such, not as a pointer to an interface class) that stays
    ///         the plugin's own; untouched when the result is false
    /// @return whether the plugin knows the interface
    virtual bool QueryInterface(int iid, void** out) = 0;
};

Q_DECLARE_INTERFACE(IBasePlugin, "com.velquor.skylume.plugin.IBasePlugin")
