#pragma once

#include <QSet>
#include <QString>

class ModemCalls;
class QDBusPendingCall;
struct Request;

/// Unlocks SIMs.
class UnlockRequests
{
public:
    /// The calls must outlive this object.
    explicit UnlockRequests(ModemCalls& calls)
        : m_calls(calls)
    {
    }

    void enterPin(const Request& request, const QString& modem);
    void enterPuk(const Request& request, const QString& modem);

    /// Whether a SIM is being unlocked whose modem has been removed. ModemManager does that when it discovers
    /// that the SIM asks for its PUK now; its answer is still to come, and then the modem returns.
    bool isUnlockingRemovedModem() const;

    /// ModemManager has gone, and the answers that are still awaited will not come.
    void loseService() { m_unlocking.clear(); }

private:
    void unlock(quint32 number, const QString& modem, const QDBusPendingCall& call, const QStringList& codes,
                long refusal);
    void finish(quint32 number, const QString& modem, long result);

    ModemCalls& m_calls;
    QSet<QString> m_unlocking; // paths of modems
};
