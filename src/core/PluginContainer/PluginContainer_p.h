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
    QString rulesFile;   ///< path of the plugin configuration file
    qint64 ruleLine = 0; ///< of the rule that is being read
    DeviceLink deviceLink;
    /// Set under the lock; prevents unloading of the device manager.
    std::atomic<bool> isDeviceMgrInUse{false};
    /// Whether the start-up language follows the user's locale instead of the system's.
    bool followsUserLocale = false;
};
