#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "PluginContainer/PluginDecisions_p.h"
#include "PluginContainer/PluginFolder_p.h"

#include <atomic>

/// What the container keeps besides the members that its interface fixes.
class PluginContainerPrivate
{
public:
    explicit PluginContainerPrivate(const QString& pluginFolder)
        : folder(pluginFolder)
    {
    }

    PluginFolder folder;
    PluginDecisions decisions;
    ConfigurationFaultList configurationFaults;
    std::atomic<bool> isClosing{false}; ///< the container is ending: wait for no modem any more
    QString soughtClsid;                ///< of the rule being read; refers to the reader's buffer
    bool followsUserLocale = false;     ///< the start's language goes by the user's locale, not the system's
};
