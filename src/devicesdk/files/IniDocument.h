#pragma once

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>
#include <QVector>

#include <string_view>
#include <vector>

/// An INI file in memory. Changing entries keeps all other lines as they are.
///
///     # a comment, also with ';'
///     [section]
///     key = value
///
/// Spaces and tabs around names and values are ignored; for escapes see IniText. A section may occur several
/// times; if entries have the same section and key, the last one applies. Entries before the first section
/// belong to the section "". Names are case-sensitive. The first line determines the line ends for all.
///
/// A line is broken if it is none of these, is not valid UTF-8, or follows a section line that is broken. It
/// is kept but ignored.
class IniDocument
{
public:
    explicit IniDocument(const QByteArray& bytes = {});
    QByteArray toBytes() const;

    /// Line numbers of the broken lines, starting from 1, in ascending order.
    const QVector<int>& brokenLines() const { return m_brokenLines; }
    void dropBrokenLines();

    /// Names of all sections, each once, in the order of the file.
    QVector<QString> sections() const;

    /// Returns the value, or null if there is no such entry. Valid until the next change.
    const QString* find(const QString& section, const QString& key) const;

    /// Changes the line of the entry. A new entry is added to the end of its section, and a new section to the
    /// end of the file.
    void set(const QString& section, const QString& key, const QString& value);

    /// Removes all sections with that name, with the comments in them. Comments before a section's header belong
    /// to the section before it.
    void removeSection(const QString& section);

    /// Calls visit(section, key, value) for each entry, in the order of the file.
    template <typename Visitor>
    void forEachEntry(Visitor visit) const
    {
        for (const Section& section : m_sections) {
            for (const Line& line : section.lines) {
                if (line.kind == Line::Entry)
                    visit(section.name, line.key, line.value);
            }
        }
    }

private:
    struct Line
    {
        enum Kind { Other, Entry, Broken };
        Kind kind = Other;
        QByteArray raw; // without the line end; refers to m_bytes unless the line was changed
        QString key;
        QString value;
    };

    struct Section
    {
        QString name;
        QByteArray header; // null for the lines before the first header
        bool isReadable = true;
        std::vector<Line> lines;
    };

    void readLine(std::string_view line, int number);
    bool readEntry(std::string_view line, std::string_view text);
    void addBroken(std::string_view line, int number);
    int sectionToWrite(const QString& name);
    static Line entryLine(const QString& key, const QString& value);
    void buildIndex();

    QByteArray m_bytes; // never changed
    QByteArray m_lineEnd = QByteArrayLiteral("\n");
    std::vector<Section> m_sections;
    QVector<int> m_brokenLines;
    QHash<QString, int> m_sectionIndex;                           // first section of that name
    QHash<QPair<QString, QString>, QPair<int, int>> m_entryIndex; // to its section and line
};
