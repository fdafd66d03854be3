#include "MessageDelegate.h"

#include "support/Look.h"

#include <QPainter>

namespace {

constexpr int MostVisible = 200; // characters of a line

/// Draws one line of text, elided if necessary and aligned with the window.
void drawLine(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place, const QString& text)
{
    const QString shown = painter->fontMetrics().elidedText(text, Qt::ElideRight, place.width());
    const bool isMirrored = option.direction == Qt::RightToLeft;
    const Qt::Alignment side = isMirrored ? Qt::AlignRight : Qt::AlignLeft;
    painter->drawText(QStyle::visualRect(option.direction, option.rect, place),
                      int(Qt::AlignVCenter | Qt::AlignAbsolute | side), shown);
}

} // namespace

QSize MessageDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {0, option.fontMetrics.lineSpacing() * 2 + 3 * Look::Gap};
}

void MessageDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const QRect frame = option.rect.adjusted(1, 1, -1, -1);
    const QRect content = frame.adjusted(Look::Gap, Look::Gap, -Look::Gap, -Look::Gap);
    const int half = content.height() / 2;
    const QString time = index.data(TimeRole).toString();
    const int timeWidth = option.fontMetrics.horizontalAdvance(time) + 2;
    const QColor quiet = Look::toneColor(Look::Tone::Quiet, option.palette);
    QFont strong = option.font;
    strong.setWeight(QFont::DemiBold);

    painter->save();
    painter->setLayoutDirection(Qt::LayoutDirectionAuto); // that of the text
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(option.state.testFlag(QStyle::State_HasFocus) ? QPen(option.palette.highlight(), 1.0)
                                                                  : QPen(Qt::NoPen));
    painter->setBrush(Look::entryBackground(option, QPalette::Base));
    painter->drawRoundedRect(QRectF(frame), Look::Radius, Look::Radius);
    painter->setFont(strong);
    painter->setPen(option.palette.color(QPalette::Text));
    drawLine(painter, option, content.adjusted(0, 0, -timeWidth - Look::Gap, -half),
             index.data(SenderRole).toString().left(MostVisible));
    painter->setFont(option.font);
    painter->setPen(quiet);
    drawLine(painter, option, content.adjusted(content.width() - timeWidth, 0, 0, -half), time);
    drawLine(painter, option, content.adjusted(0, half, 0, 0),
             index.data(TextRole).toString().left(MostVisible).simplified());
    painter->restore();
}
