#include "platform/WindowProcedure_p.h"

#include <QHash>
#include <QWidget>

namespace {

/// The handlers of existing windows. GUI thread only, as there are no windows elsewhere.
QHash<WId, Platform::MessageHandler>& handlers()
{
    static QHash<WId, Platform::MessageHandler> table;
    return table;
}

} // namespace

Platform::WindowProcedure Platform::windowProcedure(WId)
{
    return nullptr;
}

bool Platform::setMessageHandler(WId window, MessageHandler handler)
{
    QWidget* const widget = QWidget::find(window);
    if (!widget)
        return false;
    if (!handlers().contains(window))
        QObject::connect(widget, &QObject::destroyed, [window] { handlers().remove(window); });
    handlers().insert(window, handler);
    return true;
}

qintptr Platform::callWindowProcedure(WindowProcedure, WId, quint32, quintptr, qintptr)
{
    return 0;
}

qintptr Platform::sendMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
    const MessageHandler handler = handlers().value(window);
    return handler ? handler(window, message, wParam, lParam) : 0;
}
