#pragma once

class QPainter;

/// Draws the signs of Look::tileIcon() in a square of 24 by 24 units. The painter comes with a white pen of 1.8 units,
/// without a brush, and with the tile's colour as its background.
namespace TileSigns {

void signal(QPainter& painter);
void modem(QPainter& painter);
void sim(QPainter& painter);
void dialPad(QPainter& painter);
void plugins(QPainter& painter);
void help(QPainter& painter);
void call(QPainter& painter);
void message(QPainter& painter);
void globe(QPainter& painter);
void data(QPainter& painter);

// States of a connection.
void noModem(QPainter& painter);
void noSim(QPainter& painter);
void locked(QPainter& painter);
void searching(QPainter& painter);
void refused(QPainter& painter);
void disconnected(QPainter& painter);
void connecting(QPainter& painter);
void connected(QPainter& painter);
void failed(QPainter& painter);

/// Bars with a mark in the free corner.
void signalBars(QPainter& painter, int bars, bool isConnected);

} // namespace TileSigns
