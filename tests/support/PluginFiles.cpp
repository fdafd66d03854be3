#include "PluginFiles.h"

#include <QVariant>

namespace {

QByteArray references(const char* name, const QStringList& clsids)
{
    QByteArray xml;
    for (const QString& clsid : clsids)
        xml += QByteArray("<") + name + " clsid=\"" + clsid.toUtf8() + "\"/>";
    return xml;
}

} // namespace

QByteArray pluginLibraryXml(const QVector<PluginEntry>& entries, const QString& mainPlugin)
{
    QString xml = "<pluginlib><mainplugin>" + mainPlugin + "</mainplugin>\n";
    for (const PluginEntry& entry : entries)
        xml += QString("<plugin><name>%1</name><clsid>%2</clsid><url>.\\%3.dll</url><active>%4</active>"
                       "<type>%5</type><setting_title>false</setting_title><static>%6</static></plugin>\n")
                   .arg(QString(entry.url).remove("Test") + "Plugin", entry.clsid, entry.url,
                        QVariant(entry.isActive).toString(), QString::number(entry.type),
                        QVariant(entry.isStatic).toString());
    return (xml + "</pluginlib>").toUtf8();
}

QByteArray commonXml(const QStringList& clsids)
{
    return "<common>" + references("item", clsids) + "</common>";
}

QByteArray ruleXml(const char* element, const QString& name, const QStringList& add,
                   const QStringList& remove)
{
    return QByteArray("<") + element + " name=\"" + name.toUtf8() + "\"><plugin>" + references("add", add) +
           references("remove", remove) + "</plugin></" + element + '>';
}
