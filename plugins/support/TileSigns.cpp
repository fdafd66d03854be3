#include "support/TileSigns_p.h"

#include <QPainter>
#include <QPainterPath>

void TileSigns::signal(QPainter& painter)
{
    for (int ring = 1; ring <= 3; ++ring) {
        const qreal reach = 4.0 * ring;
        painter.drawArc(QRectF(12 - reach, 16.5 - reach, 2 * reach, 2 * reach), 50 * 16, 80 * 16);
    }
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(12, 16.5), 0.8, 0.8);
}

void TileSigns::modem(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(8, 9, 8, 11), 1.6, 1.6);
    painter.drawRect(QRectF(9.8, 4.5, 4.4, 4.5));
    painter.drawLine(QPointF(12, 13), QPointF(12, 16));
}

void TileSigns::sim(QPainter& painter)
{
    QPainterPath card(QPointF(7, 4.5));
    for (const QPointF corner : {QPointF(13.5, 4.5), QPointF(17, 8), QPointF(17, 19.5), QPointF(7, 19.5)})
        card.lineTo(corner);
    card.closeSubpath();
    painter.drawPath(card);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(10, 12, 4, 4));
}

void TileSigns::dialPad(QPainter& painter)
{
    painter.setBrush(Qt::white);
    for (const qreal x : {6.5, 12.0, 17.5}) {
        for (const qreal y : {6.5, 12.0, 17.5})
            painter.drawEllipse(QPointF(x, y), 0.9, 0.9);
    }
}

void TileSigns::plugins(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(5, 5, 5.5, 5.5), 1, 1);
    painter.drawRoundedRect(QRectF(5, 13.5, 5.5, 5.5), 1, 1);
    painter.drawRoundedRect(QRectF(13.5, 13.5, 5.5, 5.5), 1, 1);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(13.5, 5, 5.5, 5.5), 1, 1);
}

void TileSigns::help(QPainter& painter)
{
    QPainterPath hook(QPointF(8.6, 9));
    hook.cubicTo(8.6, 4.2, 15.6, 4.2, 15.6, 9);
    hook.cubicTo(15.6, 11.8, 12, 11.6, 12, 14.8);
    painter.drawPath(hook);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(12, 18.4), 0.5, 0.5);
}

void TileSigns::call(QPainter& painter)
{
    QPainterPath receiver(QPointF(7.2, 5));
    receiver.cubicTo(3.5, 8, 14.5, 21, 18.6, 17.4);
    receiver.lineTo(15.6, 14.2);
    receiver.lineTo(13.6, 15.2);
    receiver.cubicTo(11.5, 14, 10.2, 12.4, 9.3, 10.4);
    receiver.lineTo(10.3, 8.4);
    receiver.closeSubpath();
    painter.drawPath(receiver);
}

void TileSigns::message(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(5, 7, 14, 10), 1.4, 1.4);
    painter.drawPolyline(QPolygonF({QPointF(5.4, 8), QPointF(12, 13), QPointF(18.6, 8)}));
}

void TileSigns::data(QPainter& painter)
{
    painter.drawLine(QPointF(5, 19), QPointF(19, 19));
    painter.setBrush(Qt::white);
    for (const auto& [x, top] : {std::pair(6.2, 13.0), {10.8, 9.5}, {15.4, 6.0}})
        painter.drawRect(QRectF(x, top, 2.2, 16 - top));
}
