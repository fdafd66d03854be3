#include "Installation.h"

#include "Change/LanguageFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct FormatName
{
    Format format;
    const char* schema;
    const char* file; ///< relative to the installation; null if the content shows the format
};

constexpr FormatName FormatNames[] = {
    {Format::PluginLibrary, "pluginslib", "config/pluginslib.xml"},
    {Format::PluginConfiguration, "PluginsConfig", "config/PluginsConfig.xml"},
    {Format::Languages, "LangAreaForShort", "LangAreaForShort.xml"},
    {Format::MainWindow, "main-window", "plugins/XFramePlugin/Config.xml"},
    {Format::OperatorList, "OperatorList", "plugins/StatusBarMgrPlugin/OperatorList.xml"},
    {Format::ImsiList, "CPLMNOpList", "plugins/StatusBarMgrPlugin/CPLMNOpList.xml"},
    {Format::NetworkList, "CMCCMNCOpList", "plugins/StatusBarMgrPlugin/CMCCMNCOpList.xml"},
    {Format::Language, "language", nullptr},
    {Format::Menu, "menu", nullptr},
    {Format::ToolBar, "toolbar", nullptr},
    {Format::StandardConfiguration, "standard-configuration", nullptr},
};

/// An element that shows the format of a file, in order of precedence.
struct Mark
{
    const char* element;
    Format format;
};

constexpr Mark Marks[] = {
    {"ToolBar", Format::ToolBar},
    {"customize_item", Format::StandardConfiguration},
    {"customize_Info", Format::StandardConfiguration},
    {"qrvldoc", Format::Menu},
};

Format formatOf(const QString& relative, const XmlTree& tree)
{
    if (relative.endsWith(LanguageFiles::Suffix))
        return Format::Language;
    for (const FormatName& name : FormatNames)
        if (name.file && relative == QLatin1String(name.file))
            return name.format;
    for (const Mark& mark : Marks)
        if (!tree.named(QLatin1String(mark.element)).isEmpty())
            return mark.format;
    return Format::Unknown;
}

XmlTree readTree(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? XmlTree(file) : XmlTree();
}

} // namespace

const char* InstalledXml::schema() const
{
    for (const FormatName& name : FormatNames)
        if (name.format == format)
            return name.schema;
    return nullptr;
}

Installation::Installation(const QString& folder)
    : m_folder(folder.endsWith(QLatin1Char('/')) && folder.size() > 1 ? folder.chopped(1) : folder)
    , m_defaults(path(QStringLiteral("config/defaults.ini")))
    , m_modems(path(QStringLiteral("config/simulator.ini")))
{
    for (const FormatName& name : FormatNames) {
        const QString file = QLatin1String(name.file);
        if (!file.startsWith(QLatin1String("plugins/")) && has(file))
            readXml(file, {});
    }
    const QDir plugins(path(QStringLiteral("plugins")));
    for (const QString& plugin : plugins.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        for (const QString& file :
             QDir(plugins.filePath(plugin))
                 .entryList({QStringLiteral("*.xml"), QStringLiteral("*.lang")}, QDir::Files))
            readXml(QStringLiteral("plugins/%1/%2").arg(plugin, file), plugin);
}

void Installation::readXml(const QString& relative, const QString& plugin)
{
    InstalledXml file{path(relative), plugin, Format::Unknown, readTree(path(relative))};
    file.format = formatOf(relative, file.tree);
    for (int node = 0; file.format == Format::Language && node < file.tree.size(); ++node)
        m_texts.insert({plugin, file.tree[node].attribute(QStringLiteral("name"))});
    m_xmlFiles.push_back(std::move(file));
}

bool Installation::has(const QString& relative) const
{
    return QFileInfo(path(relative)).isFile();
}

QString Installation::operatorName() const
{
    return m_defaults.value(QStringLiteral("customize"), QStringLiteral("operator")).value;
}

QStringList Installation::languages() const
{
    return LanguageFiles::languages(path(QStringLiteral("plugins")), QStringLiteral("XFramePlugin"));
}
