#include "files/IniDocument.h"

#include "files/IniText.h"

#include <algorithm>

IniDocument::IniDocument(const QByteArray& bytes)
{
    beginSection(QStringLiteral(""), {});
    int number = 0;
    for (int start = 0; start < bytes.size();) {
        int end = bytes.indexOf('\n', start);
        if (end < 0)
            end = bytes.size();
        QByteArray line = bytes.mid(start, end - start);
        if (line.endsWith('\r')) {
            line.chop(1);
            if (number == 0)
                m_lineEnd = QByteArrayLiteral("\r\n");
        }
        readLine(line, ++number);
        start = end + 1;
    }
    buildIndex();
}

QByteArray IniDocument::toBytes() const
{
    QByteArray bytes;
    const auto append = [&](const QByteArray& line) {
        bytes += line + m_lineEnd;
    };
    for (const Section& section : m_sections) {
        if (!section.header.isNull())
            append(section.header);
        for (const Line& line : section.lines)
            append(line.raw);
    }
    return bytes;
}

void IniDocument::dropBrokenLines()
{
    const auto isBroken = [](const Line& line) {
        return line.kind == Line::Broken;
    };
    for (Section& section : m_sections) {
        section.lines.erase(std::remove_if(section.lines.begin(), section.lines.end(), isBroken),
                            section.lines.end());
        // What remains of an unreadable section are comments: they go on where they stand.
        if (!section.isReadable)
            section.header = QByteArray();
    }
    m_brokenLines.clear();
    buildIndex();
}

QVector<QString> IniDocument::sections() const
{
    QVector<QString> names;
    for (int i = 0; i < int(m_sections.size()); ++i) {
        const Section& section = m_sections[i];
        if (section.isReadable && m_sectionIndex.value(section.name) == i)
            names.append(section.name);
    }
    return names;
}

const QString* IniDocument::find(const QString& section, const QString& key) const
{
    const auto found = m_entryIndex.constFind({section, key});
    return found == m_entryIndex.cend() ? nullptr : &m_sections[found->first].lines[found->second].value;
}

void IniDocument::set(const QString& section, const QString& key, const QString& value)
{
    const auto found = m_entryIndex.constFind({section, key});
    if (found != m_entryIndex.cend()) {
        m_sections[found->first].lines[found->second] = entryLine(key, value);
        return;
    }
    const int sectionNumber = sectionToWrite(section);
    std::vector<Line>& lines = m_sections[sectionNumber].lines;
    // Blank lines and comments after the last entry lead over to the next section.
    auto place =
        std::find_if(lines.rbegin(), lines.rend(), [](const Line& l) { return l.kind != Line::Other; });
    const auto position = place == lines.rend() ? lines.end() : place.base();
    const int lineNumber = int(position - lines.begin());
    lines.insert(position, entryLine(key, value));
    m_entryIndex.insert({section, key}, {sectionNumber, lineNumber});
}

void IniDocument::readLine(const QByteArray& raw, int number)
{
    QString line;
    const bool isText = IniText::decodeUtf8(raw, line);
    const QStringView text = IniText::trimmed(line);
    if (text.startsWith(QLatin1Char('['))) {
        if (isText && text.size() > 1 && text.endsWith(QLatin1Char(']')))
            beginSection(IniText::unescaped(IniText::trimmed(text.mid(1, text.size() - 2))), raw);
        else
            beginUnreadableSection(raw, number);
        return;
    }
    const int separator = int(text.indexOf(QLatin1Char('=')));
    const bool isComment = text.startsWith(QLatin1Char('#')) || text.startsWith(QLatin1Char(';'));
    if (isText && (text.isEmpty() || isComment))
        m_sections.back().lines.push_back({Line::Other, raw, {}, {}});
    else if (isText && separator >= 0 && m_sections.back().isReadable)
        addEntry(raw, text, separator);
    else
        addBroken(raw, number);
}

void IniDocument::beginSection(const QString& name, const QByteArray& header)
{
    m_sections.push_back({name, header, true, {}});
}

void IniDocument::beginUnreadableSection(const QByteArray& header, int number)
{
    m_sections.push_back({{}, header, false, {}});
    m_brokenLines.append(number);
}

void IniDocument::addBroken(const QByteArray& raw, int number)
{
    m_sections.back().lines.push_back({Line::Broken, raw, {}, {}});
    m_brokenLines.append(number);
}

void IniDocument::addEntry(const QByteArray& raw, QStringView text, int separator)
{
    const QString key = IniText::unescaped(IniText::trimmed(text.left(separator)));
    const QString value = IniText::unescaped(IniText::trimmed(text.mid(separator + 1)));
    m_sections.back().lines.push_back({Line::Entry, raw, key, value});
}

int IniDocument::sectionToWrite(const QString& name)
{
    const auto found = m_sectionIndex.constFind(name);
    if (found != m_sectionIndex.cend())
        return *found;
    std::vector<Line>& linesBefore = m_sections.back().lines;
    const bool isFirst = m_sections.size() == 1 && linesBefore.empty();
    if (!isFirst && (linesBefore.empty() || !linesBefore.back().raw.isEmpty()))
        linesBefore.push_back({});
    beginSection(name, '[' + IniText::escaped(name, IniText::Place::Section) + ']');
    const int number = int(m_sections.size()) - 1;
    m_sectionIndex.insert(name, number);
    return number;
}

IniDocument::Line IniDocument::entryLine(const QString& key, const QString& value)
{
    using IniText::Place;
    return {Line::Entry, IniText::escaped(key, Place::Key) + '=' + IniText::escaped(value, Place::Value), key,
            value};
}

void IniDocument::buildIndex()
{
    m_sectionIndex.clear();
    m_entryIndex.clear();
    for (int i = 0; i < int(m_sections.size()); ++i) {
        const Section& section = m_sections[i];
        if (section.isReadable && !m_sectionIndex.contains(section.name))
            m_sectionIndex.insert(section.name, i);
        for (int j = 0; j < int(section.lines.size()); ++j) {
            if (section.lines[j].kind == Line::Entry)
                m_entryIndex.insert({section.name, section.lines[j].key}, {i, j});
        }
    }
}
