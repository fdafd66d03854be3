#pragma once

#include "skylume_global.h"

#include <QHash>
#include <QPixmap>
#include <QProxyStyle>

class QStyleOptionSlider;

/// The application's style below its style sheet: the "windows" style with scroll bars drawn from images.
///
/// The images are PNG files in skin/default/images/ of the installation, read when the style is made:
///
///     scroll_vertical_back.png     scroll_horizontal_back.png      the bar behind everything
///     scroll_vertical_slider.png   scroll_horizontal_slider.png    the slider
///     scroll_up.png                scroll_left.png                 the button of the low end
///     scroll_down.png              scroll_right.png                the button of the high end
///
/// Slider and buttons may have variants "..._hover.png" and "..._pressed.png". Backs and sliders keep their
/// ends, half as long as the image is broad, and are stretched between them. Buttons are scaled. A bar is
/// drawn from images when all four of its direction are there and the application is not in mini mode; else
/// the base style draws it, as it draws disabled bars. GUI thread only.
class SKYLUME_EXPORT WinClassic : public QProxyStyle
{
    Q_OBJECT

public:
    WinClassic();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;

private:
    QPixmap image(const char* part, const char* state) const;
    bool hasImages(Qt::Orientation orientation) const;
    void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter, const QWidget* widget) const;

    QHash<QString, QPixmap> m_images; ///< by file name without its suffix
};
