#include "SpeedLog.h"

#include <algorithm>

namespace {

constexpr qint64 ShortestStep = 900; ///< a little less than the interval of the device service
constexpr quint64 LargestShown = quint64(1) << 60;

Traffic perSecond(const Traffic& grown, qint64 milliseconds)
{
    const auto rate = [milliseconds](quint64 bytes) {
        return quint64(std::min(double(bytes) * 1000.0 / double(milliseconds), double(LargestShown)));
    };
    return {rate(grown.received), rate(grown.sent)};
}

} // namespace

void SpeedLog::add(const Traffic& grown, qint64 now)
{
    if (m_begin < 0)
        m_begin = now;
    m_grown += grown;
    const qint64 duration = now - m_begin;
    if (duration < ShortestStep)
        return;
    m_steps.append({m_begin, now, perSecond(m_grown, duration)});
    restart(now);
    const auto isShown = [now](const Step& step) {
        return step.end > now - Span;
    };
    m_steps.erase(m_steps.begin(), std::find_if(m_steps.begin(), m_steps.end(), isShown));
}

void SpeedLog::restart(qint64 now)
{
    m_begin = now;
    m_grown = {};
}

quint64 axisTop(quint64 largest, int base)
{
    const auto factor = quint64(base);
    const quint64 shown = std::min(largest, LargestShown);
    quint64 unit = factor;
    while (shown > unit * factor && unit < factor * factor * factor)
        unit *= factor;
    const quint64 needed = shown / unit + (shown % unit != 0 ? 1 : 0);
    if (needed > 1000 && needed <= factor)
        return factor * unit;
    for (quint64 power = 1;; power *= 10) {
        for (const quint64 digit : {1U, 2U, 5U}) {
            if (digit * power >= needed)
                return digit * power * unit;
        }
    }
}
