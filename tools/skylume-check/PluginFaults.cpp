#include "PluginFaults.h"

#include "Findings.h"
#include "Installation.h"
#include "PluginContainer/PluginInspection.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace {

using LoadFault = PluginStatus::Fault;

constexpr std::array<QPair<LoadFault, Kind>, 6> FaultKinds{{
    {LoadFault::NoLibrary, Kind::MissingLibrary},
    {LoadFault::OtherPlatform, Kind::OtherPlatform},
    {LoadFault::NotAPlugin, Kind::NotAPlugin},
    {LoadFault::NotLoadable, Kind::MissingDependency},
    {LoadFault::ConstructorThrew, Kind::ConstructorThrows},
    {LoadFault::NoBaseInterface, Kind::MissingInterface},
}};

Kind kindOf(LoadFault fault)
{
    const auto found =
        std::find_if(FaultKinds.begin(), FaultKinds.end(),
                     [fault](const QPair<LoadFault, Kind>& pair) { return pair.first == fault; });
    return found == FaultKinds.end() ? Kind::MissingLibrary : found->second;
}

/// The path of a plugin's library, what is wanted and what was found.
QString describe(const PluginStatus& plugin)
{
    return QStringLiteral("%1: %2: wanted: %3; found: %4")
        .arg(plugin.name, QDir::toNativeSeparators(plugin.library), plugin.wanted, plugin.found);
}

} // namespace

QHash<QString, qint64> pluginLines(const Installation& installation)
{
    QHash<QString, qint64> lines;
    installation.forEach(Format::PluginLibrary, [&](const InstalledXml& file) {
        for (const int plugin : file.tree.named(QStringLiteral("plugin")))
            lines.insert(file.tree.childText(plugin, QLatin1String("clsid")), file.tree[plugin].line);
    });
    return lines;
}

void addFileFaults(const PluginInspection& inspection, bool withBroken, Findings& findings)
{
    for (const ConfigurationFault& fault : inspection.GetConfigurationFaults()) {
        if (fault.kind != ConfigurationFault::Kind::Malformed)
            findings.add(Kind::MissingFile, fault.path, 1,
                         fault.message.isEmpty() ? QStringLiteral("the file is missing") : fault.message);
        else if (withBroken)
            findings.add(Kind::BrokenXml, fault.path, fault.line, fault.message);
    }
}

void addLibraryFaults(const PluginInspection& inspection, const Installation& installation,
                      const std::function<bool(const PluginStatus&)>& isWanted, Findings& findings)
{
    const QHash<QString, qint64> lines = pluginLines(installation);
    const QString file = installation.path(QStringLiteral("config/pluginslib.xml"));
    for (const PluginStatus& plugin : inspection.GetPluginStatus())
        if (plugin.fault != LoadFault::None && isWanted(plugin))
            findings.add(kindOf(plugin.fault), file, lines.value(plugin.clsid, 1), describe(plugin));
}
