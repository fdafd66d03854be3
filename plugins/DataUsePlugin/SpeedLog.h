#pragma once

#include "Traffic.h"

#include <QVector>

/// How fast bytes were transferred in the last minutes. Times are in milliseconds of a clock that never goes back.
class SpeedLog
{
public:
    static constexpr qint64 Span = qint64(5) * 60 * 1000;

    struct Step
    {
        qint64 begin;
        qint64 end;
        Traffic perSecond;
    };

    /// Notes what was transferred since the previous call; the first call only starts the clock. Calls within a second
    /// share a step, because counters grow in jumps.
    void add(const Traffic& grown, qint64 now);

    /// The next step starts now, for example because there was no connection until now.
    void restart(qint64 now);

    const QVector<Step>& steps() const { return m_steps; }

private:
    QVector<Step> m_steps; ///< the oldest first, none of which lies before the span
    qint64 m_begin = -1;   ///< of the next step; negative at first
    Traffic m_grown;       ///< since then
};

/// A round number at or above the largest value on an axis: 1, 2 or 5 with zeros, counted in units such as KB.
/// @param base the factor between two units, 1000 or 1024
/// @return at least one kilobyte
quint64 axisTop(quint64 largest, int base);
