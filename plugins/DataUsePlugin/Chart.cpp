#include "Chart.h"

#include "support/Look.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr QSize Usual{420, 130};
constexpr QSize Least{160, 110};

} // namespace

Chart::Chart()
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Chart::sizeHint() const
{
    return Usual;
}

QSize Chart::minimumSizeHint() const
{
    return Least;
}

void Chart::setAxes(const QString& top, const QString& middle, const QVector<Tick>& ticks)
{
    m_top = top;
    m_middle = middle;
    m_ticks = ticks;
    update();
}

QRectF Chart::plot() const
{
    const QFontMetrics metrics = fontMetrics();
    const int labels = std::max(metrics.horizontalAdvance(m_top), metrics.horizontalAdvance(m_middle));
    const int half = metrics.height() / 2;
    return QRectF(rect()).adjusted(0.5, half + 0.5, -labels - Look::Gap - 0.5, -metrics.height() - 4.5);
}

QColor Chart::receivedColor() const
{
    return Look::toneColor(Look::Tone::Info, palette());
}

QColor Chart::sentColor() const
{
    return Look::toneColor(Look::Tone::Good, palette());
}

void Chart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF area = plot();
    drawLabels(painter, area);
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    drawLines(painter, area);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    drawContent(painter, area);
}

void Chart::drawLines(QPainter& painter, const QRectF& plot) const
{
    painter.setPen(Look::lineColor(palette()));
    for (const qreal y : {plot.top(), plot.center().y(), plot.bottom()})
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
}

void Chart::drawLabels(QPainter& painter, const QRectF& plot) const
{
    const int height = fontMetrics().height();
    const auto draw = [&](const QRectF& place, const QString& label) {
        painter.setLayoutDirection(label.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        painter.drawText(QStyle::visualRect(layoutDirection(), rect(), place.toRect()),
                         Qt::AlignCenter | Qt::TextDontClip, label);
    };
    painter.setPen(Look::toneColor(Look::Tone::Quiet, palette()));
    const qreal left = plot.right() + Look::Gap;
    for (const auto& [y, label] : {std::pair(plot.top(), m_top), {plot.center().y(), m_middle}})
        draw({left, y - height / 2.0, width() - left, qreal(height)}, label);
    for (const Tick& tick : m_ticks) {
        const qreal wide = fontMetrics().horizontalAdvance(tick.label) + 2;
        const qreal x = plot.left() + tick.place * plot.width() - wide / 2;
        draw({qBound(0.0, x, width() - wide), plot.bottom() + 3, wide, qreal(height)}, tick.label);
    }
}
