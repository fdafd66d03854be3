#include "common/StandardConfigParse.h"

#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

constexpr XmlFile::Texts LogTexts{"file not exist", "file not exist"};

constexpr QStringView RootElement(u"qrvldoc");

bool isAtEndOf(const QXmlStreamReader& reader, const QString& element)
{
    return reader.isEndElement() && reader.name() == element;
}

/// @return -1
int logReadError(const char* function)
{
    // The fixed time is part of the line.
    LOG_DEBUG("%s: %s: %s: Read Error: ", "10:24:35", LOG_FILE, function);
    return -1;
}

} // namespace

StandardConfigParse::StandardConfigParse(QString fileName)
{
    loadFile(std::move(fileName));
}

int StandardConfigParse::loadFile(QString fileName)
{
    QFile file(CommonUtils::GetPluginLibraryPath() + fileName);
    return XmlFile::open(file, LogTexts, QIODevice::ReadOnly | QIODevice::Text) ? readXmlFile(&file) : -1;
}

int StandardConfigParse::readXmlFile(QIODevice* device)
{
    if (!device || !device->isReadable())
        return -1;
    if (device->atEnd())
        return 0;
    QXmlStreamReader reader(device);
    bool isInRoot = false;
    const auto onStartElement = [&](QXmlStreamReader& element) {
        if (element.name() == RootElement)
            isInRoot = true;
        else if (isInRoot)
            readBlock(element);
    };
    XmlFile::readElements(reader, onStartElement, RootElement);
    return reader.hasError() ? logReadError(LOG_FUNCTION) : 0;
}

void StandardConfigParse::readBlock(QXmlStreamReader& reader)
{
    const QString name = reader.name().toString();
    if (name == QLatin1String("customize_item"))
        parseCustomizeItem(reader, name);
    else if (name == QLatin1String("customize_Info"))
        parseCustomizeInfo(reader, name);
}

int StandardConfigParse::parseCustomizeItem(QXmlStreamReader& reader, QString endName)
{
    int result = 0;
    const auto onStartElement = [&](QXmlStreamReader& element) {
        if (element.name() == QLatin1String("conditions"))
            result = parseDetail(element, m_conditions, QStringLiteral("conditions"));
        else if (element.name() == QLatin1String("results"))
            result = parseDetail(element, m_results, QStringLiteral("results"));
    };
    XmlFile::readElements(reader, onStartElement, endName);
    return reader.hasError() ? logReadError(LOG_FUNCTION) : result;
}

int StandardConfigParse::parseCustomizeInfo(QXmlStreamReader& reader, QString endName)
{
    return parseDetail(reader, m_customInfo, std::move(endName));
}

/// Ends after the first item: a block contributes one entry only.
int StandardConfigParse::parseDetail(QXmlStreamReader& reader, QMap<QString, QString>& table, QString endName)
{
    constexpr QLatin1String itemElement("item");
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == itemElement) {
            const QXmlStreamAttributes attributes = reader.attributes();
            table.insert(attributes.value(QLatin1String("name")).toString(),
                         attributes.value(QLatin1String("value")).toString());
        } else if (isAtEndOf(reader, endName)) {
            return -2;
        } else if (isAtEndOf(reader, itemElement)) {
            return -3;
        } else if (reader.isEndElement()) {
            return 0;
        }
    }
    return 0;
}

QString StandardConfigParse::GetConditionByName(QString name)
{
    return m_conditions[name];
}

QString StandardConfigParse::GetResultByName(QString name)
{
    return m_results[name];
}

QString StandardConfigParse::GetCustomInfoByName(QString name)
{
    return m_customInfo[name];
}
