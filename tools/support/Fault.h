#pragma once

#include <QString>
#include <QVector>

/// A fault in a file.
struct Fault
{
    QString file;
    qint64 line = 1;
    QString message;

    /// "file:line: message", which editors can follow.
    QString toString() const { return QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(message); }
};

using Faults = QVector<Fault>;
