#pragma once

#include "common/TagUnits.h"

#include <QString>
#include <QVector>

/// Formats speeds and volumes, for example "1.40 MB/s", with digits, decimal point and units of the current language.
/// The file plugins/StatusBarMgrPlugin/Units.xml selects factors of 1024 or 1000, for everyone or for single operators.
class Units
{
public:
    Units();

    /// @param bytesPerSecond the digits from the device service; if empty, a dash is shown
    QString speed(const QString& bytesPerSecond) const;

    /// @param bytes how many were transferred
    QString volume(quint64 bytes) const;

    /// The label of an axis, without superfluous decimals: "1.5 MB/s", "500 MB".
    QString shortSpeed(quint64 bytesPerSecond) const;
    QString shortVolume(quint64 bytes) const;

    /// The factor between two units: 1024 or 1000.
    int base() const { return m_base; }

private:
    const int m_base;
    QVector<TagUnits> m_speeds;
    QVector<TagUnits> m_volumes;
};
