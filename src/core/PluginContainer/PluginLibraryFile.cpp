// Reads the plugin library file, the list of all known plugins.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/ConfigurationFile_p.h"
#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginInfo.h"
#include "common/Log.h"

#include <QMutexLocker>
#include <QXmlStreamReader>

namespace {

constexpr XmlFile::Texts LogTexts{"File %s does not exist", "Failed to open file %s", "Error: ", ",column ",
                                  "Parsing %s done... "};

/// The elements of a record as they are read.
struct PluginElement
{
    QString name;
    QString clsid;
    QString url;
    QString active;
    QString type;
    QString isStatic;
    QString settingTitle;
};

struct ElementField
{
    QLatin1String element;
    QString PluginElement::*field;
};

constexpr ElementField ElementFields[] = {
    {QLatin1String("name"), &PluginElement::name},
    {QLatin1String("clsid"), &PluginElement::clsid},
    {QLatin1String("url"), &PluginElement::url},
    {QLatin1String("active"), &PluginElement::active},
    {QLatin1String("type"), &PluginElement::type},
    {QLatin1String("static"), &PluginElement::isStatic},
    {QLatin1String("setting_title"), &PluginElement::settingTitle},
};

constexpr QLatin1String LastElement("static");

bool isTrue(const QString& text)
{
    return text == QLatin1String("true");
}

void removeFirst(QString& text, QLatin1String part)
{
    const int position = text.indexOf(part);
    if (position >= 0)
        text.remove(position, part.size());
}

/// The element "url" holds a Windows path like ".\Name.dll"; the loader needs the base name.
QString libraryBaseName(QString url)
{
    removeFirst(url, QLatin1String(".\\"));
    removeFirst(url, QLatin1String(".dll"));
    return url;
}

/// Reads the field that the reader is at; other elements are skipped.
/// @return whether it was the one that ends the record
bool readField(QXmlStreamReader& reader, PluginElement& element)
{
    const QStringView name = reader.name();
    for (const ElementField& field : ElementFields) {
        if (name != field.element)
            continue;
        element.*field.field = reader.readElementText(QXmlStreamReader::SkipChildElements);
        return field.element == LastElement;
    }
    return false;
}

} // namespace

void PluginContainer::populatePluginInfo(QString path)
{
    const QMutexLocker locker(&m_mutex);
    const char* const function = LOG_FUNCTION;
    const auto onElement = [this, function](QXmlStreamReader& reader) {
        readPluginLibraryElement(reader, function);
    };
    readConfigurationFile(path, LogTexts, onElement, d->configurationFaults);
}

void PluginContainer::readPluginLibraryElement(QXmlStreamReader& reader, const char* function)
{
    if (reader.name() == QLatin1String("mainplugin")) {
        const QString name = reader.readElementText(QXmlStreamReader::SkipChildElements);
        if (!reader.hasError())
            m_strMainPlugin = name;
        LOG_DEBUG("%s: %s: m_strMainPlugin = %s", LOG_FILE, function, qUtf8Printable(m_strMainPlugin));
        return;
    }
    if (reader.name() != QLatin1String("plugin"))
        return;
    PluginInfo* const pPluginInfo = readPluginElement(reader);
    if (!pPluginInfo) {
        LOG_DEBUG("%s: %s: pPluginInfo is NULL", LOG_FILE, function);
        return;
    }
    m_pHashPlugins->insert(pPluginInfo->m_strClsid, pPluginInfo);
    m_pListPlugins->append(pPluginInfo);
}

/// A record ends after its "static" element, not at its closing tag: without "static" it continues into the
/// next one.
PluginInfo* PluginContainer::readPluginElement(QXmlStreamReader& reader)
{
    PluginElement element;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && readField(reader, element))
            break; // at the end tag of "static": whatever follows is not part of the record
    }
    return new PluginInfo(std::move(element.name), std::move(element.clsid),
                          libraryBaseName(std::move(element.url)), element.type.toInt(),
                          isTrue(element.active), isTrue(element.isStatic), isTrue(element.settingTitle),
                          false);
}
