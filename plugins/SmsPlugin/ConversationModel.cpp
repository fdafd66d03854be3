#include "ConversationModel.h"

#include "Shown.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <algorithm>

namespace {

constexpr int MostShown = 200; // characters of a line

/// The beginning of a text.
QString line(const QString& text)
{
    return text.left(MostShown).simplified();
}

/// The newest message; an empty one if there is only a draft.
Message newest(const Conversation& conversation)
{
    return conversation.messages.value(0);
}

} // namespace

int ConversationModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_conversations.size();
}

int ConversationModel::rowOf(const QString& address) const
{
    return m_rows.value(addressKey(address), -1);
}

QVariant ConversationModel::data(const QModelIndex& index, int role) const
{
    const Conversation& conversation = m_conversations[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return shownAddress(conversation.address);
    case Qt::AccessibleTextRole:
        return spoken(conversation);
    case TimeRole:
        return shownDay(newest(conversation));
    case TextRole:
        return summary(conversation);
    case UnreadRole:
        return conversation.unread;
    case DraftRole:
        return m_drafts.contains(conversation.key);
    default:
        return {};
    }
}

/// The draft, or the newest message; the user's own words are marked.
QString ConversationModel::summary(const Conversation& conversation) const
{
    const auto draft = m_drafts.constFind(conversation.key);
    if (draft != m_drafts.constEnd())
        return text("IDS_SMS_DRAFT").arg(line(draft->text));
    const Message message = newest(conversation);
    return message.isSent ? text("IDS_SMS_YOU").arg(line(message.text)) : line(message.text);
}

/// What a screen reader says.
QString ConversationModel::spoken(const Conversation& conversation) const
{
    QStringList parts{shownAddress(conversation.address), shownTime(newest(conversation)),
                      summary(conversation)};
    if (conversation.unread > 0)
        parts.insert(1, text("IDS_SMS_UNREAD").arg(numberText(conversation.unread)));
    parts.removeAll(QString());
    return parts.join(QLatin1Char('\n'));
}

void ConversationModel::setDrafts(const DraftsByKey& drafts)
{
    m_drafts = drafts;
    for (const Draft& draft : drafts) {
        if (rowOf(draft.recipient) < 0)
            append(draft.recipient, nullptr);
    }
    for (int row = m_conversations.size() - 1; row >= 0; --row) {
        const Conversation& conversation = m_conversations[row];
        if (conversation.messages.isEmpty() && !drafts.contains(conversation.key))
            removeConversation(row);
    }
    numberRows();
    retranslate();
}

void ConversationModel::put(const Messages& messages)
{
    for (const Message& message : messages)
        put(message);
}

void ConversationModel::put(const Message& message)
{
    dropMoved(message);
    const int row = rowOf(message.address);
    if (row >= 0) {
        putInto(m_conversations[row], message);
        reportChange(row);
    } else {
        append(message.address, &message);
    }
}

/// Adds a conversation.
/// @param message its first message; null if there is only a draft
void ConversationModel::append(const QString& address, const Message* message)
{
    const int end = m_conversations.size();
    beginInsertRows({}, end, end);
    m_conversations.append({addressKey(address), address, {}, 0});
    if (message)
        putInto(m_conversations[end], *message);
    m_rows.insert(m_conversations[end].key, end);
    endInsertRows();
}

/// Removes a known message from the conversation with another address: its modem has stored another message in its
/// place.
void ConversationModel::dropMoved(const Message& message)
{
    const auto known = m_messages.constFind(message.key);
    if (known == m_messages.cend() || addressKey(known->address) == addressKey(message.address))
        return;
    const QList<QString> keys = m_messages.keys();
    QSet<QString> others(keys.begin(), keys.end());
    others.remove(message.key);
    keepOnly(others);
}

void ConversationModel::putInto(Conversation& conversation, const Message& message)
{
    Messages& all = conversation.messages;
    const auto isSame = [&](const Message& entry) {
        return entry.key == message.key;
    };
    if (m_messages.contains(message.key))
        all.erase(std::remove_if(all.begin(), all.end(), isSame), all.end());
    all.insert(std::upper_bound(all.begin(), all.end(), message, isNewer), message);
    m_messages.insert(message.key, message);
    conversation.address = all.first().address;
    countUnread(conversation);
}

void ConversationModel::countUnread(Conversation& conversation)
{
    m_unread -= conversation.unread;
    conversation.unread = int(std::count_if(conversation.messages.begin(), conversation.messages.end(),
                                            [](const Message& message) { return message.isUnread; }));
    m_unread += conversation.unread;
}

void ConversationModel::keepOnly(const QSet<QString>& keys)
{
    if (std::all_of(m_messages.keyBegin(), m_messages.keyEnd(),
                    [&](const QString& key) { return keys.contains(key); }))
        return;
    for (int row = m_conversations.size() - 1; row >= 0; --row)
        removeGone(row, keys);
    numberRows();
}

void ConversationModel::removeGone(int row, const QSet<QString>& keys)
{
    const auto isKept = [&](const Message& message) {
        return keys.contains(message.key);
    };
    const Messages before = m_conversations[row].messages;
    if (std::all_of(before.begin(), before.end(), isKept))
        return;
    Messages left;
    for (const Message& message : before) {
        if (isKept(message))
            left.append(message);
        else
            m_messages.remove(message.key);
    }
    m_conversations[row].messages = left;
    countUnread(m_conversations[row]);
    if (left.isEmpty() && !m_drafts.contains(m_conversations[row].key))
        removeConversation(row);
    else
        reportChange(row);
}

void ConversationModel::removeConversation(int row)
{
    beginRemoveRows({}, row, row);
    m_conversations.remove(row);
    endRemoveRows();
}

void ConversationModel::numberRows()
{
    m_rows.clear();
    for (int row = 0; row < m_conversations.size(); ++row)
        m_rows.insert(m_conversations[row].key, row);
}

void ConversationModel::markRead(int row)
{
    Conversation& conversation = m_conversations[row];
    if (conversation.unread == 0)
        return;
    for (Message& message : conversation.messages) {
        message.isUnread = false;
        m_messages[message.key].isUnread = false;
    }
    countUnread(conversation);
    reportChange(row);
}

void ConversationModel::retranslate()
{
    if (!m_conversations.isEmpty())
        Q_EMIT dataChanged(index(0), index(m_conversations.size() - 1));
}

void ConversationModel::reportChange(int row)
{
    Q_EMIT dataChanged(index(row), index(row));
}
