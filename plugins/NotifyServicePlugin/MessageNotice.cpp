#include "MessageNotice.h"

#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

constexpr int LongestBody = 300; // characters

QString bodyOf(const NewMessages& messages)
{
    if (messages.size() == 1)
        return messages.first().text.left(LongestBody);
    QStringList senders;
    for (const NewMessage& message : messages)
        senders.append(message.sender);
    senders.removeDuplicates();
    return senders.join(QLatin1Char('\n')).left(LongestBody);
}

} // namespace

MessageNotice::MessageNotice()
{
    connect(&m_notification, &DesktopNotification::activated, this, &MessageNotice::showMainWindow);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            m_notification.close();
    });
}

bool MessageNotice::isNeeded()
{
    const QWidget* const window = CommonUtils::GetMainWindow();
    return window && (!window->isVisible() || window->isMinimized());
}

void MessageNotice::show(const NewMessages& messages)
{
    if (!isNeeded())
        return;
    const QString title = messages.size() == 1 ? text("IDS_NOTIFY_FROM").arg(messages.first().sender)
                                               : text("IDS_NOTIFY_SEVERAL").arg(messages.size());
    m_notification.show(title, bodyOf(messages));
}

void MessageNotice::showMainWindow()
{
    m_notification.close();
    QWidget* const window = CommonUtils::GetMainWindow();
    if (!window)
        return;
    window->setWindowState((window->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    window->show();
    window->raise();
    window->activateWindow();
}
