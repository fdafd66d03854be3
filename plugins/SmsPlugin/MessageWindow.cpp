#include "MessageWindow.h"

#include "MessageView.h"
#include "Shown.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Text.h"

namespace {

constexpr QSize ContentSize{420, 280};

} // namespace

MessageWindow::MessageWindow(const Message& message, QWidget* parent)
    : ExtendDialog(parent, Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint, enWidgetNormal)
{
    setObjectName(message.key);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowIcon(Look::tileIcon(Look::Sign::Message));
    auto* view = new MessageView;
    view->setMinimumSize(ContentSize);
    fillDialog(this, view);
    makeResizable(this);
    keepTranslated(this, [=] {
        setWindowTitle(
            text(message.isSent ? "IDS_SMS_TO" : "IDS_SMS_FROM").arg(shownAddress(message.address)));
        view->setMessage(message);
    });
}

void MessageWindow::open(const Message& message, QWidget* parent)
{
    auto* window = parent->findChild<MessageWindow*>(message.key, Qt::FindDirectChildrenOnly);
    if (!window)
        window = new MessageWindow(message, parent);
    bringToFront(window);
}
