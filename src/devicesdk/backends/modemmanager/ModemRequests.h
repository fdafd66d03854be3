#pragma once

#include "devices/Request.h"

#include <QObject>
#include <QSet>

#include <functional>

class DBusMirror;
class ModemMessages;
class NetworkClient;
class QDBusPendingCall;
class QDBusError;

/// Carries out requests that ModemManager serves, and passes on those to connect and disconnect. Lives on the
/// mirror's thread.
class ModemRequests : public QObject
{
    Q_OBJECT

public:
    /// `messagesOf` returns the messages of the modem at a path; null if there is no such modem any more.
    ModemRequests(DBusMirror& mirror, std::function<ModemMessages*(const QString&)> messagesOf);

    /// Begins a request for the modem at that path. Its end may be reported before this returns.
    void begin(const Request& request, const QString& modem, NetworkClient& network);

    /// Whether a SIM is being unlocked whose modem has been removed. ModemManager does that when it discovers
    /// that the SIM asks for its PUK now; its answer is still to come, and then the modem returns.
    bool isUnlockingRemovedModem() const;

Q_SIGNALS:
    /// The mirror already has what the request changed, except for messages that are still being read.
    void ended(const QString& modem, const RequestEnd& end);

private:
    void enterPin(const Request& request, const QString& modem);
    void enterPuk(const Request& request, const QString& modem);
    void sendMessage(const Request& request, const QString& modem);
    void send(quint32 number, const QString& modem, const QString& message);
    void deleteMessage(const Request& request, const QString& modem);
    void sendUssd(const Request& request, const QString& modem);
    void cancelUssd(const Request& request, const QString& modem);

    using Then = std::function<void(const QDBusPendingCall& call, long result)>;
    void await(const QDBusPendingCall& call, const Then& then);
    void unlock(quint32 number, const QString& modem, const QDBusPendingCall& call, const QStringList& codes,
                long refusal);
    void finishUnlocking(quint32 number, const QString& modem, long result);
    void finishAfterRead(const RequestEnd& end, const QString& modem, const char* interface);

    DBusMirror& m_mirror;
    std::function<ModemMessages*(const QString&)> m_messagesOf;
    QSet<QString> m_unlocking; // paths of modems
};
