#pragma once

#include "skylume_global.h"

#include <QtPlugin>

/// What the container calls when a plugin has to go. Part of every base plugin; it has no identifier of its
/// own.
class SKYLUME_EXPORT IPluginTeardown
{
public:
    virtual ~IPluginTeardown();

    /// Gives back everything the plugin holds: widgets, timers, threads, interfaces of other plugins. Called
    /// on the GUI thread when customisation turns the plugin off and at shut-down, where all plugins are
    /// still loaded. May come more than once and must be harmless then.
    virtual void Destroy() = 0;

    /// Takes back the plugin's callbacks from the device service. At shut-down every plugin is asked this
    /// before the first one is destroyed.
    virtual void UnSDKRegisterEvent() = 0;
};

/// Base interface of every plugin: the root object of its library answers it. BasePlugin is a ready-made
/// implementation to derive from.
class SKYLUME_EXPORT IBasePlugin : public IPluginTeardown
{
public:
    ~IBasePlugin() override;

    /// Called once after loading, under the container's lock; the plugin may call back into the container.
    /// Must return soon: the application waits for it.
    /// @return a status that goes to the log. From the device manager non-zero means good; without it the
    ///         device link is not used.
    virtual int Init() = 0;

    /// Hands out one of the plugin's interfaces.
    /// @param iid number of the interface, see PluginIds.h; 0 is the root object
    /// @param out receives a `QObject*` (stored as such, not as a pointer to an interface class) that stays
    ///         the plugin's own; untouched when the result is false
    /// @return whether the plugin knows the interface
    virtual bool QueryInterface(int iid, void** out) = 0;
};

Q_DECLARE_INTERFACE(IBasePlugin, "com.velquor.skylume.plugin.IBasePlugin")
