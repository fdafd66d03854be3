#pragma once

#include <QStyledItemDelegate>

/// Draws the text of a cell in a rounded badge with a dot, in the colour of PluginStatusModel::ToneRole.
class BadgeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
