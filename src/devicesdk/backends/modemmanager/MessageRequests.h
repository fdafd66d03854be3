#pragma once

#include <QString>

#include <functional>

class ModemCalls;
class ModemMessages;
struct Request;

/// Sends and deletes text messages. The operations return at once; ModemCalls::ended() reports the end. Lives on the
/// thread of ModemCalls.
class MessageRequests
{
public:
    /// The messages of the modem at a path; null if there is no such modem any more.
    using MessagesOf = std::function<ModemMessages*(const QString& modem)>;

    /// The calls must outlive this object.
    MessageRequests(ModemCalls& calls, MessagesOf messagesOf)
        : m_calls(calls)
        , m_messagesOf(std::move(messagesOf))
    {
    }

    /// Sends a message. The text of the end is its identifier.
    void send(const Request& request, const QString& modem);

    /// Deletes the message whose identifier is the target of the request.
    void remove(const Request& request, const QString& modem);

private:
    void sendCreated(quint32 number, const QString& modem, const QString& message);

    ModemCalls& m_calls;
    MessagesOf m_messagesOf;
};
