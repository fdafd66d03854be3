#include "support/Label.h"

#include <QEvent>

Label::Label(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    align();
}

void Label::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        align();
}

void Label::align()
{
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    if (!(alignment() & Qt::AlignHCenter))
        setAlignment((isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                     (alignment() & Qt::AlignVertical_Mask));
}
