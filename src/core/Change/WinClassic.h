#pragma once

#include "skylume_global.h"

#include <QHash>
#include <QPixmap>
#include <QProxyStyle>

class QStyleOptionSlider;

/// The application's base style: the "windows" style with scroll bars drawn from images.
///
/// The images are PNG files in skin/default/images/ of the installation, read by the constructor:
///
///     scroll_vertical_back.png     scroll_horizontal_back.png      background of the bar
///     scroll_vertical_slider.png   scroll_horizontal_slider.png    the slider
///     scroll_up.png                scroll_left.png                 button at the low end
///     scroll_down.png              scroll_right.png                button at the high end
///
/// Slider and buttons may have variants "..._hover.png" and "..._pressed.png". Each file may have a twin "...@2x.png" of
/// twice the size, which is used where a device-independent pixel has more than one of the device's. Backgrounds and sliders are
/// stretched in the middle only; each end is half as long as the image is wide. Buttons are scaled. The base
/// style draws the bar if one of the four images of its orientation is missing, if the bar is disabled, and in
/// mini mode. GUI thread only.
class SKYLUME_EXPORT WinClassic : public QProxyStyle
{
    Q_OBJECT

public:
    WinClassic();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;

private:
    QPixmap image(const char* part, const char* state, qreal density = 1) const;
    bool hasImages(Qt::Orientation orientation) const;
    void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter, const QWidget* widget) const;

    QHash<QString, QPixmap> m_images; ///< by file name without its suffix
};
