#include "ExtendDialog/DkMessageBox.h"

#include <QKeyEvent>
#include <QResizeEvent>

void DkMessageBox::resizeEvent(QResizeEvent* event)
{
    Q_EMIT changeSize(event->size());
    QMessageBox::resizeEvent(event);
}

void DkMessageBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && !m_bEscapeAllowed)
        event->ignore();
    else
        QMessageBox::keyPressEvent(event);
}
