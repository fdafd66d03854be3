#pragma once

#include <QHash>
#include <QString>
#include <QVector>

/// A text message as stored by its modem.
struct Message
{
    QString key;        ///< unique while the application is running
    QString mark;       ///< by which SeenMessages remembers it
    quint32 modem = 0;  ///< Modem::id
    QString imsi;       ///< of the SIM in the modem
    QString identifier; ///< unique for the modem and its SIM while they are attached
    bool isSent = false;
    QString address; ///< sender, or recipient of a message that was sent: a number or a name
    QString time;    ///< ISO 8601 without a time zone; may be empty
    QString text;
    QString state;         ///< of a message that was sent: sending, sent, delivered or failed
    int order = 0;         ///< grows from older to newer messages of a modem
    bool isUnread = false; ///< received and not shown yet
};

Q_DECLARE_TYPEINFO(Message, Q_MOVABLE_TYPE);

using Messages = QVector<Message>;
using MessagesByKey = QHash<QString, Message>;

/// Whether a message is newer than another one.
bool isNewer(const Message& left, const Message& right);

/// Whether messages can be sent to an address, and calls made: a name such as that of the operator has no number.
bool isNumber(const QString& address);

/// What all spellings of an address have in common: "+49 30 123" and "+49(30)123" are the same.
QString addressKey(const QString& address);
