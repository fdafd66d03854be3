#pragma once

#include <QStyledItemDelegate>

/// Draws a cell's text on a rounded badge in the colour of PluginStatusModel::ToneRole, with a dot before it,
/// so that the state does not depend on telling colours apart.
class BadgeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
