#pragma once

#include "PluginContainer/PluginDecisions.h"
#include "PluginContainer/PluginFolder.h"

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
    std::atomic<bool> isClosing{
        false}; ///< the container is being destroyed: do not begin to wait for a modem
    bool followsUserLocale =
        false; ///< the start's language is that of the user's, not of the system's locale
};
