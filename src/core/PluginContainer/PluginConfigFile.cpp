// Reads the plugin configuration file: which plugins are enabled for whom.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/ConfigurationFile_p.h"
#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginInfo.h"
#include "common/Log.h"

#include <QFileInfo>
#include <QXmlStreamReader>

namespace {

constexpr XmlFile::Texts LogTexts{"File %s does not exist", "Failed to open file %s", "Error:", ", column ",
                                  "Parsing %s done... "};

constexpr qint64 UsualRuleSize = 70; ///< bytes of the file per rule

constexpr QStringView PluginElement = u"plugin";
constexpr QStringView AddElement = u"add";
constexpr QStringView RemoveElement = u"remove";
constexpr QLatin1String ClsidAttribute("clsid");
constexpr QLatin1String NameAttribute("name");

/// Hands the clsid of each "add" and "remove" inside the first "plugin" element to onRule(clsid, isAdd).
template <typename OnRule>
void readRules(QXmlStreamReader& reader, OnRule onRule)
{
    const QString parent = reader.name().toString();
    if (!XmlFile::moveTo(reader, PluginElement, parent))
        return;
    const auto onElement = [&onRule](QXmlStreamReader& element) {
        const QStringView name = element.name();
        const bool isAdd = name == AddElement;
        if (!isAdd && name != RemoveElement)
            return;
        const QXmlStreamAttributes attributes = element.attributes();
        onRule(attributes.value(ClsidAttribute), isAdd);
    };
    XmlFile::readElements(reader, onElement, PluginElement);
}

/// Most rules are those of modems, about as many that add as that remove: both tables grow once.
void makeRoom(qint64 fileSize, QHash<QString, QString>& enableTable, QHash<QString, QString>& disableTable)
{
    const int foreseen = XmlFile::foreseenEntries(fileSize, UsualRuleSize) / 2;
    enableTable.reserve(foreseen);
    disableTable.reserve(foreseen);
}

/// Keeps earlier values of the key. The tables' type is fixed, hence the operation that Qt would rather see
/// in QMultiHash.
void insertPair(QHash<QString, QString>& table, const QString& key, const QString& value)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    table.insertMulti(key, value);
    QT_WARNING_POP
}

} // namespace

void PluginContainer::populatePluginsConfig(QString path)
{
    makeRoom(QFileInfo(path).size(), *m_pEnableTable, *m_pDisableTable);
    const auto onElement = [this](QXmlStreamReader& reader) {
        readPluginsConfigElement(reader);
    };
    readConfigurationFile(path, LogTexts, onElement, d->configurationFaults);
}

void PluginContainer::readPluginsConfigElement(QXmlStreamReader& reader)
{
    const auto name = [&reader] {
        return reader.attributes().value(NameAttribute).toString();
    };
    if (reader.name() == QLatin1String("common"))
        readCommonElement(reader);
    else if (reader.name() == QLatin1String("customize"))
        name() == m_strCustomizeName ? readCustomizeElements(reader) : reader.skipCurrentElement();
    else if (reader.name() == QLatin1String("device"))
        readDeviceElements(name(), reader);
    else if (reader.name() == QLatin1String("IMSI"))
        readIMSIElements(name(), reader);
    else if (reader.name() == QLatin1String("GID"))
        readGIDElements(name(), reader);
}

void PluginContainer::readCommonElement(QXmlStreamReader& reader)
{
    const auto onElement = [this](QXmlStreamReader& element) {
        if (element.name() != QLatin1String("item"))
            return;
        const QXmlStreamAttributes attributes = element.attributes();
        enableByDefault(attributes.value(ClsidAttribute));
    };
    XmlFile::readElements(reader, onElement, u"common");
}

void PluginContainer::readCustomizeElements(QXmlStreamReader& reader)
{
    readRules(reader, [this](const QStringRef& clsid, bool isAdd) {
        if (isAdd)
            enableForOperator(clsid);
        else
            removeForOperator(clsid.toString());
    });
}

void PluginContainer::readDeviceElements(QString name, QXmlStreamReader& reader)
{
    readRules(reader, [&](const QStringRef& clsid, bool isAdd) {
        addToDisEnableList(name, isAdd ? m_pEnableTable : m_pDisableTable, clsid, isAdd);
    });
}

void PluginContainer::readIMSIElements(QString name, QXmlStreamReader& reader)
{
    readDeviceElements(QLatin1String("IMSI") + name, reader);
}

void PluginContainer::readGIDElements(QString name, QXmlStreamReader& reader)
{
    m_listGIDGroups.append(name);
    readDeviceElements(QLatin1String("GID") + name, reader);
}

bool PluginContainer::enableByDefault(const QStringRef& clsid)
{
    addToDisEnableList(QStringLiteral("common"), m_pEnableTable, clsid, true);
    const PluginInfo* const info = findRecord(clsid);
    if (info)
        m_pCommonSet->insert(info->m_strClsid);
    return info;
}

void PluginContainer::enableForOperator(const QStringRef& clsid)
{
    const QString text = clsid.toString();
    const bool isCommonAlready = m_pCommonSet->contains(text);
    if (!enableByDefault(clsid))
        return;
    if (!isCommonAlready)
        d->decisions.noteOperatorAdd(text);
    LOG_DEBUG("readCustomizeElements: %s will be enabled by default", qUtf8Printable(text));
}

void PluginContainer::removeForOperator(const QString& clsid)
{
    LOG_DEBUG("readCustomizeElements: %s will be removed", qUtf8Printable(clsid));
    if (const PluginInfo* const info = m_pHashPlugins->value(clsid))
        d->decisions.noteOperatorRemove({info->m_strName, clsid, info->m_iType, PluginStatus::State::Removed,
                                         PluginStatus::Rule::OperatorRemove, m_strCustomizeName,
                                         PluginStatus::Fault::None, info->m_strUrl, QString()});
    removePluginInfo(clsid);
}

void PluginContainer::addToDisEnableList(QString key, QHash<QString, QString>* table, QStringRef clsid,
                                         bool enable)
{
    const PluginInfo* const info = findRecord(clsid);
    if (!info) {
        LOG_DEBUG("readDeviceElements: %s: have to %s %s, but not in list", qUtf8Printable(key),
                  enable ? "enable" : "disable", qUtf8Printable(clsid.toString()));
        return;
    }
    LOG_DEBUG("readDeviceElements: %s: %s need to enable %s plugin", qUtf8Printable(key),
              enable ? "Enabling" : "Disabling", qUtf8Printable(info->m_strClsid));
    insertPair(*table, key, info->m_strClsid); // shares the record's text: there may be many rules
}

/// Looks a record up by a text that lies in the reader's buffer, without copying it or taking memory.
PluginInfo* PluginContainer::findRecord(const QStringRef& clsid) const
{
    return m_pHashPlugins->value(d->soughtClsid.setRawData(clsid.data(), clsid.size()));
}
