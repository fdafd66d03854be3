#include "support/Look.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

// Signs are drawn in a square of 24 by 24 units with a white pen of 1.8 units, filled parts with a white
// brush.

namespace {

void drawSignal(QPainter& painter)
{
    for (int ring = 1; ring <= 3; ++ring) {
        const qreal reach = 4.0 * ring;
        painter.drawArc(QRectF(12 - reach, 16.5 - reach, 2 * reach, 2 * reach), 50 * 16, 80 * 16);
    }
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(12, 16.5), 0.8, 0.8);
}

void drawModem(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(8, 9, 8, 11), 1.6, 1.6);
    painter.drawRect(QRectF(9.8, 4.5, 4.4, 4.5));
    painter.drawLine(QPointF(12, 13), QPointF(12, 16));
}

void drawSim(QPainter& painter)
{
    QPainterPath card(QPointF(7, 4.5));
    for (const QPointF corner : {QPointF(13.5, 4.5), QPointF(17, 8), QPointF(17, 19.5), QPointF(7, 19.5)})
        card.lineTo(corner);
    card.closeSubpath();
    painter.drawPath(card);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(10, 12, 4, 4));
}

void drawDialPad(QPainter& painter)
{
    painter.setBrush(Qt::white);
    for (const qreal x : {6.5, 12.0, 17.5}) {
        for (const qreal y : {6.5, 12.0, 17.5})
            painter.drawEllipse(QPointF(x, y), 0.9, 0.9);
    }
}

void drawPlugins(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(5, 5, 5.5, 5.5), 1, 1);
    painter.drawRoundedRect(QRectF(5, 13.5, 5.5, 5.5), 1, 1);
    painter.drawRoundedRect(QRectF(13.5, 13.5, 5.5, 5.5), 1, 1);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(13.5, 5, 5.5, 5.5), 1, 1);
}

void drawHelp(QPainter& painter)
{
    QPainterPath hook(QPointF(8.6, 9));
    hook.cubicTo(8.6, 4.2, 15.6, 4.2, 15.6, 9);
    hook.cubicTo(15.6, 11.8, 12, 11.6, 12, 14.8);
    painter.drawPath(hook);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(12, 18.4), 0.5, 0.5);
}

void drawCall(QPainter& painter)
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

void drawMessage(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(5, 7, 14, 10), 1.4, 1.4);
    painter.drawPolyline(QPolygonF({QPointF(5.4, 8), QPointF(12, 13), QPointF(18.6, 8)}));
}

constexpr int LargestTile = 64; ///< in device-independent pixels

struct Picture
{
    Look::Sign sign;
    QRgb color;
    void (*draw)(QPainter&);
};

constexpr Picture Pictures[] = {
    {Look::Sign::Signal, 0xff2563c9, drawSignal},   {Look::Sign::Modem, 0xff0f8a83, drawModem},
    {Look::Sign::Sim, 0xffc26a12, drawSim},         {Look::Sign::DialPad, 0xff2e8b4a, drawDialPad},
    {Look::Sign::Plugins, 0xff6b56c9, drawPlugins}, {Look::Sign::Help, 0xffb8437f, drawHelp},
    {Look::Sign::Call, 0xff2e8b4a, drawCall},       {Look::Sign::Message, 0xff3a7ca5, drawMessage},
};

QPixmap tile(const Picture& picture, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 24.0, size / 24.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(picture.color));
    painter.drawRoundedRect(QRectF(0, 0, 24, 24), 6, 6);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    picture.draw(painter);
    return pixmap;
}

} // namespace

QIcon Look::tileIcon(Sign sign)
{
    const int largest = qCeil(LargestTile * qGuiApp->devicePixelRatio()); // of the densest screen
    QIcon icon;
    for (const Picture& picture : Pictures) {
        if (picture.sign != sign)
            continue;
        for (const int size : {16, 24, 28, 32, 48, 56, 64, 96, 128})
            if (size <= largest)
                icon.addPixmap(tile(picture, size));
    }
    // The same pixels when selected: the tile carries its own background.
    for (const QSize& size : icon.availableSizes())
        icon.addPixmap(icon.pixmap(size), QIcon::Selected);
    return icon;
}
