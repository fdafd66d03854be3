#pragma once

#include "backends/modemmanager/MessageRequests.h"
#include "backends/modemmanager/ModemCalls.h"
#include "backends/modemmanager/UnlockRequests.h"

class NetworkClient;

/// Carries out requests that ModemManager serves, and passes on those to connect and disconnect. Lives on the
/// mirror's thread.
class ModemRequests : public QObject
{
    Q_OBJECT

public:
    ModemRequests(DBusMirror& mirror, const MessageRequests::MessagesOf& messagesOf);

    /// Begins a request for the modem at that path. ended() reports its end, or that of `network` if it is to connect or
    /// disconnect; perhaps before this returns.
    void begin(const Request& request, const QString& modem, NetworkClient& network);

    /// See UnlockRequests.
    bool isUnlockingRemovedModem() const { return m_unlocking.isUnlockingRemovedModem(); }

Q_SIGNALS:
    /// The mirror already has what the request changed, except for messages that are still being read.
    void ended(const QString& modem, const RequestEnd& end);

    /// The modem has registered in a network that the user has chosen or, again, in one that it has chosen.
    void networkChosen(const QString& modem, bool isManual);

private:
    ModemCalls m_calls;
    UnlockRequests m_unlocking;
    MessageRequests m_messages;
};
