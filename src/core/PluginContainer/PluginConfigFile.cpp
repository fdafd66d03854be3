// Reads the plugin configuration file: which plugins are enabled for whom.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/ConfigurationFile_p.h"
#include "PluginContainer/CustomisationRules_p.h"
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
/// @param line receives the line of each before it is handed over
template <typename OnRule>
void readRules(QXmlStreamReader& reader, qint64& line, OnRule onRule)
{
    const QString parent = reader.name().toString();
    if (!XmlFile::moveTo(reader, PluginElement, parent))
        return;
    const auto onElement = [&onRule, &line](QXmlStreamReader& element) {
        const QStringView name = element.name();
        const bool isAdd = name == AddElement;
        if (!isAdd && name != RemoveElement)
            return;
        const QXmlStreamAttributes attributes = element.attributes();
        line = element.lineNumber();
        onRule(attributes.value(ClsidAttribute), isAdd);
    };
    XmlFile::readElements(reader, onElement, PluginElement);
}

/// Reserves memory for both tables. Most rules belong to modems, half of them add and half of them remove.
void makeRoom(qint64 fileSize, QHash<QString, QString>& enableTable, QHash<QString, QString>& disableTable)
{
    const int foreseen = XmlFile::foreseenEntries(fileSize, UsualRuleSize) / 2;
    enableTable.reserve(foreseen);
    disableTable.reserve(foreseen);
}

/// Keeps earlier values of the key. The type of the tables is fixed, so QMultiHash cannot be used instead of
/// the deprecated operation.
void insertPair(QHash<QString, QString>& table, const QString& key, const QString& value)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    table.insertMulti(key, value);
    QT_WARNING_POP
}

/// Finds a record without copying the text, which lies in the reader's buffer.
PluginInfo* findRecord(const QHash<QString, PluginInfo*>& records, const QStringRef& clsid)
{
    return records.value(QString::fromRawData(clsid.data(), clsid.size()));
}

} // namespace

void PluginContainer::populatePluginsConfig(QString path)
{
    d->rulesFile = path;
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
        d->ruleLine = element.lineNumber();
        enableByDefault(attributes.value(ClsidAttribute));
    };
    XmlFile::readElements(reader, onElement, u"common");
}

void PluginContainer::readCustomizeElements(QXmlStreamReader& reader)
{
    readRules(reader, d->ruleLine, [this](const QStringRef& clsid, bool isAdd) {
        if (isAdd)
            enableForOperator(clsid);
        else
            removeForOperator(clsid.toString());
    });
}

void PluginContainer::readDeviceElements(QString name, QXmlStreamReader& reader)
{
    readRules(reader, d->ruleLine, [&](const QStringRef& clsid, bool isAdd) {
        addToDisEnableList(name, isAdd ? m_pEnableTable : m_pDisableTable, clsid, isAdd);
    });
}

void PluginContainer::readIMSIElements(QString name, QXmlStreamReader& reader)
{
    readDeviceElements(CustomisationKeys::Imsi + name, reader);
}

void PluginContainer::readGIDElements(QString name, QXmlStreamReader& reader)
{
    m_listGIDGroups.append(name);
    readDeviceElements(CustomisationKeys::Gid + name, reader);
}

bool PluginContainer::enableByDefault(const QStringRef& clsid)
{
    addToDisEnableList(CustomisationRules::commonKey(), m_pEnableTable, clsid, true);
    const PluginInfo* const info = findRecord(*m_pHashPlugins, clsid);
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
    if (const PluginInfo* const info = m_pHashPlugins->value(clsid)) {
        PluginStatus status = PluginDecisions::statusOf(*info);
        status.state = PluginStatus::State::Removed;
        status.rule = PluginStatus::Rule::OperatorRemove;
        status.key = m_strCustomizeName;
        status.ruleFile = d->rulesFile;
        status.ruleLine = d->ruleLine;
        d->decisions.noteOperatorRemove(status);
    }
    removePluginInfo(clsid);
}

void PluginContainer::addToDisEnableList(QString key, QHash<QString, QString>* table, QStringRef clsid,
                                         bool enable)
{
    const PluginInfo* const info = findRecord(*m_pHashPlugins, clsid);
    if (!info) {
        LOG_DEBUG("readDeviceElements: %s: have to %s %s, but not in list", qUtf8Printable(key),
                  enable ? "enable" : "disable", qUtf8Printable(clsid.toString()));
        return;
    }
    LOG_DEBUG("readDeviceElements: %s: %s need to enable %s plugin", qUtf8Printable(key),
              enable ? "Enabling" : "Disabling", qUtf8Printable(info->m_strClsid));
    d->decisions.noteRule(enable, key, info->m_strClsid, d->ruleLine);
    insertPair(*table, key, info->m_strClsid); // shares the string of the record: there may be many rules
}
