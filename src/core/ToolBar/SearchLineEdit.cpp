#include "ToolBar/SearchLineEdit.h"

#include "common/Log.h"

#include <QKeyEvent>

namespace {

int cursorKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return Qt::Key_Left;
    case Qt::Key_Down:
        return Qt::Key_Right;
    default:
        return key;
    }
}

} // namespace

void SearchLineEdit::keyPressEvent(QKeyEvent* event)
{
    const int key = cursorKey(event->key());
    if (key != event->key()) {
        QKeyEvent moved(event->type(), key, event->modifiers());
        ExtendLineEdit::keyPressEvent(&moved);
        return;
    }
    const bool hasControl = event->modifiers() & Qt::ControlModifier;
    if (hasControl && key == Qt::Key_N) {
        LOG_DEBUG("%s: %s: %s Cntrl N pressed in the Search Edit Box", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        Q_EMIT controlN();
    } else if (hasControl && key == Qt::Key_F) {
        LOG_DEBUG("%s: %s: %s Cntrl F pressed in the Search Edit Box", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        Q_EMIT controlF();
    }
    ExtendLineEdit::keyPressEvent(event);
}
