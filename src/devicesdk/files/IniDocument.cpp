#include "files/IniDocument.h"

#include "files/IniText.h"

#include <algorithm>

namespace {

constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";

/// The bytes without a copy.
QByteArray view(std::string_view bytes)
{
    return QByteArray::fromRawData(bytes.data(), int(bytes.size()));
}

} // namespace

IniDocument::IniDocument(const QByteArray& bytes)
    : m_bytes(bytes)
{
    std::string_view rest(m_bytes.constData(), std::size_t(m_bytes.size()));
    m_sections.push_back({QStringLiteral(""), {}, true, {}});
    if (rest.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        rest.remove_prefix(ByteOrderMark.size());
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
            if (number == 1)
                m_lineEnd = QByteArrayLiteral("\r\n");
        }
        readLine(line, number);
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
        // Only comments remain of an unreadable section: they become part of the previous one.
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
    // Empty lines and comments after the last entry belong to the next section.
    auto place =
        std::find_if(lines.rbegin(), lines.rend(), [](const Line& l) { return l.kind != Line::Other; });
    const auto position = place == lines.rend() ? lines.end() : place.base();
    const int lineNumber = int(position - lines.begin());
    lines.insert(position, entryLine(key, value));
    m_entryIndex.insert({section, key}, {sectionNumber, lineNumber});
}

void IniDocument::removeSection(const QString& section)
{
    const auto isRemoved = [&](const Section& candidate) {
        return candidate.isReadable && !candidate.header.isNull() && candidate.name == section;
    };
    m_sections.erase(std::remove_if(m_sections.begin(), m_sections.end(), isRemoved), m_sections.end());
    buildIndex();
}

void IniDocument::readLine(std::string_view line, int number)
{
    const std::string_view text = IniText::trimmed(line);
    QString content;
    if (!text.empty() && text.front() == '[') {
        const bool isClosed = text.size() > 1 && text.back() == ']';
        const bool isReadable =
            isClosed && IniText::read(IniText::trimmed(text.substr(1, text.size() - 2)), content);
        m_sections.push_back({content, view(line), isReadable, {}});
        if (!isReadable)
            m_brokenLines.append(number);
        return;
    }
    const bool isComment = text.empty() || text.front() == '#' || text.front() == ';';
    if (isComment && IniText::read(text, content))
        m_sections.back().lines.push_back({Line::Other, view(line), {}, {}});
    else if (isComment || !readEntry(line, text))
        addBroken(line, number);
}

/// Returns false if the line is not an entry.
bool IniDocument::readEntry(std::string_view line, std::string_view text)
{
    const std::size_t separator = text.find('=');
    if (separator == std::string_view::npos || !m_sections.back().isReadable)
        return false;
    Line entry{Line::Entry, view(line), {}, {}};
    if (!IniText::read(IniText::trimmed(text.substr(0, separator)), entry.key) ||
        !IniText::read(IniText::trimmed(text.substr(separator + 1)), entry.value))
        return false;
    m_sections.back().lines.push_back(std::move(entry));
    return true;
}

void IniDocument::addBroken(std::string_view line, int number)
{
    m_sections.back().lines.push_back({Line::Broken, view(line), {}, {}});
    m_brokenLines.append(number);
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
    m_sections.push_back({name, '[' + IniText::escaped(name, IniText::Place::Section) + ']', true, {}});
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
