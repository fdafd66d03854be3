#include "LanguageFile.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr QLatin1String ItemElement("item");
constexpr QLatin1String NameAttribute("name");

/// Reads one file's texts and notes what is wrong with them.
class Reader
{
public:
    Reader(LanguageFile& file, QIODevice& device, Faults& faults)
        : m_file(file)
        , m_faults(faults)
        , m_xml(&device)
    {
    }

    void read();

private:
    void readItem();
    QString readText();
    void note(qint64 line, const QString& message) { m_faults.append({m_file.path, line, message}); }

    LanguageFile& m_file;
    Faults& m_faults;
    QXmlStreamReader m_xml;
    QString m_comment;
    QHash<QString, qint64> m_lines; ///< of the identifiers so far
};

void Reader::read()
{
    while (!m_xml.atEnd()) {
        m_xml.readNext();
        if (m_xml.isComment())
            m_comment = m_xml.text().toString().trimmed();
        else if (m_xml.isStartElement() && m_xml.name() == ItemElement)
            readItem();
    }
    if (m_xml.hasError())
        note(m_xml.lineNumber(), QStringLiteral("broken XML in column %1: %2; what follows is not read")
                                     .arg(m_xml.columnNumber())
                                     .arg(m_xml.errorString()));
}

void Reader::readItem()
{
    LanguageText entry;
    entry.line = m_xml.lineNumber();
    entry.id = m_xml.attributes().value(NameAttribute).toString();
    entry.comment.swap(m_comment);
    entry.text = readText();
    if (entry.id.isEmpty())
        note(entry.line, QStringLiteral("the text \"%1\" has no identifier").arg(entry.text));
    else if (m_lines.contains(entry.id))
        note(entry.line, QStringLiteral("\"%1\" is there twice, the first time in line %2; this one counts")
                             .arg(entry.id)
                             .arg(m_lines.value(entry.id)));
    if (entry.text.isEmpty())
        note(entry.line, QStringLiteral("\"%1\" has no text").arg(entry.id));
    m_lines.insert(entry.id, entry.line);
    m_file.texts.append(entry);
}

QString Reader::readText()
{
    QString text;
    for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
        m_xml.readNext();
        if (m_xml.isCharacters())
            text += m_xml.text();
        else if (m_xml.isEndElement())
            --depth;
        else if (m_xml.isStartElement() && depth++ > 0)
            note(m_xml.lineNumber(),
                 QStringLiteral("there is an element \"%1\" within a text").arg(m_xml.name()));
    }
    return text;
}

} // namespace

const LanguageText* LanguageFile::find(const QString& id) const
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&id](const LanguageText& entry) { return entry.id == id; });
    return found == texts.end() ? nullptr : &*found;
}

LanguageFile LanguageFile::named(const QString& path)
{
    LanguageFile file;
    file.path = path;
    const QString name = QFileInfo(path).completeBaseName();
    const int separator = name.lastIndexOf(QLatin1Char('_'));
    if (separator > 0 && separator + 1 < name.size()) {
        file.plugin = name.left(separator);
        file.language = name.mid(separator + 1);
    }
    return file;
}

LanguageFile LanguageFile::read(const QString& path, Faults& faults)
{
    LanguageFile file = named(path);
    if (file.language.isEmpty())
        faults.append({path, 1, QStringLiteral("the file's name is not PLUGIN_LANGUAGE.lang")});
    QFile device(path);
    if (device.open(QIODevice::ReadOnly | QIODevice::Text))
        Reader(file, device, faults).read();
    else
        faults.append({path, 1, device.errorString()});
    return file;
}

void LanguageFile::write(QIODevice& device, const LanguageTexts& texts)
{
    QXmlStreamWriter xml(&device);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("language"));
    for (const LanguageText& entry : texts) {
        if (!entry.comment.isEmpty())
            xml.writeComment(QStringLiteral(" %1 ").arg(entry.comment));
        xml.writeStartElement(ItemElement);
        xml.writeAttribute(NameAttribute, entry.id);
        xml.writeCharacters(entry.text);
        xml.writeEndElement();
    }
    xml.writeEndDocument();
}
