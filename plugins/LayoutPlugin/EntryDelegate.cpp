#include "EntryDelegate.h"

#include "support/Look.h"
#include "support/Numbers.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int EntryHeight = 40;
constexpr int PictureSize = 28;
constexpr int TitleMargins = PictureSize + 6 * Look::Gap; ///< what an entry needs beside its title
constexpr int LargestNumber = 99;                         ///< in a badge
constexpr qreal BadgeScale = 0.85;

/// The font of the current entry, the wider one.
QFont currentFont(QFont font)
{
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

int EntryDelegate::widthOf(const QString& title, const QFont& font)
{
    return QFontMetrics(currentFont(font)).horizontalAdvance(title) + TitleMargins;
}

QSize EntryDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {NarrowWidth, EntryHeight}; // minimum
}

void EntryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool focused = option.state.testFlag(QStyle::State_HasFocus) && selected;
    const QRectF frame = QRectF(option.rect).adjusted(Look::Gap + 0.5, 2.5, -Look::Gap - 0.5, -1.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(focused ? QPen(Look::focusColor(option.palette), 1.0) : QPen(Qt::NoPen));
    painter->setBrush(Look::entryBackground(option, QPalette::Window));
    painter->drawRoundedRect(frame, Look::Radius, Look::Radius);

    QRect picture(0, 0, PictureSize, PictureSize);
    picture.moveCenter(QPoint(int(frame.left()) + Look::Gap + PictureSize / 2, option.rect.center().y() + 1));
    const QPoint corner = picture.topRight();
    picture = QStyle::visualRect(option.direction, option.rect, picture);
    index.data(Qt::DecorationRole).value<QIcon>().paint(painter, picture);

    if (option.rect.width() > NarrowWidth)
        paintTitle(painter, option, frame, index.data(Qt::DisplayRole).toString());
    else if (const int number = index.data(BadgeRole).toInt())
        paintBadge(painter, option, corner, number);
    painter->restore();
}

void EntryDelegate::paintBadge(QPainter* painter, const QStyleOptionViewItem& option, const QPoint& centre,
                               int number)
{
    const QString words =
        number > LargestNumber ? numberText(LargestNumber) + QLatin1Char('+') : numberText(number);
    QFont font = currentFont(option.font);
    font.setPointSizeF(font.pointSizeF() * BadgeScale);
    const QFontMetrics metrics(font);
    QRect badge(0, 0, std::max(metrics.height(), metrics.horizontalAdvance(words) + Look::Gap),
                metrics.height());
    badge.moveCenter(centre);
    badge.moveRight(std::min(badge.right(), option.rect.right() - 2));
    badge = QStyle::visualRect(option.direction, option.rect, badge);
    painter->setFont(font);
    painter->setPen(option.palette.color(QPalette::Base));
    painter->setBrush(Look::toneColor(Look::Tone::Info, option.palette));
    painter->drawRoundedRect(badge, badge.height() / 2.0, badge.height() / 2.0);
    painter->drawText(badge, Qt::AlignCenter, words);
}

void EntryDelegate::paintTitle(QPainter* painter, const QStyleOptionViewItem& option, const QRectF& frame,
                               const QString& title)
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QFont font = selected ? currentFont(option.font) : option.font;
    painter->setFont(font);
    painter->setPen(option.palette.color(QPalette::WindowText));
    const QRect place =
        QStyle::visualRect(option.direction, option.rect,
                           frame.adjusted(PictureSize + 2.5 * Look::Gap, 0, -Look::Gap, 0).toRect());
    const QString elided = QFontMetrics(font).elidedText(title, Qt::ElideRight, place.width());
    painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft, elided);
}
