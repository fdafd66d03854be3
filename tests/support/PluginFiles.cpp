#include "PluginFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QByteArray boolean(bool value)
{
    return value ? "true" : "false";
}

QByteArray element(const char* name, const QByteArray& text)
{
    return QByteArray("<") + name + '>' + text + "</" + name + '>';
}

QByteArray references(const char* name, const QStringList& clsids)
{
    QByteArray xml;
    for (const QString& clsid : clsids)
        xml += QByteArray("<") + name + " clsid=\"" + clsid.toUtf8() + "\"/>";
    return xml;
}

} // namespace

QString PluginEntry::name() const
{
    return url.mid(url.startsWith(QLatin1String("Test")) ? 4 : 0) + QLatin1String("Plugin");
}

QByteArray pluginLibraryXml(const QVector<PluginEntry>& entries, const QString& mainPlugin)
{
    QByteArray xml;
    for (const PluginEntry& entry : entries) {
        xml += element("plugin", element("name", entry.name().toUtf8()) +
                                     element("clsid", entry.clsid.toUtf8()) +
                                     element("url", ".\\" + entry.url.toUtf8() + ".dll") +
                                     element("active", boolean(entry.isActive)) +
                                     element("type", QByteArray::number(entry.type)) +
                                     element("setting_title", boolean(false)) +
                                     element("static", boolean(entry.isStatic))) +
               '\n';
    }
    return element("pluginlib", element("mainplugin", mainPlugin.toUtf8()) + '\n' + xml);
}

QByteArray commonXml(const QStringList& clsids)
{
    return element("common", references("item", clsids));
}

QByteArray ruleXml(const char* elementName, const QString& name, const QStringList& add,
                   const QStringList& remove)
{
    return QByteArray("<") + elementName + " name=\"" + name.toUtf8() + "\">" +
           element("plugin", references("add", add) + references("remove", remove)) + "</" + elementName +
           '>';
}

void writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        qFatal("cannot write %s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
}
