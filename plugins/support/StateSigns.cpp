#include "support/Look.h"
#include "support/TileSigns_p.h"

#include <QPainter>

namespace {

/// Crosses out what has been drawn, with a gap on both sides of the line.
void crossOut(QPainter& painter)
{
    const QPen pen = painter.pen();
    const QLineF line(5, 5, 19, 19);
    painter.setPen(QPen(painter.background().color(), 3 * pen.widthF(), Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(line);
    painter.setPen(pen);
    painter.drawLine(line);
}

} // namespace

void TileSigns::globe(QPainter& painter)
{
    painter.drawEllipse(QPointF(12, 12), 7.5, 7.5);
    painter.drawEllipse(QPointF(12, 12), 3.2, 7.5);
    painter.drawLine(QPointF(4.5, 12), QPointF(19.5, 12));
}

void TileSigns::noModem(QPainter& painter)
{
    modem(painter);
    crossOut(painter);
}

void TileSigns::noSim(QPainter& painter)
{
    sim(painter);
    crossOut(painter);
}

void TileSigns::locked(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(6.5, 11, 11, 8), 1.6, 1.6);
    painter.drawArc(QRectF(8.5, 5, 7, 8), 0, 180 * 16);
    painter.drawLine(QPointF(8.5, 9), QPointF(8.5, 11));
    painter.drawLine(QPointF(15.5, 9), QPointF(15.5, 11));
    painter.drawLine(QPointF(12, 14.2), QPointF(12, 15.8));
}

void TileSigns::searching(QPainter& painter)
{
    painter.drawEllipse(QPointF(10.8, 10.8), 5.4, 5.4);
    painter.drawLine(QPointF(14.8, 14.8), QPointF(19, 19));
}

void TileSigns::refused(QPainter& painter)
{
    painter.drawEllipse(QPointF(12, 12), 7, 7);
    painter.drawLine(QPointF(7.2, 7.2), QPointF(16.8, 16.8));
}

void TileSigns::disconnected(QPainter& painter)
{
    globe(painter);
    crossOut(painter);
}

void TileSigns::connecting(QPainter& painter)
{
    painter.setBrush(Qt::white);
    for (const qreal x : {6.5, 12.0, 17.5})
        painter.drawEllipse(QPointF(x, 12), 0.9, 0.9);
}

void TileSigns::connected(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({QPointF(6, 12.6), QPointF(10.3, 16.8), QPointF(18, 7.8)}));
}

void TileSigns::failed(QPainter& painter)
{
    painter.drawPolygon(QPolygonF({QPointF(12, 5), QPointF(19.5, 18.5), QPointF(4.5, 18.5)}));
    painter.drawLine(QPointF(12, 10.2), QPointF(12, 13));
    painter.drawPoint(QPointF(12, 15.8));
}

void TileSigns::signalBars(QPainter& painter, int bars, bool isConnected)
{
    if (isConnected) {
        painter.drawPolyline(QPolygonF({QPointF(4.5, 7.6), QPointF(7, 10), QPointF(11, 5)}));
    } else {
        painter.drawLine(QPointF(5, 5), QPointF(10, 10));
        painter.drawLine(QPointF(10, 5), QPointF(5, 10));
    }
    painter.setPen(Qt::NoPen);
    for (int bar = 0; bar < Look::SignalBars; ++bar) {
        painter.setBrush(QColor(255, 255, 255, bar < bars ? 255 : 90));
        const qreal height = 3.5 * (bar + 1);
        painter.drawRect(QRectF(4.4 + 4.1 * bar, 20 - height, 2.9, height));
    }
}
