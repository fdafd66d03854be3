#include "BadgeDelegate.h"

#include "PluginStatusModel.h"
#include "support/Look.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int DotSize = 8;
constexpr int BadgePadding = Look::Gap;
constexpr int BadgeHeightOverText = 8;

int badgeWidth(const QFontMetrics& metrics, const QString& content)
{
    return metrics.horizontalAdvance(content) + DotSize + Look::Gap + 2 * BadgePadding;
}

void drawBackground(QPainter* painter, QStyleOptionViewItem option)
{
    option.text.clear();
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
}

} // namespace

void BadgeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString content = cell.text;
    const auto tone = Look::Tone(index.data(PluginStatusModel::ToneRole).toInt());
    const QColor color = Look::toneColor(tone, cell.palette);
    drawBackground(painter, cell);

    QRectF badge(0, 0, badgeWidth(cell.fontMetrics, content),
                 cell.fontMetrics.height() + BadgeHeightOverText);
    badge.moveCenter(QRectF(cell.rect).center());
    badge.moveLeft(cell.rect.left() + 1);
    QRectF dot(badge.left() + BadgePadding, badge.center().y() - DotSize / 2.0, DotSize, DotSize);
    QRectF words = badge.adjusted(BadgePadding + DotSize + Look::Gap, 0, 0, 0);
    if (cell.direction == Qt::RightToLeft) {
        for (QRectF* part : {&badge, &dot, &words})
            part->moveLeft(cell.rect.left() + cell.rect.right() + 1 - part->right());
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Look::mixed(cell.palette.color(QPalette::Base), color, 0.14));
    painter->drawRoundedRect(badge, badge.height() / 2, badge.height() / 2);
    painter->setBrush(color);
    painter->drawEllipse(dot);
    painter->setPen(color);
    painter->setFont(cell.font);
    painter->drawText(words, Qt::AlignVCenter, content);
    painter->restore();
}

QSize BadgeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int width = badgeWidth(option.fontMetrics, index.data().toString());
    return {width + 2 * Look::Gap, option.fontMetrics.height() + BadgeHeightOverText + Look::Gap};
}
