// Reads a plugin's texts for the current language.
#include "Change/Change.h"

#include "Change/CurrentLanguage.h"
#include "Change/TextTable.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/XmlFile.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr XmlFile::Texts logTexts{"File %s does not exist", "Error open file:%s", "Error: ", ", column ", ""};

constexpr int usualItemSize = 80; ///< bytes of a file per text, so that the table grows once

QString languageFile(const QString& plugin)
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + plugin + QLatin1Char('/') +
           plugin + QLatin1Char('_') + CurrentLanguage::name() + QLatin1String(".lang");
}

/// Texts come from many hands and formats: line ends of others do not matter here, tabulators do.
void editEscapes(QString& text)
{
    if (!text.contains(QLatin1Char('\\')))
        return;
    text.remove(QLatin1String("\\n"));
    text.remove(QLatin1String("\\r"));
    text.replace(QLatin1String("\\t"), QString(12, QLatin1Char(' ')));
    text.remove(QLatin1String("\\v"));
    text.remove(QLatin1String("\\f"));
}

} // namespace

bool Change::LoadLangFile(QString const& plugin)
{
    const QString path = languageFile(plugin);
    LOG_DEBUG("%s: %s: loading %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(path));
    QFile file(path);
    return XmlFile::open(file, logTexts, QIODevice::ReadOnly | QIODevice::Text) && readXmlFile(&file, plugin);
}

bool Change::readXmlFile(QIODevice* device, QString plugin)
{
    if (!device)
        return false;
    const bool cutsShortcuts = !CurrentLanguage::hasShortcuts();
    QHash<QString, QString>& texts = TextTable::texts(plugin);
    texts.reserve(std::max(texts.size(), static_cast<int>(device->size() / usualItemSize)));
    QXmlStreamReader reader(device);
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement() || reader.name() != QLatin1String("item"))
            continue;
        const QString id = reader.attributes().value(QLatin1String("name")).toString();
        QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
        editEscapes(text);
        const int shortcut = cutsShortcuts ? FindControlKeyInLangString(text) : -1;
        if (shortcut > 0)
            text.truncate(shortcut);
        texts.insert(id, text);
    }
    if (reader.hasError())
        LOG_DEBUG("%s: %s: %s at line %lld, column %lld of the texts of %s", LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(reader.errorString()), reader.lineNumber(), reader.columnNumber(),
                  qUtf8Printable(plugin));
    return true;
}
