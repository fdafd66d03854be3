#pragma once

#include "PluginContainer/PluginContainer.h"

/// Looks at the plugins of any installation with the container's own tables, for tools that explain what the
/// application would do there. No plugin is initialised, and no setting is read or written.
class SKYLUME_EXPORT PluginInspection : private PluginContainer
{
public:
    /// Reads config/pluginslib.xml and config/PluginsConfig.xml. The common and operator rules are in force.
    /// @param folder       the installation
    /// @param operatorName whose customisation applies
    PluginInspection(const QString& folder, const QString& operatorName);

    using PluginContainer::ApplyCustomizationForDevice;
    using PluginContainer::GetConfigurationFaults;
    using PluginContainer::GetPluginStatus;
    using PluginContainer::KeyForModem;

    /// Loads the library of every plugin and unloads it again, whether or not the plugin is enabled. This runs
    /// the constructors of the plugins' root objects. GetPluginStatus() has the faults afterwards.
    void tryLibraries();
};
