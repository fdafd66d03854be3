#include "ExtendDialog/DialogPlacement_p.h"

QPoint DialogPlacement::centrePoint(const QRect& reference, const QSize& size)
{
    return {reference.left() - (reference.left() + size.width() - 1 - reference.right()) / 2,
            reference.top() - (reference.top() + size.height() - 1 - reference.bottom()) / 2};
}

QRect DialogPlacement::centred(const QRect& reference, const QSize& dialog, const QRect& available)
{
    constexpr int margin = 2;
    constexpr int titleRoom = 28;
    const QPoint centre = centrePoint(reference, dialog);
    int x = centre.x();
    int y = centre.y();
    if (x < 0)
        x = available.left() + margin;
    if (x + dialog.width() > available.right())
        x = available.right() - dialog.width();
    if (y - titleRoom <= available.top())
        y = available.top() + titleRoom + 1;
    if (y + dialog.height() > available.bottom())
        y = available.bottom() - dialog.height();
    return {QPoint(x, y), dialog};
}

DialogPlacement::Corners DialogPlacement::corners(int width)
{
    constexpr int square = 10;
    constexpr int ellipse = 18;
    const auto outside = [](int left, int ellipseLeft) {
        return QRegion(left, 0, square, square) - QRegion(ellipseLeft, 0, ellipse, ellipse, QRegion::Ellipse);
    };
    return {outside(0, 0), outside(width - square, width - ellipse)};
}
