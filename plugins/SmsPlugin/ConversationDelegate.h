#pragma once

#include <QStyledItemDelegate>

/// Draws a conversation of ConversationModel: its address and time, and its newest message below them, bold while
/// something is unread.
class ConversationDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
