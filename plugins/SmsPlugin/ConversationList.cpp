#include "ConversationList.h"

#include "ConversationDelegate.h"
#include "support/Text.h"

#include <QKeyEvent>

namespace {

constexpr int LeastWidth = 200;

} // namespace

ConversationList::ConversationList(QAbstractItemModel* model, QWidget* parent)
    : QListView(parent)
{
    setObjectName(QLatin1String("messageList"));
    setModel(model);
    setItemDelegate(new ConversationDelegate(this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setMinimumWidth(LeastWidth);
    keepTranslated(this, [this] { setAccessibleName(text("IDS_SMS_TITLE")); });
}

void ConversationList::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        Q_EMIT copyWanted();
    else
        QListView::keyPressEvent(event);
}
