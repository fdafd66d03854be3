// Checks of the plugins: identifiers, rules, libraries.
#include "Checks.h"

#include "Findings.h"
#include "Installation.h"
#include "PluginContainer/PluginInspection.h"
#include "PluginFaults.h"

#include <QDir>
#include <QLibrary>

#include <algorithm>

namespace {

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

void checkPlugins(const Installation& installation, Findings& findings)
{
    const QHash<QString, qint64> listed = pluginLines(installation);
    checkMainPlugin(installation, listed, findings);
    checkRules(installation, listed, findings);
}

void checkLibraries(const Installation& installation, Findings& findings)
{
    PluginInspection inspection(installation.folder(), installation.operatorName());
    addFileFaults(inspection, false, findings); // checkStructure() finds the broken ones
    inspection.tryLibraries();
    addLibraryFaults(
        inspection, installation, [](const PluginStatus&) { return true; }, findings);
    const QHash<QString, qint64> lines = pluginLines(installation);
    const QString file = installation.path(QStringLiteral("config/pluginslib.xml"));
    const QStringList libraries = librariesIn(installation.folder());
    for (const PluginStatus& plugin : inspection.GetPluginStatus()) {
        const QStringList candidates = beginningWith(plugin.url.toCaseFolded(), libraries);
        if (candidates.size() > 1)
            findings.add(Kind::AmbiguousLibrary, file, lines.value(plugin.clsid, 1),
                         QStringLiteral("\"%1\" fits more than one library: %2")
                             .arg(plugin.url, candidates.join(QStringLiteral(", "))));
    }
}
