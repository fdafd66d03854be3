#pragma once

#include "common/TagUnits.h"

#include <QString>
#include <QVector>

/// Formats speeds and volumes with units in the current language, for example "1.40 MB/s". "Units.xml" in the folder of
/// the language files selects factors of 1024 or 1000, for everyone or for single operators.
class Units
{
public:
    Units();

    /// @param bytesPerSecond the digits from the device service; if empty, a dash is shown
    QString speed(const QString& bytesPerSecond) const;

    /// @param bytes how many were transferred
    QString volume(quint64 bytes) const;

private:
    QVector<TagUnits> m_speeds;
    QVector<TagUnits> m_volumes;
};
