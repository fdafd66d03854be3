#include "MessageNotice.h"

#include "support/Numbers.h"
#include "support/Text.h"

namespace {

constexpr int LongestBody = 300; // characters

QString sendersOf(const NewMessages& messages)
{
    QStringList senders;
    for (const NewMessage& message : messages)
        senders.append(message.sender);
    senders.removeAll(QString());
    senders.removeDuplicates();
    return senders.join(QLatin1Char('\n'));
}

} // namespace

MessageNotice::MessageNotice(const NewMessages& messages, bool withText)
{
    const bool isSingle = messages.size() == 1;
    // The sender of a message that arrived while the window was visible was not read.
    const bool isNamed = isSingle && !messages.first().sender.isEmpty();
    title = isNamed ? text("IDS_NOTIFY_FROM").arg(messages.first().sender)
                    : text("IDS_NOTIFY_SEVERAL").arg(numberText(messages.size()));
    if (!isSingle)
        body = sendersOf(messages).left(LongestBody);
    else if (withText)
        body = messages.first().text.left(LongestBody);
}
