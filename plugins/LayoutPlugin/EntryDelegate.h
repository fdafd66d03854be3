#pragma once

#include <QStyledItemDelegate>

/// Draws an entry of the side bar: icon and title, or icon and badge, on a rounded background.
class EntryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The width of an entry that shows only its icon, in pixels.
    static constexpr int NarrowWidth = 60;

    static constexpr int BadgeRole =
        Qt::UserRole + 1; ///< a number on the icon of an entry without title; 0 for none

    using QStyledItemDelegate::QStyledItemDelegate;

    /// The width that an entry needs to show its whole title, in pixels.
    static int widthOf(const QString& title, const QFont& font);

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    static void paintBadge(QPainter* painter, const QStyleOptionViewItem& option, const QPoint& centre,
                           int number);
    static void paintTitle(QPainter* painter, const QStyleOptionViewItem& option, const QRectF& frame,
                           const QString& title);
};
