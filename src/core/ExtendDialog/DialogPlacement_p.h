#pragma once

#include <QRect>
#include <QRegion>

/// Where dialogs go and what shape they have. Plain arithmetic.
namespace DialogPlacement {

/// Centres a dialog over a window and keeps it, with room for its title, on the screen.
/// @param reference the window's rectangle
/// @param available the part of the screen that windows may use
QRect centred(const QRect& reference, const QSize& dialog, const QRect& available);

/// The top-left corner that puts a rectangle of this size in the middle of another one.
QPoint centrePoint(const QRect& reference, const QSize& size);

/// What lies outside the rounding of a dialog's upper corners.
struct Corners
{
    QRegion left;
    QRegion right;
};

Corners corners(int width);

} // namespace DialogPlacement
