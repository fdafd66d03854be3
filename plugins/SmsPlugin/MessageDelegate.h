#pragma once

#include <QStyledItemDelegate>

/// Draws a message of the list: sender and time, and below them how it begins.
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
