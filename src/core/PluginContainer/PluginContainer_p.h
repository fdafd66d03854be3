#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "PluginContainer/DeviceLink_p.h"
#include "PluginContainer/PluginDecisions_p.h"
#include "PluginContainer/PluginFolder_p.h"

#include <atomic>

/// What the container keeps besides the members that its interface fixes.
class PluginContainerPrivate
{
public:
    PluginContainerPrivate(const QString& pluginFolder, bool& isDeviceLinkRegistered)
        : folder(pluginFolder)
        , deviceLink(isDeviceLinkRegistered)
    {
    }

    PluginFolder folder;
    PluginDecisions decisions;
    ConfigurationFaultList configurationFaults;
    DeviceLink deviceLink;
    std::atomic<bool> isDeviceMgrInUse{
        false};                     ///< set under the lock; the device manager is not unloaded then
    bool followsUserLocale = false; ///< the start's language goes by the user's locale, not the system's
};
