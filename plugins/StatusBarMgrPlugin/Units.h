#pragma once

#include "common/TagUnits.h"

#include <QString>
#include <QVector>

/// Speeds and volumes as people read them: "1.40 MB/s", in units of the current language. "Units.xml" beside
/// the language files says whether a unit is 1024 or 1000 of the next smaller one, also for single operators.
class Units
{
public:
    Units();

    /// @param bytesPerSecond digits as the device service gives them; without any only the unit is shown
    QString speed(const QString& bytesPerSecond) const;

    QString volume(quint64 bytes) const;

private:
    QVector<TagUnits> m_speeds;
    QVector<TagUnits> m_volumes;
};
