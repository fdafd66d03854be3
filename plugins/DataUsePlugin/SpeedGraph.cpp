#include "SpeedGraph.h"

#include "support/Numbers.h"
#include "support/Text.h"
#include "support/Units.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <functional>

namespace {

constexpr int Minute = 60 * 1000; // milliseconds
constexpr qreal AreaOpacity = 0.28;
constexpr qreal LineWidth = 1.6;

/// A line through the steps; steps that do not follow each other are not joined.
/// @param isClosed down to the bottom of the plot
QPainterPath pathOf(const QVector<SpeedLog::Step>& steps, quint64 Traffic::*direction, bool isClosed,
                    const std::function<QPointF(qint64, quint64)>& place)
{
    QPainterPath path;
    qint64 end = -1;
    for (const SpeedLog::Step& step : steps) {
        const bool isJoined = step.begin == end;
        if (!isJoined && isClosed && end >= 0)
            path.lineTo(place(end, 0));
        if (!isJoined)
            path.moveTo(place(step.begin, isClosed ? 0 : step.perSecond.*direction));
        path.lineTo(place(step.begin, step.perSecond.*direction));
        path.lineTo(place(step.end, step.perSecond.*direction));
        end = step.end;
    }
    if (isClosed && end >= 0)
        path.lineTo(place(end, 0));
    return path;
}

} // namespace

void SpeedGraph::showSpeeds(const SpeedLog& log, qint64 now, const Units& units)
{
    m_steps = log.steps();
    m_now = now;
    quint64 largest = 0;
    for (const SpeedLog::Step& step : qAsConst(m_steps))
        largest = std::max({largest, step.perSecond.received, step.perSecond.sent});
    m_top = axisTop(largest, units.base());
    const int minutes = int(SpeedLog::Span / Minute);
    setAxes(units.shortSpeed(m_top), units.shortSpeed(m_top / 2),
            {{0, text("IDS_DATA_MINUTES_AGO").arg(numberText(minutes))}, {1, text("IDS_DATA_NOW")}});
}

void SpeedGraph::drawContent(QPainter& painter, const QRectF& plot)
{
    const auto place = [&](qint64 time, quint64 speed) {
        const qreal x = plot.right() - qreal(m_now - time) / SpeedLog::Span * plot.width();
        return QPointF(x, plot.bottom() - qreal(speed) / qreal(m_top) * plot.height());
    };
    painter.setClipRect(plot.adjusted(0, -LineWidth, 0, LineWidth));
    QColor area = receivedColor();
    area.setAlphaF(AreaOpacity);
    painter.fillPath(pathOf(m_steps, &Traffic::received, true, place), area);
    painter.setPen(QPen(receivedColor(), LineWidth));
    painter.drawPath(pathOf(m_steps, &Traffic::received, false, place));
    painter.setPen(QPen(sentColor(), LineWidth));
    painter.drawPath(pathOf(m_steps, &Traffic::sent, false, place));
}
