#pragma once

#include "Startup/Startup.h"

/// Puts a container where the library looks for the plugin host, without a start.
class PublishedHost : private Startup
{
public:
    static void publish(IPluginContainer* host) { m_pPluginContainer = host; }
};
