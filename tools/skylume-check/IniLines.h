#pragma once

#include "files/IniDocument.h"

#include <QString>
#include <QVector>

struct IniLine
{
    QString section;
    QString key; ///< empty for the line that begins the section
    QString value;
    qint64 line = 0; ///< 0 if there is no such line
};

/// An INI file of the device service with the lines of its entries.
class IniLines
{
public:
    /// A file that cannot be read has no lines.
    explicit IniLines(const QString& path);

    const QString& path() const { return m_path; }
    const QVector<IniLine>& lines() const { return m_lines; }
    const IniDocument& document() const { return m_document; }

    /// The last line of this section and key.
    IniLine value(const QString& section, const QString& key) const;

private:
    QString m_path;
    IniDocument m_document;
    QVector<IniLine> m_lines;
};
