#include "MessageNotice.h"

#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/ShowInFront.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

constexpr int LongestBody = 300; // characters
constexpr QLatin1String MessagesClsid("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46");

QString bodyOf(const NewMessages& messages)
{
    if (messages.size() == 1)
        return messages.first().text.left(LongestBody);
    QStringList senders;
    for (const NewMessage& message : messages)
        senders.append(message.sender);
    senders.removeAll(QString());
    senders.removeDuplicates();
    return senders.join(QLatin1Char('\n')).left(LongestBody);
}

/// @return false if the main frame has no such page
bool hasShownPage(const QString& clsid)
{
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    bool isShown = false;
    if (mainFrame)
        guardedCall("ShowPage", QStringLiteral("main frame"), [&] { isShown = mainFrame->ShowPage(clsid); });
    return isShown;
}

} // namespace

void showPage(const QString& clsid)
{
    QWidget* const window = CommonUtils::GetMainWindow();
    if (window && !hasShownPage(clsid))
        showInFront(window);
}

MessageNotice::MessageNotice()
{
    connect(&m_notification, &DesktopNotification::activated, this, [this] {
        m_notification.close();
        showPage(MessagesClsid);
    });
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
    // The sender of a message that arrived while the window was visible was not read.
    const bool isNamed = messages.size() == 1 && !messages.first().sender.isEmpty();
    const QString title = isNamed ? text("IDS_NOTIFY_FROM").arg(messages.first().sender)
                                  : text("IDS_NOTIFY_SEVERAL").arg(numberText(messages.size()));
    m_notification.show(title, bodyOf(messages), "im.received");
}
