#include "LanguageFile.h"

#include "common/files/XmlText_p.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

constexpr QLatin1String ItemElement("item");
constexpr QLatin1String NameAttribute("name");
constexpr QLatin1String CommentSeparator("\n\n");

/// Reads one file's texts and notes its faults.
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
    void readComment();
    void readItem();
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
            readComment();
        else if (m_xml.isStartElement() && m_xml.name() == ItemElement)
            readItem();
    }
    m_file.lastComment = m_comment;
    if (m_xml.hasError())
        note(m_xml.lineNumber(), QStringLiteral("broken XML in column %1: %2; what follows is not read")
                                     .arg(m_xml.columnNumber())
                                     .arg(m_xml.errorString()));
}

void Reader::readComment()
{
    if (!m_comment.isEmpty())
        m_comment += CommentSeparator;
    m_comment += m_xml.text().toString().trimmed();
}

void Reader::readItem()
{
    LanguageText entry;
    entry.line = m_xml.lineNumber();
    entry.id = m_xml.attributes().value(NameAttribute).toString();
    entry.comment.swap(m_comment);
    entry.text = XmlFile::readNestedText(m_xml, [this](const QXmlStreamReader& child) {
        note(child.lineNumber(),
             QStringLiteral("there is an element \"%1\" within a text").arg(child.name()));
    });
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

void writeComments(QXmlStreamWriter& xml, const QString& comments)
{
    static const QRegularExpression doubledHyphen(QStringLiteral("-(?=-)"));
    for (QString comment : comments.split(CommentSeparator, Qt::SkipEmptyParts))
        xml.writeComment(QLatin1Char(' ') + comment.replace(doubledHyphen, QStringLiteral("- ")) +
                         QLatin1Char(' '));
}

} // namespace

LanguageIndex indexOf(const LanguageTexts& texts)
{
    LanguageIndex index;
    index.reserve(texts.size());
    for (const LanguageText& entry : texts)
        index.insert(entry.id, &entry);
    return index;
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

void LanguageFile::write(QIODevice& device) const
{
    QXmlStreamWriter xml(&device);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("language"));
    for (const LanguageText& entry : texts) {
        writeComments(xml, entry.comment);
        xml.writeStartElement(ItemElement);
        xml.writeAttribute(NameAttribute, entry.id);
        xml.writeCharacters(entry.text);
        xml.writeEndElement();
    }
    writeComments(xml, lastComment);
    xml.writeEndDocument();
}
