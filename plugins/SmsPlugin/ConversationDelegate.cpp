#include "ConversationDelegate.h"

#include "ConversationModel.h"
#include "support/Look.h"

#include <QPainter>

namespace {

constexpr int DotSize = 8; ///< of the mark of unread messages

/// Draws one line of text, elided if necessary and aligned with the window.
void drawLine(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place, const QString& text)
{
    const QString shown = painter->fontMetrics().elidedText(text, Qt::ElideRight, place.width());
    const bool isMirrored = option.direction == Qt::RightToLeft;
    const Qt::Alignment side = isMirrored ? Qt::AlignRight : Qt::AlignLeft;
    painter->drawText(QStyle::visualRect(option.direction, option.rect, place),
                      int(Qt::AlignVCenter | Qt::AlignAbsolute | side), shown);
}

void drawFrame(QPainter* painter, const QStyleOptionViewItem& option, const QRectF& frame)
{
    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    painter->setPen(hasFocus ? QPen(Look::focusColor(option.palette), 1.0) : QPen(Qt::NoPen));
    painter->setBrush(Look::entryBackground(option, QPalette::Base));
    painter->drawRoundedRect(frame, Look::Radius, Look::Radius);
}

/// The mark of unread messages.
void drawDot(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place)
{
    QRectF dot(0, 0, DotSize, DotSize);
    dot.moveCenter(QRectF(QStyle::visualRect(option.direction, option.rect, place)).center());
    painter->setPen(Qt::NoPen);
    painter->setBrush(Look::toneColor(Look::Tone::Info, option.palette));
    painter->drawEllipse(dot);
}

} // namespace

QSize ConversationDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {0, option.fontMetrics.lineSpacing() * 2 + 3 * Look::Gap};
}

void ConversationDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    const QRect frame = option.rect.adjusted(1, 1, -1, -1);
    const QRect content = frame.adjusted(Look::Gap, Look::Gap, -Look::Gap, -Look::Gap);
    const int half = content.height() / 2;
    const bool isUnread = index.data(ConversationModel::UnreadRole).toInt() > 0;
    const QString time = index.data(ConversationModel::TimeRole).toString();
    const QColor quiet = Look::toneColor(Look::Tone::Quiet, option.palette);
    const QColor plain = option.palette.color(QPalette::Text);
    QFont strong = option.font;
    strong.setWeight(QFont::DemiBold);

    painter->save();
    painter->setLayoutDirection(Qt::LayoutDirectionAuto); // that of the text
    painter->setRenderHint(QPainter::Antialiasing);
    drawFrame(painter, option, frame);
    const int timeWidth = option.fontMetrics.horizontalAdvance(time) + 2;
    painter->setPen(quiet);
    drawLine(painter, option, content.adjusted(content.width() - timeWidth, 0, 0, -half), time);
    painter->setFont(isUnread ? strong : option.font);
    const bool isDraft = index.data(ConversationModel::DraftRole).toBool();
    painter->setPen(isDraft ? Look::toneColor(Look::Tone::Info, option.palette) : isUnread ? plain : quiet);
    drawLine(painter, option, content.adjusted(0, half, isUnread ? -2 * DotSize : 0, 0),
             index.data(ConversationModel::TextRole).toString());
    painter->setFont(strong);
    painter->setPen(plain);
    drawLine(painter, option, content.adjusted(0, 0, -timeWidth - Look::Gap, -half), index.data().toString());
    if (isUnread)
        drawDot(painter, option, content.adjusted(content.width() - DotSize, half, 0, 0));
    painter->restore();
}
