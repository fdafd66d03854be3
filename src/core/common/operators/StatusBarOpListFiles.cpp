// Reads the operator lists.
#include "common/operators/StatusBarOpListParse_p.h"

#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

constexpr QLatin1String ItemElement("Item");

/// The attributes of an "Item" element; views into the reader's buffers.
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

/// @param attributes has to outlive the item
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
    const bool isAlsoFull = item.fulldescr == item.shortdescr; // usual: the string is shared
    return {shortdescr, isAlsoFull ? shortdescr : item.fulldescr.toString(), region, item.langid.toString()};
}

/// Reads a whole list.
/// @param onRoot reads the root element, from its start tag
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

/// Passes the items of a section to onItem; the reader stands at its start tag.
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

/// Opens a list, or logs why that is not possible.
bool open(QFile& file, const char* function)
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, function);
    if (!file.exists()) {
        LOG_DEBUG("%s: %s: File %s does not exist", LOG_FILE, function, qUtf8Printable(file.fileName()));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        LOG_DEBUG("%s: %s: Error open file:%s", LOG_FILE, function, qUtf8Printable(file.fileName()));
        return false;
    }
    return true;
}

/// Reads a list, if it can be opened.
/// @param openedName receives its name when it was opened
template <typename Read>
void load(const QString& fileName, QString& openedName, Read read, const char* function)
{
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/StatusBarMgrPlugin/") +
               fileName);
    if (!open(file, function))
        return;
    openedName = fileName;
    QXmlStreamReader reader(&file);
    read(reader);
}

} // namespace

void StatusBarOpListParse::LoadFile(QString fileName)
{
    load(
        fileName, m_d->fileName, [this](QXmlStreamReader& reader) { readFile(reader); }, LOG_FUNCTION);
}

void StatusBarOpListParse::LoadCPLMNOpListFile(QString fileName)
{
    load(
        fileName, m_d->fileName, [this](QXmlStreamReader& reader) { readCPLMNOpListFile(reader); },
        LOG_FUNCTION);
}

void StatusBarOpListParse::LoadCMCCMNCOpListFile(QString fileName)
{
    load(
        fileName, m_d->fileName, [this](QXmlStreamReader& reader) { readCMCCMNCOpListFile(reader); },
        LOG_FUNCTION);
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
    if (!m_d->networks) {
        LOG_WARNING("%s: %s: %s: pre condition failed", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return false;
    }
    QString region;
    const auto onStartElement = [&](QXmlStreamReader& element) {
        const QXmlStreamAttributes attributes = element.attributes();
        if (element.name() == ItemElement) {
            const Item item = itemFrom(attributes);
            m_d->networks->insert({item.mcc, item.mnc}, namesOf(item, region));
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
    if (!m_d->countries) {
        LOG_WARNING("%s: %s: %s: pre condition failed", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return false;
    }
    readItems(reader, u"MccOnly",
              [this](const Item& item) { m_d->countries->insert(item.mcc, namesOf(item, {})); });
    return checkError(reader);
}

void StatusBarOpListParse::readCPLMNOpListFile(QXmlStreamReader& reader)
{
    constexpr QStringView root(u"CPLMN");
    readRoot(reader, root, [&] {
        readItems(reader, root,
                  [this](const Item& item) { m_d->imsiPrefixes.insert(item.imsi, item.name.toString()); });
        checkError(reader);
    });
}

void StatusBarOpListParse::readCMCCMNCOpListFile(QXmlStreamReader& reader)
{
    constexpr QStringView root(u"CMCCMNC");
    readRoot(reader, root, [&] {
        readItems(reader, root,
                  [this](const Item& item) { m_d->codes.insert(item.code, item.name.toString()); });
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
