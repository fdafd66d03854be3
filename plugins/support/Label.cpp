#include "support/Label.h"

#include <QEvent>
#include <QPainter>
#include <QTextLayout>

namespace {

/// Breaks a text into lines.
/// @return their height
qreal breakLines(QTextLayout* layout, int width)
{
    qreal height = 0;
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout->endLayout();
    return height;
}

} // namespace

Label::Label(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    align();
}

void Label::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        align();
}

/// Qt would shift each wrapped line of a text from right to left by the space at its end.
void Label::paintEvent(QPaintEvent* event)
{
    if (!text().isRightToLeft() || !wordWrap() || textInteractionFlags() & Qt::TextSelectableByMouse) {
        QLabel::paintEvent(event);
        return;
    }
    QTextOption option(alignment() & Qt::AlignHorizontal_Mask);
    option.setTextDirection(Qt::RightToLeft);
    QTextLayout lines(text().replace(QLatin1Char('\n'), QChar::LineSeparator), font(), this);
    lines.setTextOption(option);
    const QRect place = contentsRect();
    const qreal height = breakLines(&lines, place.width());
    const bool isCentred = alignment() & Qt::AlignVCenter;
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    lines.draw(&painter, {qreal(place.x()), place.y() + (isCentred ? (place.height() - height) / 2 : 0)});
}

void Label::align()
{
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    if (!(alignment() & Qt::AlignHCenter))
        setAlignment((isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                     (alignment() & Qt::AlignVertical_Mask));
}
