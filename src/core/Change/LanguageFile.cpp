// Reading language files.
#include "Change/Change.h"

#include "Change/CurrentLanguage_p.h"
#include "Change/LanguageFiles.h"
#include "Change/TextTable_p.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"
#include "common/files/XmlText_p.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

constexpr XmlFile::Texts LogTexts{"File %s does not exist", "Error open file:%s", "Error: ", ", column ", ""};

constexpr qint64 UsualItemSize = 80; ///< in bytes

QString languageFile(const QString& plugin)
{
    const QString folder = CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins");
    return LanguageFiles::path(folder, plugin, CurrentLanguage::name());
}

/// Edits escape sequences, which files write as a backslash and a letter.
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

/// Reads the item that the reader is on. An item with a fault in it is skipped.
void readItem(QXmlStreamReader& reader, bool keepsShortcut, QHash<QString, QString>& texts)
{
    const QString id = reader.attributes().value(QLatin1String("name")).toString();
    QString text = XmlFile::readNestedText(reader, [](QXmlStreamReader&) {});
    if (reader.hasError())
        return;
    editEscapes(text);
    const int shortcut = keepsShortcut ? -1 : Change::FindControlKeyInLangString(text);
    if (shortcut > 0)
        text.truncate(shortcut);
    texts.insert(id, text);
}

} // namespace

bool Change::LoadLangFile(QString const& plugin)
{
    const QString path = languageFile(plugin);
    LOG_DEBUG("%s: %s: loading %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(path));
    QFile file(path);
    return XmlFile::open(file, LogTexts, QIODevice::ReadOnly | QIODevice::Text) && readXmlFile(&file, plugin);
}

bool Change::readXmlFile(QIODevice* device, QString plugin)
{
    if (!device)
        return false;
    const bool keepsShortcuts = CurrentLanguage::hasShortcuts();
    QHash<QString, QString>& texts = TextTable::texts(plugin);
    texts.reserve(std::max(texts.size(), XmlFile::foreseenEntries(device->size(), UsualItemSize)));
    QXmlStreamReader reader(device);
    XmlFile::readElements(reader, [&](QXmlStreamReader& element) {
        if (element.name() == QLatin1String("item"))
            readItem(element, keepsShortcuts, texts);
    });
    const auto* const file = qobject_cast<const QFile*>(device);
    XmlFile::logFault(reader, file ? file->fileName() : plugin, LogTexts);
    return true;
}
