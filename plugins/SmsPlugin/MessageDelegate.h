#pragma once

#include <QStyledItemDelegate>

/// Draws a message in the list: sender and time, and the beginning of its text below them.
class MessageDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Role { SenderRole = Qt::UserRole, TimeRole, TextRole };

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
