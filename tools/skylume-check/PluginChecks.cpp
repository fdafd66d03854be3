// Checks of the plugins: identifiers, rules, libraries.
#include "Checks.h"

#include "Installation.h"
#include "LibraryFault.h"
#include "PluginContainer/PluginInspection.h"

#include <QDir>
#include <QLibrary>

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

constexpr QLatin1String ClsidName("clsid");

void checkMainPlugin(const Installation& installation, const QHash<QString, qint64>& listed,
                     Findings& findings)
{
    installation.forEach(Format::PluginLibrary, [&](const InstalledXml& file) {
        const QVector<int> named = file.tree.named(QStringLiteral("mainplugin"));
        if (!named.isEmpty() && !listed.contains(file.tree[named.last()].text))
            findings.add(Kind::UnknownMainPlugin, file.path, file.tree[named.last()].line,
                         QStringLiteral("no plugin has the clsid \"%1\"").arg(file.tree[named.last()].text));
    });
}

/// Entries of one rule that name the same plugin.
void checkRepeatedEntries(const InstalledXml& file, Findings& findings)
{
    QHash<QPair<int, QString>, qint64> lines;
    for (int node = 0; node < file.tree.size(); ++node) {
        const XmlNode& entry = file.tree[node];
        const QPair<int, QString> key(entry.parent, entry.attribute(ClsidName));
        if (key.second.isNull())
            continue;
        if (lines.contains(key))
            findings.add(Kind::RepeatedEntry, file.path, entry.line,
                         QStringLiteral("the rule has \"%1\" already, in line %2")
                             .arg(key.second, QString::number(lines.value(key))));
        lines.insert(key, entry.line);
    }
}

void checkRules(const Installation& installation, const QHash<QString, qint64>& listed, Findings& findings)
{
    installation.forEach(Format::PluginConfiguration, [&](const InstalledXml& file) {
        checkRepeatedEntries(file, findings);
        for (int node = 0; node < file.tree.size(); ++node) {
            const QString clsid = file.tree[node].attribute(ClsidName);
            if (!clsid.isEmpty() && !listed.contains(clsid))
                findings.add(Kind::UnknownClsid, file.path, file.tree[node].line,
                             QStringLiteral("no plugin has the clsid \"%1\"").arg(clsid));
        }
    });
}

/// The libraries of the installation's folder, sorted without regard to case, as the application looks for them.
QStringList librariesIn(const QString& folder)
{
    QStringList names;
    for (const QString& name : QDir(folder).entryList(QDir::Files))
        if (QLibrary::isLibrary(name))
            names.append(name.toCaseFolded());
    names.sort();
    return names;
}

QStringList beginningWith(const QString& prefix, const QStringList& sorted)
{
    QStringList found;
    for (auto name = std::lower_bound(sorted.begin(), sorted.end(), prefix);
         name != sorted.end() && name->startsWith(prefix); ++name)
        found.append(*name);
    return found;
}

} // namespace

QHash<QString, qint64> pluginLines(const Installation& installation)
{
    QHash<QString, qint64> lines;
    installation.forEach(Format::PluginLibrary, [&](const InstalledXml& file) {
        for (const int plugin : file.tree.named(QStringLiteral("plugin")))
            lines.insert(file.tree.childText(plugin, ClsidName), file.tree[plugin].line);
    });
    return lines;
}

Kind kindOf(PluginStatus::Fault fault)
{
    const auto found =
        std::find_if(FaultKinds.begin(), FaultKinds.end(),
                     [fault](const QPair<LoadFault, Kind>& pair) { return pair.first == fault; });
    return found == FaultKinds.end() ? Kind::MissingLibrary : found->second;
}

QString describeLibraryFault(const PluginStatus& plugin)
{
    return QStringLiteral("%1: %2: wanted: %3; found: %4")
        .arg(plugin.name, QDir::toNativeSeparators(plugin.library), plugin.wanted, plugin.found);
}

void checkPlugins(const Installation& installation, Findings& findings)
{
    const QHash<QString, qint64> listed = pluginLines(installation);
    checkMainPlugin(installation, listed, findings);
    checkRules(installation, listed, findings);
}

void checkLibraries(const Installation& installation, Findings& findings)
{
    PluginInspection inspection(installation.folder(), installation.operatorName());
    for (const ConfigurationFault& fault : inspection.GetConfigurationFaults())
        if (fault.kind != ConfigurationFault::Kind::Malformed)
            findings.add(Kind::MissingFile, fault.path, 1,
                         fault.message.isEmpty() ? QStringLiteral("the file is missing") : fault.message);
    inspection.tryLibraries();
    const QHash<QString, qint64> lines = pluginLines(installation);
    const QString file = installation.path(QStringLiteral("config/pluginslib.xml"));
    const QStringList libraries = librariesIn(installation.folder());
    for (const PluginStatus& plugin : inspection.GetPluginStatus()) {
        const qint64 line = lines.value(plugin.clsid, 1);
        if (plugin.fault != LoadFault::None)
            findings.add(kindOf(plugin.fault), file, line, describeLibraryFault(plugin));
        const QStringList candidates = beginningWith(plugin.url.toCaseFolded(), libraries);
        if (candidates.size() > 1)
            findings.add(Kind::AmbiguousLibrary, file, line,
                         QStringLiteral("\"%1\" fits more than one library: %2")
                             .arg(plugin.url, candidates.join(QStringLiteral(", "))));
    }
}
