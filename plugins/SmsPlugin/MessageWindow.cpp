#include "MessageWindow.h"

#include "MessageView.h"
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
    keepTranslated(this, [=] {
        setWindowTitle(text("IDS_SMS_FROM").arg(message.sender));
        view->setMessage(message);
    });
}

void MessageWindow::open(const Message& message, QWidget* parent, const QObject* page)
{
    auto* window = parent->findChild<MessageWindow*>(message.key, Qt::FindDirectChildrenOnly);
    if (!window) {
        window = new MessageWindow(message, parent);
        connect(page, &QObject::destroyed, window, [window] { delete window; });
    } else if (window->GetTileBar() && window->GetTileBar()->IsMinimized()) {
        window->GetTileBar()->showRestore();
    }
    window->show();
    window->activateWindow();
    window->raise();
}
