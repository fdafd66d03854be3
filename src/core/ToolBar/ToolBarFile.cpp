// Reads toolbar files and decides which buttons to show.
#include "ToolBar/ToolBarLogic.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"
#include "common/settings/Setting_p.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

IPluginContainer* ToolBarLogic::m_pPluginContainer = nullptr;

namespace {

constexpr QLatin1String SearchMark("SEARCH");

/// A plugin whose button depends on a setting.
struct SwitchedPlugin
{
    QLatin1String name;
    Setting setting;
};

constexpr SwitchedPlugin SwitchedPlugins[] = {
    {QLatin1String("CallUIPlugin"), Settings::CallVoice},
    {QLatin1String("VideoCallUIPlugin"), Settings::CallVideo},
};

bool isSwitchedOn(const QString& plugin)
{
    const auto* const found = std::find_if(std::begin(SwitchedPlugins), std::end(SwitchedPlugins),
                                           [&](const SwitchedPlugin& entry) { return plugin == entry.name; });
    return found == std::end(SwitchedPlugins) || found->setting.value().startsWith(QLatin1Char('1'));
}

bool isWanted(const QString& plugin)
{
    return plugin.isEmpty() || (ToolBarLogic::getPlugin(plugin) && isSwitchedOn(plugin));
}

ToolItem readItem(const QXmlStreamAttributes& attributes)
{
    const auto text = [&attributes](const char* name) {
        return attributes.value(QLatin1String(name)).toString();
    };
    ToolItem item;
    item.id = text("id").toInt();
    item.resource = text("resource");
    item.enabled = text("enabled");
    item.disabled = text("disabled");
    item.isSearch = item.resource.contains(SearchMark);
    return item;
}

void readItems(QXmlStreamReader& reader, int count, QList<ToolItem>& items)
{
    for (int handled = 0; handled < count && XmlFile::moveTo(reader, u"item"); ++handled) {
        const QXmlStreamAttributes attributes = reader.attributes();
        if (isWanted(attributes.value(QLatin1String("pluginname")).toString()))
            items.append(readItem(attributes));
    }
}

} // namespace

void ToolBarLogic::GetXmlData(QString path, QList<ToolItem>& items, bool& groupInGroup, QString)
{
    LOG_DEBUG("%s: %s: Enter", LOG_FILE, LOG_FUNCTION);
    items.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        LOG_DEBUG("%s: %s: Exit: XML File is not opened", LOG_FILE, LOG_FUNCTION);
        return;
    }
    QXmlStreamReader reader(&file);
    int count = 0;
    getToolBarCoount(reader, count);
    if (count == 0) {
        LOG_DEBUG("%s: %s: Exit: Item Count is ZERO!", LOG_FILE, LOG_FUNCTION);
        return;
    }
    readItems(reader, count, items);
    if (XmlFile::moveTo(reader, u"GroupInGroup"))
        groupInGroup = reader.attributes().value(QLatin1String("enable")).toInt() != 0;
    XmlFile::logFault(reader, path, XmlFile::Texts());
    LOG_DEBUG("%s: %s: Exit", LOG_FILE, LOG_FUNCTION);
}

void ToolBarLogic::getToolBarCoount(QXmlStreamReader& reader, int& count)
{
    if (!XmlFile::moveTo(reader, u"ToolBar"))
        return;
    bool isNumber = false;
    count = reader.attributes().value(QLatin1String("count")).toInt(&isNumber);
    if (!isNumber)
        LOG_DEBUG("%s: %s: Exit: XML File Content is Wrong!", LOG_FILE, LOG_FUNCTION);
}

bool ToolBarLogic::getPlugin(QString name)
{
    if (!m_pPluginContainer)
        m_pPluginContainer = Startup::GetPluginContainer();
    if (!m_pPluginContainer) {
        LOG_DEBUG("%s: %s: Plugin container is null ", LOG_FILE, LOG_FUNCTION);
        return false;
    }
    if (m_pPluginContainer->GetPlugin(std::move(name), PluginIds::RootObject))
        return true;
    LOG_DEBUG("%s: %s: plugin is not loaded ", LOG_FILE, LOG_FUNCTION);
    return false;
}

QString ToolBarLogic::GetObjectName(QString pluginName)
{
    LOG_DEBUG("%s: %s: %s Enter: plugin name:%s", LOG_TIME, LOG_FILE, LOG_FUNCTION,
              qUtf8Printable(pluginName));
    QString name = QLatin1String("ToolBar_") + pluginName;
    LOG_DEBUG("%s: %s: %s Exit: objectname:%s", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(name));
    return name;
}
