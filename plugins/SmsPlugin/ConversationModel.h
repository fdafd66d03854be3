#pragma once

#include "Drafts.h"
#include "Message.h"

#include <QAbstractListModel>
#include <QSet>

/// The messages to and from one address, or a draft for it.
struct Conversation
{
    QString key;       ///< addressKey() of the address
    QString address;   ///< as in the newest message
    Messages messages; ///< newest first; empty if there is only a draft
    int unread = 0;    ///< how many messages are unread
};

/// The conversations, one row each, in no particular order. GUI thread only.
class ConversationModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { TimeRole = Qt::UserRole, TextRole, UnreadRole, DraftRole };

    using QAbstractListModel::QAbstractListModel;

    /// Adds messages, or replaces those with the same keys.
    void put(const Messages& messages);

    /// Removes all messages but these.
    void keepOnly(const QSet<QString>& keys);

    /// Marks the messages of a conversation as read. Does not remember it, see MessageFeed::markRead().
    void markRead(int row);

    /// Shows drafts instead of the newest messages of their conversations. Drafts without one get a row of their own.
    void setDrafts(const DraftsByKey& drafts);

    /// The text of the draft in a conversation; empty if there is none.
    QString draft(const Conversation& conversation) const { return m_drafts.value(conversation.key).text; }

    const Conversation& conversation(int row) const { return m_conversations[row]; }

    /// The row of the conversation with an address; -1 if there is none.
    int rowOf(const QString& address) const;

    const MessagesByKey& messages() const { return m_messages; }
    int unread() const { return m_unread; }

    int rowCount(const QModelIndex& parent = {}) const override;

    /// Display role: the address. Times and texts are in the current language. DraftRole: whether TextRole is a draft.
    QVariant data(const QModelIndex& index, int role) const override;

    /// Reports all texts as changed. Call it after a change of language.
    void retranslate();

private:
    void put(const Message& message);
    void append(const QString& address, const Message* message);
    void dropMoved(const Message& message);
    void putInto(Conversation& conversation, const Message& message);
    void removeGone(int row, const QSet<QString>& keys);
    void removeConversation(int row);
    void numberRows();
    void countUnread(Conversation& conversation);
    void reportChange(int row);
    QString summary(const Conversation& conversation) const;
    QString spoken(const Conversation& conversation) const;

    QVector<Conversation> m_conversations;
    QHash<QString, int> m_rows; ///< by addressKey()
    MessagesByKey m_messages;
    DraftsByKey m_drafts;
    int m_unread = 0;
};
