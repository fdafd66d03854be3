#include "Change/WinClassic.h"

#include "common/CommonUtils.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <QPaintEngine>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <qdrawutil.h>

#include <algorithm>
#include <array>

namespace {

/// File names, without suffix, of the images for one orientation.
struct BarImages
{
    const char* back;
    const char* slider;
    const char* low;
    const char* high;
};

constexpr BarImages VerticalBar{"scroll_vertical_back", "scroll_vertical_slider", "scroll_up", "scroll_down"};
constexpr BarImages HorizontalBar{"scroll_horizontal_back", "scroll_horizontal_slider", "scroll_left",
                                  "scroll_right"};

constexpr const BarImages& barImages(Qt::Orientation orientation)
{
    return orientation == Qt::Vertical ? VerticalBar : HorizontalBar;
}

QMargins evenMargins(int width)
{
    return {width, width, width, width};
}

/// Stretches only the middle of an image. Each end keeps its shape; it is half as long as the image is wide.
void drawStretched(QPainter& painter, const QRect& target, const QPixmap& image)
{
    const int density = qRound(image.devicePixelRatio());
    const int end = (std::min(image.width(), image.height()) / density - 1) / 2;
    const int drawnEnd = std::min(end, std::min(target.width(), target.height()) / 2);
    qDrawBorderPixmap(&painter, target, evenMargins(drawnEnd), image, image.rect(),
                      evenMargins(end * density));
}

/// Suffix of the image for a part's state: "", "_hover" or "_pressed".
const char* partState(const QStyleOptionSlider& option, QStyle::SubControl part)
{
    if (!(option.activeSubControls & part))
        return "";
    return option.state & QStyle::State_Sunken ? "_pressed" : "_hover";
}

/// The background of a scroll bar is that of the area it belongs to.
QBrush backgroundOf(const QWidget* bar, const QPalette& palette)
{
    for (const QWidget* widget = bar; widget; widget = widget->parentWidget()) {
        if (const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget))
            return area->viewport()->palette().brush(area->viewport()->backgroundRole());
    }
    return palette.brush(QPalette::Window);
}

} // namespace

WinClassic::WinClassic()
    : QProxyStyle(QStringLiteral("windows"))
{
    const QDir folder(CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/default/images"));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("scroll_*.png")}, QDir::Files);
    for (const QFileInfo& file : files) {
        const QPixmap image(file.filePath());
        if (!image.isNull())
            m_images.insert(file.completeBaseName(), image);
    }
}

void WinClassic::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const
{
    const auto* const bar =
        control == CC_ScrollBar ? qstyleoption_cast<const QStyleOptionSlider*>(option) : nullptr;
    if (bar && bar->state & State_Enabled && !CommonUtils::IsMiniMode() && hasImages(bar->orientation))
        drawScrollBar(*bar, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

/// The best file that there is. Qt reads the density of an image from the suffix of its name.
QPixmap WinClassic::image(const char* part, const char* state, qreal density) const
{
    const QString name = QLatin1String(part);
    for (const QString& stem : {name + QLatin1String(state), name}) {
        const QString dense = stem + QLatin1String("@2x");
        if (density > 1 && m_images.contains(dense))
            return m_images.value(dense);
        if (m_images.contains(stem))
            return m_images.value(stem);
    }
    return {};
}

bool WinClassic::hasImages(Qt::Orientation orientation) const
{
    const BarImages& images = barImages(orientation);
    return !image(images.back, "").isNull() && !image(images.slider, "").isNull() &&
           !image(images.low, "").isNull() && !image(images.high, "").isNull();
}

void WinClassic::drawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                               const QWidget* widget) const
{
    const auto area = [&](SubControl part) {
        return proxy()->subControlRect(CC_ScrollBar, &option, part, widget);
    };
    // Not that of device(), which is the widget even when it is drawn into a picture.
    const qreal density = painter.paintEngine()->paintDevice()->devicePixelRatioF();
    const auto draw = [&](SubControl part, const char* name) {
        painter.drawPixmap(area(part), image(name, partState(option, part), density));
    };
    BarImages images = barImages(option.orientation);
    if (option.orientation == Qt::Horizontal && option.direction == Qt::RightToLeft)
        std::swap(images.low, images.high);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // The images are translucent, and Qt draws nothing under a scroll bar.
    painter.fillRect(option.rect, backgroundOf(widget, option.palette));
    drawStretched(painter, option.rect, image(images.back, "", density));
    draw(SC_ScrollBarSubLine, images.low);
    draw(SC_ScrollBarAddLine, images.high);
    if (option.maximum > option.minimum)
        drawStretched(painter, area(SC_ScrollBarSlider),
                      image(images.slider, partState(option, SC_ScrollBarSlider), density));
    painter.restore();
}
