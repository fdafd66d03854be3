#pragma once

#include "devices/Modem.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class DBusMirror;

/// The text messages of a modem.
class ModemMessages
{
public:
    /// Fetches messages that are not known yet, and forgets those that were deleted. Does nothing unless the modem has
    /// changed.
    void follow(DBusMirror& mirror, const QString& modem);

    /// Removes all messages from the mirror.
    void forget(DBusMirror& mirror) const;

    /// Notes that a message has changed, or the modem, which has the list.
    void noteChange() { m_isOutdated = true; }
    void noteModemChange() { m_isListOutdated = true; }
    bool contains(const QString& message) const { return m_paths.contains(message); }

    /// Whether messages have not been read yet.
    bool isReading(const DBusMirror& mirror) const;

    /// The values of all messages; none before the modem has read them. While messages are still being read, those of
    /// the previous call.
    const ModemValues& values(const DBusMirror& mirror);

    /// Remembers when a message was sent, which modems do not, and that it could not be sent.
    void noteSending(const QString& message);
    void noteFailure(const QString& message);

    /// The message with that identifier; empty if there is none.
    QString pathOf(const QString& identifier) const;
    static QString identifierOf(const QString& message);

private:
    QString stateOf(const QString& path, uint state, bool isSent, bool isDelivered) const;

    QSet<QString> m_paths;
    QHash<QString, QString> m_sendingTimes;
    QSet<QString> m_failed;
    ModemValues m_values;
    bool m_isListKnown = false;
    bool m_isListOutdated = true;
    bool m_isOutdated = true;
};
