#pragma once

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>
#include <QVector>

#include <string_view>
#include <vector>

/// An INI file in memory: reads, changes and writes it without touching the lines that do not change.
///
///     # a comment, also with ';'
///     [section]
///     key = value
///
/// Blanks around names and values are trimmed, for other texts see IniText. A section may occur several
/// times; of entries with the same section and key the last counts. Entries before the first section belong
/// to the section "". Names are compared with exact case. Line ends are those of the file's first line.
///
/// A line that is neither of these, is not valid UTF-8 or follows a section line that cannot be read is
/// broken: it is kept as it is, but has no meaning.
class IniDocument
{
public:
    explicit IniDocument(const QByteArray& bytes = {});
    QByteArray toBytes() const;

    /// Numbers of the broken lines, counted from 1, in order.
    const QVector<int>& brokenLines() const { return m_brokenLines; }
    void dropBrokenLines();

    /// Names of all sections in the order of the file, each once.
    QVector<QString> sections() const;

    /// The value, or null when there is no such entry. Valid until the next change.
    const QString* find(const QString& section, const QString& key) const;

    /// Changes the entry's line, or adds one at the end of the section, which is added to the end if need be.
    void set(const QString& section, const QString& key, const QString& value);

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
        QByteArray raw; // without the line end; refers to m_bytes until it is changed
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
    QHash<QPair<QString, QString>, QPair<int, int>> m_entryIndex; // section and line of the entry that counts
};
