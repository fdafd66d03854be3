#include "ExtendDialog/ExtendLineEdit.h"

#include <QGuiApplication>

/// A new edit takes over the right-to-left layout only when its direction changes.
ExtendLineEdit::ExtendLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    if (QGuiApplication::layoutDirection() != Qt::RightToLeft)
        return;
    setLayoutDirection(Qt::LeftToRight);
    setLayoutDirection(Qt::RightToLeft);
}

ExtendLineEdit::ExtendLineEdit(QString const& text, QWidget* parent)
    : QLineEdit(text, parent)
{
}
