// Checks of toolbar files.
#include "Checks.h"

#include "Findings.h"
#include "Installation.h"

namespace {

/// What GetPlugin() finds a plugin by.
QSet<QString> pluginKeys(const Installation& installation)
{
    QSet<QString> keys{{}};
    installation.forEach(Format::PluginLibrary, [&](const InstalledXml& file) {
        for (const int plugin : file.tree.named(QStringLiteral("plugin")))
            for (const char* key : {"name", "clsid"})
                keys.insert(file.tree.childText(plugin, QLatin1String(key)));
    });
    return keys;
}

void checkItem(const Installation& installation, const InstalledXml& file, const XmlNode& item,
               const QSet<QString>& plugins, Findings& findings)
{
    const QString plugin = item.attribute(QStringLiteral("pluginname"));
    if (!plugins.contains(plugin))
        findings.add(Kind::UnknownPlugin, file.path, item.line,
                     QStringLiteral("there is no plugin \"%1\"").arg(plugin));
    for (const char* state : {"enabled", "disabled"}) {
        const QString icon = item.attribute(QLatin1String(state));
        if (!icon.isEmpty() && !installation.has(QStringLiteral("plugins/%1/%2").arg(file.plugin, icon)))
            findings.add(
                Kind::MissingIcon, file.path, item.line,
                QStringLiteral("there is no picture \"%1\" in the folder of %2").arg(icon, file.plugin));
    }
}

void checkToolBar(const InstalledXml& file, int toolBar, int items, Findings& findings)
{
    const QString count = file.tree[toolBar].attribute(QStringLiteral("count"));
    if (count.toInt() > 0 && count.toInt() != items)
        findings.add(Kind::WrongCount, file.path, file.tree[toolBar].line,
                     QStringLiteral("\"count\" is %1, but there are %2 items").arg(count).arg(items));
}

} // namespace

void checkToolBars(const Installation& installation, Findings& findings)
{
    const QSet<QString> plugins = pluginKeys(installation);
    installation.forEach(Format::ToolBar, [&](const InstalledXml& file) {
        for (const int toolBar : file.tree.named(QStringLiteral("ToolBar"))) {
            const QVector<int> items = file.tree.named(QStringLiteral("item"), toolBar);
            checkToolBar(file, toolBar, items.size(), findings);
            for (const int item : items)
                checkItem(installation, file, file.tree[item], plugins, findings);
        }
    });
}
