#include "StartReport.h"

#include "PluginContainer/PluginContainer.h"
#include "Startup/Startup.h"
#include "UserMessage.h"
#include "common/CommonUtils.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

/// A string of the main frame's language file. That file may be missing as well; the string is then in English.
struct Message
{
    const char* id;
    const char* english;

    QString text() const
    {
        const QString translated = Startup::tr(QString::fromLatin1(id));
        return translated.isEmpty() ? QString::fromLatin1(english) : translated;
    }
};

constexpr Message NoWindow{"IDS_START_NO_WINDOW", "There is no main window to show"};
constexpr Message LibraryFile{"IDS_START_LIBRARY_FILE", "Plugin library file"};
constexpr Message MainFrame{"IDS_START_MAIN_FRAME", "Main-frame plugin"};
constexpr Message Reason{"IDS_START_REASON", "Reason"};
constexpr Message NoPlugin{"IDS_START_NONE", "none"};

// The reasons.
constexpr Message NoFile{"IDS_START_NO_FILE", "The plugin library file does not exist"};
constexpr Message NamesNone{"IDS_START_NAMES_NONE",
                            "The plugin library file does not name a main-frame plugin"};
constexpr Message NotListed{"IDS_START_NOT_LISTED",
                            "The plugin library file does not list the main-frame plugin"};
constexpr Message Removed{"IDS_START_REMOVED", "Operator %1 has removed the plugin"};
constexpr Message Disabled{"IDS_START_DISABLED", "The plugin configuration file does not enable the plugin"};
constexpr Message NotLoaded{"IDS_START_NOT_LOADED", "The library of the plugin cannot be loaded"};
constexpr Message NoInterface{"IDS_START_NO_INTERFACE", "The plugin has no main-frame interface"};
constexpr Message NoFrame{"IDS_START_NO_FRAME", "The plugin did not create a window"};

PluginContainer* pluginContainer()
{
    return dynamic_cast<PluginContainer*>(Startup::GetPluginContainer());
}

QString reasonFromStatus(const PluginStatus& plugin)
{
    switch (plugin.state) {
    case PluginStatus::State::Removed:
        return Removed.text().arg(plugin.key);
    case PluginStatus::State::Disabled:
        return Disabled.text();
    case PluginStatus::State::Enabled:
        return NotLoaded.text();
    case PluginStatus::State::Loaded:
    case PluginStatus::State::Initialized:
        break;
    }
    const bool hasInterfaces = Startup::GetMainFrame() && Startup::GetMainFrameService();
    return hasInterfaces ? NoFrame.text() : NoInterface.text();
}

QString reason(const QString& libraryFile, const QString& clsid)
{
    if (!QFileInfo::exists(libraryFile))
        return NoFile.text();
    if (clsid.isEmpty())
        return NamesNone.text();
    auto* const container = pluginContainer();
    const PluginStatusList plugins = container ? container->GetPluginStatus() : PluginStatusList();
    const auto matches = [&clsid](const PluginStatus& plugin) {
        return plugin.clsid == clsid;
    };
    const auto plugin = std::find_if(plugins.begin(), plugins.end(), matches);
    if (plugin == plugins.end())
        return NotListed.text();
    const QString details = plugin->error.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(plugin->error);
    return reasonFromStatus(*plugin) + details;
}

QString describe(const ConfigurationFault& fault)
{
    switch (fault.kind) {
    case ConfigurationFault::Kind::Missing:
        return QStringLiteral("is missing");
    case ConfigurationFault::Kind::Unreadable:
        return QStringLiteral("cannot be read: ") + fault.message;
    case ConfigurationFault::Kind::Malformed:
        break;
    }
    return QStringLiteral("is damaged at line %1, column %2, and everything after that is ignored: ")
               .arg(fault.line)
               .arg(fault.column) +
           fault.message;
}

} // namespace

void StartReport::reportConfigurationFaults()
{
    auto* const container = pluginContainer();
    const auto faults = container ? container->GetConfigurationFaults() : ConfigurationFaultList();
    for (const ConfigurationFault& fault : faults)
        UserMessage::note(
            QStringLiteral("skylume: %1 %2\n").arg(QDir::toNativeSeparators(fault.path), describe(fault)));
}

void StartReport::reportMissingWindow()
{
    const QString libraryFile =
        CommonUtils::GetPluginLibraryPath() + QStringLiteral("/config/pluginslib.xml");
    auto* const container = pluginContainer();
    const QString clsid = container ? container->GetMainFramePluginName() : QString();
    const auto line = [](const Message& caption, const QString& value) {
        return QStringLiteral("  %1: %2\n").arg(caption.text(), value);
    };
    UserMessage::reportError(QStringLiteral("skylume: ") + NoWindow.text() + QLatin1Char('\n') +
                             line(LibraryFile, libraryFile) +
                             line(MainFrame, clsid.isEmpty() ? NoPlugin.text() : clsid) +
                             line(Reason, reason(libraryFile, clsid)));
}
