#include "support/Look.h"
#include "support/TileSigns_p.h"

#include <QGuiApplication>
#include <QPainter>
#include <QtMath>

namespace {

constexpr int LargestTile = 64; ///< in device-independent pixels

struct Picture
{
    Look::Sign sign;
    QRgb color;
    void (*draw)(QPainter&);
};

constexpr Picture Pictures[] = {
    {Look::Sign::Signal, 0xff2563c9, TileSigns::signal},
    {Look::Sign::Modem, 0xff0f8a83, TileSigns::modem},
    {Look::Sign::Sim, 0xffc26a12, TileSigns::sim},
    {Look::Sign::DialPad, 0xff2e8b4a, TileSigns::dialPad},
    {Look::Sign::Plugins, 0xff6b56c9, TileSigns::plugins},
    {Look::Sign::Help, 0xffb8437f, TileSigns::help},
    {Look::Sign::Call, 0xff2e8b4a, TileSigns::call},
    {Look::Sign::Message, 0xff3a7ca5, TileSigns::message},
    {Look::Sign::Globe, 0xff2563c9, TileSigns::globe},
    {Look::Sign::Data, 0xff5b7a1f, TileSigns::data},
    {Look::Sign::NoModem, 0xff6b7683, TileSigns::noModem},
    {Look::Sign::NoSim, 0xffc26a12, TileSigns::noSim},
    {Look::Sign::Locked, 0xffc26a12, TileSigns::locked},
    {Look::Sign::Searching, 0xff0f8a83, TileSigns::searching},
    {Look::Sign::Refused, 0xffb3261e, TileSigns::refused},
    {Look::Sign::Disconnected, 0xff6b7683, TileSigns::disconnected},
    {Look::Sign::Connecting, 0xff2563c9, TileSigns::connecting},
    {Look::Sign::Connected, 0xff2e8b4a, TileSigns::connected},
    {Look::Sign::Failed, 0xffb3261e, TileSigns::failed},
};

constexpr QRgb ConnectedColor = 0xff2e8b4a;
constexpr QRgb DisconnectedColor = 0xff6b7683;

/// @param draw draws the sign, as the functions of TileSigns do
template <typename Draw>
QPixmap tile(QRgb color, Draw draw, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 24.0, size / 24.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(color));
    painter.drawRoundedRect(QRectF(0, 0, 24, 24), 6, 6);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.setBackground(QColor(color));
    draw(painter);
    return pixmap;
}

template <typename Draw>
QIcon icon(QRgb color, Draw draw)
{
    const int largest = qCeil(LargestTile * qGuiApp->devicePixelRatio()); // of the densest screen
    QIcon made;
    for (const int size : {16, 24, 28, 32, 48, 56, 64, 96, 128})
        if (size <= largest)
            made.addPixmap(tile(color, draw, size));
    // The same pixels when selected: the tile carries its own background.
    for (const QSize& size : made.availableSizes())
        made.addPixmap(made.pixmap(size), QIcon::Selected);
    return made;
}

} // namespace

QIcon Look::tileIcon(Sign sign)
{
    for (const Picture& picture : Pictures) {
        if (picture.sign == sign)
            return icon(picture.color, picture.draw);
    }
    return {};
}

int Look::signalBars(int percent)
{
    return percent > 0 ? qBound(1, qRound(percent * SignalBars / 100.0), SignalBars) : 0;
}

QIcon Look::signalIcon(int bars, bool isConnected)
{
    return icon(isConnected ? ConnectedColor : DisconnectedColor,
                [=](QPainter& painter) { TileSigns::signalBars(painter, bars, isConnected); });
}
