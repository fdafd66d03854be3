#pragma once

#include "Message.h"

#include <QSet>

/// Remembers in the user's settings which messages of a SIM have been shown. The settings hold digests, which show neither
/// sender nor SIM, though whoever tries all possible numbers finds them. The digests stay the same when a modem renumbers
/// its messages.
class SeenMessages
{
public:
    /// @param imsi of the SIM
    explicit SeenMessages(const QString& imsi);

    /// The digest of a message, for Message::mark.
    static QString markOf(const Message& message);

    bool contains(const Message& message) const { return m_seen.contains(message.mark); }
    void add(const Message& message);

    /// Forgets messages that no longer exist, once there are many of them.
    /// @param existing all messages of the SIM
    void keepOnly(const Messages& existing);

    /// Stores changes in the settings; returns without waiting for the disk.
    void save();

private:
    QString m_key; ///< of the setting
    QSet<QString> m_seen;
    bool m_isChanged = false;
};
