#include "MissingMainFrame.h"

#include "PluginContainer/PluginContainer.h"
#include "Startup/Startup.h"
#include "UserMessage.h"
#include "common/CommonUtils.h"

#include <QFileInfo>

#include <algorithm>

namespace {

QString reasonFromStatus(const PluginStatus& plugin)
{
    if (!plugin.error.isEmpty())
        return plugin.error;
    switch (plugin.state) {
    case PluginStatus::State::Removed:
        return QStringLiteral("the operator customisation \"%1\" removes it").arg(plugin.key);
    case PluginStatus::State::Disabled:
        return QStringLiteral("the plugin configuration file does not enable it");
    case PluginStatus::State::Enabled:
        return QStringLiteral("its library could not be loaded");
    case PluginStatus::State::Loaded:
    case PluginStatus::State::Initialized:
        break;
    }
    return QStringLiteral("it is loaded, but has no main-frame interface");
}

QString reason(const QString& libraryFile, const QString& clsid)
{
    if (!QFileInfo::exists(libraryFile))
        return QStringLiteral("the plugin library file does not exist");
    if (clsid.isEmpty())
        return QStringLiteral("the plugin library file names no main-frame plugin");
    const auto* container = dynamic_cast<PluginContainer*>(Startup::GetPluginContainer());
    const PluginStatusList plugins = container ? container->GetPluginStatus() : PluginStatusList();
    const auto matches = [&clsid](const PluginStatus& plugin) {
        return plugin.clsid == clsid;
    };
    const auto plugin = std::find_if(plugins.begin(), plugins.end(), matches);
    if (plugin == plugins.end())
        return QStringLiteral("the plugin library file does not list the main-frame plugin");
    return reasonFromStatus(*plugin);
}

} // namespace

void reportMissingMainFrame()
{
    const QString libraryFile =
        CommonUtils::GetPluginLibraryPath() + QStringLiteral("/config/pluginslib.xml");
    const auto* container = Startup::GetPluginContainer();
    const QString clsid = container ? Startup::GetPluginContainer()->GetMainFramePluginName() : QString();
    UserMessage::complain(
        QStringLiteral("skylume: there is no main window to show\n"
                       "  plugin library file: %1\n"
                       "  main-frame plugin: %2\n"
                       "  reason: %3\n")
            .arg(libraryFile, clsid.isEmpty() ? QStringLiteral("none") : clsid, reason(libraryFile, clsid)));
}
