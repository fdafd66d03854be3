#include "LinguistFile.h"

#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

constexpr int Indent = 4; // as Linguist writes it

/// Linguist keeps unknown elements whose names begin with "extra-".
constexpr QLatin1String LastComment("extra-last-comment");

/// "de_DE" for "de-de".
QString localeName(const QString& language)
{
    const int separator = language.indexOf(QLatin1Char('-'));
    if (separator < 0)
        return language;
    return language.left(separator) + QLatin1Char('_') + language.mid(separator + 1).toUpper();
}

void writeTranslation(QXmlStreamWriter& xml, const QString& text, const QString& type)
{
    xml.writeStartElement(QStringLiteral("translation"));
    if (!type.isEmpty())
        xml.writeAttribute(QStringLiteral("type"), type);
    xml.writeCharacters(text);
    xml.writeEndElement();
}

/// @param type of the translation; empty for a finished one
void writeMessage(QXmlStreamWriter& xml, const LanguageText& source, const QString& file,
                  const QString& translation, const QString& type)
{
    xml.writeStartElement(QStringLiteral("message"));
    xml.writeAttribute(QStringLiteral("id"), source.id);
    xml.writeEmptyElement(QStringLiteral("location"));
    xml.writeAttribute(QStringLiteral("filename"), file);
    xml.writeAttribute(QStringLiteral("line"), QString::number(source.line));
    xml.writeTextElement(QStringLiteral("source"), source.text);
    if (!source.comment.isEmpty())
        xml.writeTextElement(QStringLiteral("extracomment"), source.comment);
    writeTranslation(xml, translation, type);
    xml.writeEndElement();
}

void writeMessages(QXmlStreamWriter& xml, const LanguageFile& file, const LanguageFile& reference)
{
    const QString name = QFileInfo(reference.path).fileName();
    const LanguageIndex translations = indexOf(file.texts);
    for (const LanguageText& source : reference.texts) {
        const LanguageText* own = translations.value(source.id);
        const QString unfinished = own ? QString() : QStringLiteral("unfinished");
        writeMessage(xml, source, name, own ? own->text : QString(), unfinished);
    }
    const LanguageIndex sources = indexOf(reference.texts);
    for (const LanguageText& own : file.texts) {
        if (!sources.contains(own.id))
            writeMessage(xml, own, QFileInfo(file.path).fileName(), own.text, QStringLiteral("vanished"));
    }
}

/// Reads one message. The text stays empty if the message is untranslated or vanished.
LanguageText readMessage(QXmlStreamReader& xml)
{
    LanguageText entry;
    entry.line = xml.lineNumber();
    entry.id = xml.attributes().value(QLatin1String("id")).toString();
    while (xml.readNextStartElement()) {
        const QString type = xml.attributes().value(QLatin1String("type")).toString();
        const bool isGone = type == QLatin1String("vanished") || type == QLatin1String("obsolete");
        if (xml.name() == QLatin1String("extracomment"))
            entry.comment = xml.readElementText();
        else if (xml.name() == QLatin1String("translation") && !isGone)
            entry.text = xml.readElementText();
        else
            xml.skipCurrentElement();
    }
    return entry;
}

void takeMessage(const LanguageText& entry, LanguageFile& file, Faults& faults)
{
    if (entry.id.isEmpty())
        faults.append({file.path, entry.line, QStringLiteral("the message has no id")});
    else if (!entry.text.isEmpty())
        file.texts.append(entry);
}

} // namespace

void LinguistFile::write(QIODevice& device, const LanguageFile& file, const LanguageFile& reference)
{
    QXmlStreamWriter xml(&device);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(Indent);
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral("<!DOCTYPE TS>"));
    xml.writeStartElement(QStringLiteral("TS"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("2.1"));
    xml.writeAttribute(QStringLiteral("language"), localeName(file.language));
    xml.writeAttribute(QStringLiteral("sourcelanguage"), localeName(reference.language));
    if (!reference.lastComment.isEmpty())
        xml.writeTextElement(LastComment, reference.lastComment);
    xml.writeStartElement(QStringLiteral("context"));
    xml.writeTextElement(QStringLiteral("name"), reference.plugin);
    writeMessages(xml, file, reference);
    xml.writeEndDocument();
}

void LinguistFile::read(QIODevice& device, LanguageFile& file, Faults& faults)
{
    QXmlStreamReader xml(&device);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == LastComment)
            file.lastComment = xml.readElementText();
        else if (xml.isStartElement() && xml.name() == QLatin1String("message"))
            takeMessage(readMessage(xml), file, faults);
    }
    if (xml.hasError())
        faults.append({file.path, xml.lineNumber(), QStringLiteral("broken XML: %1").arg(xml.errorString())});
}
