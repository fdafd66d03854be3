#pragma once

#include <QString>
#include <QVector>

/// A fault in a file.
struct Fault
{
    QString file;
    qint64 line = 1;
    QString message;
    QString effect = {}; ///< what happens at run time; may be empty
    QString remedy = {}; ///< how to fix it; may be empty

    /// "file:line: message", which editors recognise, and a line each for effect and remedy.
    QString toString() const;
};

using Faults = QVector<Fault>;

namespace Tool {

/// Prints faults and their number on standard error.
/// @return the exit code: Success without faults, otherwise Failure
int report(const Faults& faults);

} // namespace Tool
