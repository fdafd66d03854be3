#include "DayBars.h"

#include "SpeedLog.h"
#include "Words.h"
#include "support/Numbers.h"
#include "support/Text.h"
#include "support/Units.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr qreal BarShare = 0.7; // of the width of a day
constexpr int DaysPerTick = 5;

} // namespace

void DayBars::showDays(const History::Days& days, const Period& month, const Units& units)
{
    m_units = &units;
    m_first = month.first;
    m_days.clear();
    quint64 largest = 0;
    QVector<Tick> ticks;
    const auto count = int(month.first.daysTo(month.last)) + 1;
    for (int i = 0; i < count; ++i) {
        const QDate day = m_first.addDays(i);
        m_days.append(days.value(day));
        largest = std::max(largest, m_days.last().total());
        if (i % DaysPerTick == 0)
            ticks.append({(i + 0.5) / count, numberText(day.day())});
    }
    m_top = axisTop(largest, units.base());
    setAxes(units.shortVolume(m_top), units.shortVolume(m_top / 2), ticks);
}

void DayBars::drawContent(QPainter& painter, const QRectF& plot)
{
    const qreal width = plot.width() / std::max(1, m_days.size());
    const auto heightOf = [&](quint64 bytes) {
        return qreal(bytes) / qreal(m_top) * plot.height();
    };
    for (int i = 0; i < m_days.size(); ++i) {
        const qreal left = plot.left() + (i + (1 - BarShare) / 2) * width;
        const qreal received = heightOf(m_days[i].received);
        const qreal sent = heightOf(m_days[i].sent);
        painter.fillRect(QRectF(left, plot.bottom() - received, width * BarShare, received), receivedColor());
        painter.fillRect(QRectF(left, plot.bottom() - received - sent, width * BarShare, sent), sentColor());
    }
}

bool DayBars::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return Chart::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

QString DayBars::tipAt(const QPoint& position) const
{
    const QRectF area = plot();
    const int x = layoutDirection() == Qt::RightToLeft ? width() - position.x() : position.x();
    const int index = int((x - area.left()) / area.width() * m_days.size());
    if (x < area.left() || index >= m_days.size())
        return {};
    const Traffic& day = m_days[index];
    return text("IDS_DATA_ON_DAY")
        .arg(dateText(m_first.addDays(index)), isolated(m_units->volume(day.received)),
             isolated(m_units->volume(day.sent)));
}
