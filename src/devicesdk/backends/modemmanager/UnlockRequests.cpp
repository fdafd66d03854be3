#include "backends/modemmanager/UnlockRequests.h"

#include "backends/modemmanager/ManagedModem.h"
#include "backends/modemmanager/ModemCalls.h"
#include "qrvl.h"
#include "simproxy.h"

#include <ModemManager.h>
#include <algorithm>

namespace {

uint lockOf(const DBusMirror& mirror, const QString& modem)
{
    return ManagedModem::isLocked(mirror, modem)
               ? ManagedModem::valueOf(mirror, modem, "UnlockRequired").toUInt()
               : uint(MM_MODEM_LOCK_NONE);
}

} // namespace

void UnlockRequests::enterPin(const Request& request, const QString& modem)
{
    const uint lock = lockOf(m_calls.mirror(), modem);
    if (lock != MM_MODEM_LOCK_SIM_PIN) {
        const bool isBlocked = lock == MM_MODEM_LOCK_SIM_PUK;
        m_calls.end(modem,
                    {request.number, isBlocked ? long(QRVL_ERROR_BLOCKED) : long(QRVL_ERROR_NOT_FOUND), {}});
        return;
    }
    const QString pin = request.secret.view().toString();
    auto sim = m_calls.proxy<SimProxy>(ManagedModem::simOf(m_calls.mirror(), modem));
    unlock(request.number, modem, sim.SendPin(pin), {pin}, QRVL_ERROR_BLOCKED);
}

void UnlockRequests::enterPuk(const Request& request, const QString& modem)
{
    if (lockOf(m_calls.mirror(), modem) != MM_MODEM_LOCK_SIM_PUK) {
        m_calls.end(modem, {request.number, QRVL_ERROR_NOT_FOUND, {}});
        return;
    }
    const QString puk = request.secret.view().toString();
    const QString pin = request.newPin.view().toString();
    auto sim = m_calls.proxy<SimProxy>(ManagedModem::simOf(m_calls.mirror(), modem));
    const bool isLastTry = ManagedModem::pukTries(m_calls.mirror(), modem) == QLatin1String("1");
    unlock(request.number, modem, sim.SendPuk(puk, pin), {puk, pin},
           isLastTry ? QRVL_ERROR_BLOCKED : QRVL_ERROR_WRONG_CODE);
}

/// `refusal` is the result when the SIM asks for its PUK then: after a PIN that was the last try, after a PUK any.
void UnlockRequests::unlock(quint32 number, const QString& modem, const QDBusPendingCall& call,
                            const QStringList& codes, long refusal)
{
    m_unlocking.insert(modem);
    m_calls.await(call, [=](const QDBusPendingCall&, long result) {
        for (QString code : codes)
            Secret::wipe(code);
        finish(number, modem, result == QRVL_ERROR_BLOCKED ? refusal : result);
    });
}

bool UnlockRequests::isUnlockingRemovedModem() const
{
    return std::any_of(m_unlocking.begin(), m_unlocking.end(), [this](const QString& modem) {
        return !m_calls.mirror().contains(modem, QStringLiteral(MM_DBUS_INTERFACE_MODEM));
    });
}

/// Reads the lock and the tries again, which say what a failure means.
void UnlockRequests::finish(quint32 number, const QString& modem, long result)
{
    const uint lockBefore = lockOf(m_calls.mirror(), modem);
    m_calls.mirror().fetch(modem, QLatin1String(MM_DBUS_INTERFACE_MODEM), [=] {
        const uint lock = lockOf(m_calls.mirror(), modem);
        const bool isNewlyBlocked = lock == MM_MODEM_LOCK_SIM_PUK && lockBefore != lock;
        m_unlocking.remove(modem);
        const bool isFailure = result != QRVL_OK && result != QRVL_ERROR_PERMISSION;
        const bool isGone = !m_calls.mirror().contains(modem, QStringLiteral(MM_DBUS_INTERFACE_MODEM)) &&
                            (result == QRVL_ERROR_UNSUPPORTED || result == QRVL_ERROR_NOT_FOUND);
        long meaning = isFailure && isNewlyBlocked ? long(QRVL_ERROR_BLOCKED) : result;
        // The modem was removed before the code arrived, or ModemManager has gone.
        if (isGone || !m_calls.mirror().isPresent())
            meaning = QRVL_ERROR_NO_DEVICE;
        m_calls.end(modem, {number, meaning, {}});
    });
}
