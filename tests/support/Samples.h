#pragma once

#include "TestFiles.h"

#include <QStringList>
#include <QVector>

struct Sample
{
    QByteArray name;
    QByteArray text;

    QByteArray firstLine() const { return text.left(text.indexOf('\n')); }

    /// What follows the first line, without white space around it.
    QByteArray body() const { return text.mid(text.indexOf('\n') + 1).trimmed(); }

    /// The lines that begin with a mark, without it.
    QStringList marked(const QByteArray& mark) const
    {
        QStringList lines;
        for (const QByteArray& line : text.split('\n'))
            if (line.startsWith(mark))
                lines.append(line.mid(mark.size()));
        return lines;
    }
};

/// The samples of a file. Each begins with a line "=== NAME".
inline QVector<Sample> samplesIn(const QString& path)
{
    QVector<Sample> samples;
    const QByteArray content = contentOf(path);
    for (const QByteArray& line : content.split('\n')) {
        if (line.startsWith("=== "))
            samples.append(Sample{line.mid(4), {}});
        else if (samples.isEmpty())
            qFatal("no samples in %s", qUtf8Printable(path));
        else
            samples.last().text += line + '\n';
    }
    return samples;
}

/// The rows of a table with "|" between its columns. Lines that begin with "#" are comments.
inline QVector<QStringList> tableIn(const QString& path)
{
    QVector<QStringList> rows;
    for (const QByteArray& line : contentOf(path).split('\n')) {
        if (!line.contains('|') || line.startsWith('#'))
            continue;
        rows.append(QStringList());
        for (const QByteArray& cell : line.split('|'))
            rows.last() += QString::fromUtf8(cell.trimmed());
    }
    if (rows.isEmpty())
        qFatal("no rows in %s", qUtf8Printable(path));
    return rows;
}
