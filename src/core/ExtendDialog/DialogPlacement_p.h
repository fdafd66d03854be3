#pragma once

#include <QRect>
#include <QRegion>

/// Position and shape of dialogs. Plain arithmetic.
namespace DialogPlacement {

/// Centres a dialog over a window and keeps it on the screen, with room for its title above it.
/// @param reference the window's rectangle
/// @param available the part of the screen that windows may use
QRect centred(const QRect& reference, const QSize& dialog, const QRect& available);

/// The top-left corner that puts a rectangle of this size in the middle of another one.
QPoint centrePoint(const QRect& reference, const QSize& size);

/// The parts of a dialog's upper corners that lie outside their rounding.
struct Corners
{
    QRegion left;
    QRegion right;
};

Corners corners(int width);

} // namespace DialogPlacement
