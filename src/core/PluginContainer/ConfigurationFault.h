#pragma once

#include <QString>
#include <QVector>

/// Why the container could not read all of one of its two files, as PluginContainer::GetConfigurationFaults()
/// reports it. What the file says before the fault is in force.
struct ConfigurationFault
{
    enum class Kind {
        Missing,    ///< the file does not exist
        Unreadable, ///< it exists, but cannot be opened
        Malformed,  ///< it is not well-formed XML
    };

    Kind kind;
    QString path;
    qint64 line;     ///< from 1; 0 unless the file is malformed
    qint64 column;   ///< of the reader's stop, from 0; 0 unless the file is malformed
    QString message; ///< the XML reader's or the system's own text, not translated; empty for a missing file
};

using ConfigurationFaultList = QVector<ConfigurationFault>;
