#include "PluginContainer/PluginInspection.h"

PluginInspection::PluginInspection(const QString& folder, const QString& operatorName)
    : PluginContainer(Inspected{folder, operatorName})
{
}

void PluginInspection::tryLibraries()
{
    const PluginStatusList plugins = GetPluginStatus();
    for (const PluginStatus& plugin : plugins) {
        if (plugin.state == PluginStatus::State::Removed)
            continue;
        updatePluginInfo(plugin.clsid, true);
        IsPluginAvailable(plugin.clsid);
        UnloadPlugin(plugin.clsid);
        updatePluginInfo(plugin.clsid, plugin.state != PluginStatus::State::Disabled);
    }
}
