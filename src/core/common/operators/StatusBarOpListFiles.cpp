// Reads the lists of operators.
#include "common/StatusBarOpListParse.h"

#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

constexpr QLatin1String ItemElement("Item");

/// An "Item" element as it is read. The texts lie in the reader's buffers.
struct Item
{
    QStringView mcc, mnc, shortdescr, fulldescr, langid, imsi, code, name;
};

struct ItemAttribute
{
    QLatin1String name;
    QStringView Item::*field;
};

constexpr ItemAttribute ItemAttributes[] = {
    {QLatin1String("mcc"), &Item::mcc},
    {QLatin1String("mnc"), &Item::mnc},
    {QLatin1String("shortdescr"), &Item::shortdescr},
    {QLatin1String("fulldescr"), &Item::fulldescr},
    {QLatin1String("langid"), &Item::langid},
    {QLatin1String("IMSI"), &Item::imsi},
    {QLatin1String("MCCMNC"), &Item::code},
    {QLatin1String("operator"), &Item::name},
};

/// @param attributes has to stay as long as the item is used
Item itemFrom(const QXmlStreamAttributes& attributes)
{
    Item item;
    for (const QXmlStreamAttribute& attribute : attributes) {
        const QStringView name = attribute.qualifiedName();
        for (const ItemAttribute& known : ItemAttributes) {
            if (name == known.name) {
                item.*known.field = attribute.value();
                break;
            }
        }
    }
    return item;
}

_ST_MCCMNC_ITEM namesOf(const Item& item, const QString& region)
{
    const QString shortdescr = item.shortdescr.toString();
    const bool isAlsoFull = item.fulldescr == item.shortdescr; // often: the text is shared
    return {shortdescr, isAlsoFull ? shortdescr : item.fulldescr.toString(), region, item.langid.toString()};
}

template <typename OnRoot>
void readRoot(QXmlStreamReader& reader, QStringView root, OnRoot onRoot)
{
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.hasError())
            LOG_DEBUG("%s", qUtf8Printable(reader.errorString()));
        else if (reader.isStartElement() && reader.name() == root)
            onRoot();
    }
}

/// Hands the items of a section, from behind its start tag, to onItem.
template <typename OnItem>
void readItems(QXmlStreamReader& reader, QStringView section, OnItem onItem)
{
    const auto onStartElement = [&onItem](QXmlStreamReader& element) {
        if (element.name() != ItemElement)
            return;
        const QXmlStreamAttributes attributes = element.attributes();
        onItem(itemFrom(attributes));
    };
    XmlFile::readElements(reader, onStartElement, section);
}

} // namespace

void StatusBarOpListParse::LoadFile(QString fileName)
{
    load(LOG_FUNCTION, fileName, &StatusBarOpListParse::readFile);
}

void StatusBarOpListParse::LoadCPLMNOpListFile(QString fileName)
{
    load(LOG_FUNCTION, fileName, &StatusBarOpListParse::readCPLMNOpListFile);
}

void StatusBarOpListParse::LoadCMCCMNCOpListFile(QString fileName)
{
    load(LOG_FUNCTION, fileName, &StatusBarOpListParse::readCMCCMNCOpListFile);
}

void StatusBarOpListParse::load(const char* function, const QString& fileName, ListReader read)
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, function);
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/StatusBarMgrPlugin/") +
               fileName);
    if (!file.exists()) {
        LOG_DEBUG("%s: %s: File %s does not exist", LOG_FILE, function, qUtf8Printable(file.fileName()));
        return;
    }
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        LOG_DEBUG("%s: %s: Error open file:%s", LOG_FILE, function, qUtf8Printable(file.fileName()));
        return;
    }
    m_strFileName = fileName;
    QXmlStreamReader reader(&file);
    (this->*read)(reader);
}

void StatusBarOpListParse::readFile(QXmlStreamReader& reader)
{
    readRoot(reader, u"OperatorList", [&] { readOperatorList(reader); });
}

bool StatusBarOpListParse::readOperatorList(QXmlStreamReader& reader)
{
    while (!reader.atEnd()) {
        if (reader.isStartElement() && reader.name() == QLatin1String("MccOnly"))
            return readMccOnlyInfo(reader); // the last section, whatever follows
        if (reader.isStartElement() && reader.name() == QLatin1String("MccMnc") && !readMccMncInfo(reader))
            return false;
        reader.readNext();
        if (!checkError(reader))
            return false;
    }
    return true;
}

bool StatusBarOpListParse::readMccMncInfo(QXmlStreamReader& reader)
{
    LOG_DEBUG("%s: %s: %s: called", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (!m_pHashMccMnc) {
        LOG_WARNING("%s: %s: %s: pre condition failed", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return false;
    }
    QString region;
    const auto onStartElement = [&](QXmlStreamReader& element) {
        const QXmlStreamAttributes attributes = element.attributes();
        if (element.name() == ItemElement) {
            const Item item = itemFrom(attributes);
            m_pHashMccMnc->insert({item.mcc, item.mnc}, namesOf(item, region));
        } else if (element.name() == QLatin1String("Region")) {
            region = attributes.value(QLatin1String("descr")).toString();
        }
    };
    XmlFile::readElements(reader, onStartElement, u"MccMnc");
    return checkError(reader);
}

bool StatusBarOpListParse::readMccOnlyInfo(QXmlStreamReader& reader)
{
    LOG_DEBUG("%s: %s: %s: called", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (!m_pHashMccOnly) {
        LOG_WARNING("%s: %s: %s: pre condition failed", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return false;
    }
    readItems(reader, u"MccOnly",
              [this](const Item& item) { m_pHashMccOnly->insert(item.mcc, namesOf(item, {})); });
    return checkError(reader);
}

void StatusBarOpListParse::readCPLMNOpListFile(QXmlStreamReader& reader)
{
    readNames(reader, u"CPLMN",
              [this](const Item& item) { m_hashCPLMN.insert(item.imsi, item.name.toString()); });
}

void StatusBarOpListParse::readCMCCMNCOpListFile(QXmlStreamReader& reader)
{
    readNames(reader, u"CMCCMNC",
              [this](const Item& item) { m_hashCMCCMNC.insert(item.code, item.name.toString()); });
}

template <typename OnItem>
void StatusBarOpListParse::readNames(QXmlStreamReader& reader, QStringView root, OnItem onItem)
{
    readRoot(reader, root, [&] {
        readItems(reader, root, onItem);
        checkError(reader);
    });
}

bool StatusBarOpListParse::checkError(QXmlStreamReader& reader)
{
    if (!reader.hasError())
        return true;
    const QString line = QLatin1String("Error: ") + reader.errorString() + QLatin1String(" at line ") +
                         QString::number(reader.lineNumber()) + QLatin1String(", column ") +
                         QString::number(reader.columnNumber());
    LOG_DEBUG("%s", qUtf8Printable(line));
    return false;
}
