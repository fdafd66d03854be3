#include "backends/modemmanager/ModemRequests.h"

#include "Log.h"
#include "backends/modemmanager/DBusMirror.h"
#include "backends/modemmanager/DBusResults.h"
#include "backends/modemmanager/ManagedModem.h"
#include "backends/modemmanager/ModemMessages.h"
#include "backends/modemmanager/NetworkClient.h"
#include "messagingproxy.h"
#include "qrvl.h"
#include "simproxy.h"
#include "smsproxy.h"
#include "ussdproxy.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <ModemManager.h>
#include <algorithm>
#include <utility>

namespace {

constexpr int NetworkTimeout = 180 * 1000; // messages of many parts, service codes abroad

template <typename Proxy>
Proxy proxyFor(const DBusMirror& mirror, const QString& path)
{
    return Proxy(mirror.service(), path, mirror.bus());
}

uint lockOf(const DBusMirror& mirror, const QString& modem)
{
    return ManagedModem::isLocked(mirror, modem)
               ? ManagedModem::valueOf(mirror, modem, "UnlockRequired").toUInt()
               : uint(MM_MODEM_LOCK_NONE);
}

/// Why a request that needs the SIM cannot begin.
long simObstacle(const DBusMirror& mirror, const QString& modem)
{
    if (ManagedModem::simOf(mirror, modem).isEmpty())
        return QRVL_ERROR_NO_SIM;
    return ManagedModem::isLocked(mirror, modem) ? QRVL_ERROR_LOCKED : QRVL_OK;
}

uint dialogueOf(const DBusMirror& mirror, const QString& modem)
{
    return mirror.value(modem, QLatin1String(MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD), QStringLiteral("State"))
        .toUInt();
}

} // namespace

ModemRequests::ModemRequests(DBusMirror& mirror, std::function<ModemMessages*(const QString&)> messagesOf)
    : m_mirror(mirror)
    , m_messagesOf(std::move(messagesOf))
{
}

void ModemRequests::begin(const Request& request, const QString& modem, NetworkClient& network)
{
    const bool needsSim = request.kind != Request::EnterPin && request.kind != Request::EnterPuk &&
                          request.kind != Request::Disconnect;
    const long obstacle = needsSim ? simObstacle(m_mirror, modem) : long(QRVL_OK);
    if (obstacle != QRVL_OK) {
        Q_EMIT ended(modem, {request.number, obstacle, {}});
        return;
    }
    switch (request.kind) {
    case Request::EnterPin:
        return enterPin(request, modem);
    case Request::EnterPuk:
        return enterPuk(request, modem);
    case Request::SendMessage:
        return sendMessage(request, modem);
    case Request::DeleteMessage:
        return deleteMessage(request, modem);
    case Request::SendUssd:
        return sendUssd(request, modem);
    case Request::CancelUssd:
        return cancelUssd(request, modem);
    case Request::Connect:
    case Request::Disconnect:
        return network.begin(request, modem);
    }
}

void ModemRequests::await(const QDBusPendingCall& call, const Then& then)
{
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, then] {
        watcher->deleteLater();
        const long result = DBusResults::resultOf(watcher->error());
        if (result == QRVL_ERROR_FAILED) // the text of the error could contain what the user has entered
            qCWarning(logDeviceSdk, "A request has failed: %s", qUtf8Printable(watcher->error().name()));
        then(*watcher, result);
    });
}

void ModemRequests::enterPin(const Request& request, const QString& modem)
{
    const uint lock = lockOf(m_mirror, modem);
    if (lock != MM_MODEM_LOCK_SIM_PIN) {
        const bool isBlocked = lock == MM_MODEM_LOCK_SIM_PUK;
        Q_EMIT ended(modem,
                     {request.number, isBlocked ? long(QRVL_ERROR_BLOCKED) : long(QRVL_ERROR_NOT_FOUND), {}});
        return;
    }
    const QString pin = request.secret.view().toString();
    auto sim = proxyFor<SimProxy>(m_mirror, ManagedModem::simOf(m_mirror, modem));
    unlock(request.number, modem, sim.SendPin(pin), {pin}, QRVL_ERROR_BLOCKED);
}

void ModemRequests::enterPuk(const Request& request, const QString& modem)
{
    if (lockOf(m_mirror, modem) != MM_MODEM_LOCK_SIM_PUK) {
        Q_EMIT ended(modem, {request.number, QRVL_ERROR_NOT_FOUND, {}});
        return;
    }
    const QString puk = request.secret.view().toString();
    const QString pin = request.newPin.view().toString();
    auto sim = proxyFor<SimProxy>(m_mirror, ManagedModem::simOf(m_mirror, modem));
    const bool isLastTry = ManagedModem::pukTries(m_mirror, modem) == QLatin1String("1");
    unlock(request.number, modem, sim.SendPuk(puk, pin), {puk, pin},
           isLastTry ? QRVL_ERROR_BLOCKED : QRVL_ERROR_WRONG_CODE);
}

/// `refusal` is the result when the SIM asks for its PUK then: after a PIN that was the last try, after a PUK any.
void ModemRequests::unlock(quint32 number, const QString& modem, const QDBusPendingCall& call,
                           const QStringList& codes, long refusal)
{
    m_unlocking.insert(modem);
    await(call, [=](const QDBusPendingCall&, long result) {
        for (QString code : codes)
            Secret::wipe(code);
        finishUnlocking(number, modem, result == QRVL_ERROR_BLOCKED ? refusal : result);
    });
}

bool ModemRequests::isUnlockingRemovedModem() const
{
    return std::any_of(m_unlocking.begin(), m_unlocking.end(), [this](const QString& modem) {
        return !m_mirror.contains(modem, QStringLiteral(MM_DBUS_INTERFACE_MODEM));
    });
}

/// Reads the lock and the tries again, which say what a failure means.
void ModemRequests::finishUnlocking(quint32 number, const QString& modem, long result)
{
    const uint lockBefore = lockOf(m_mirror, modem);
    m_mirror.fetch(modem, QLatin1String(MM_DBUS_INTERFACE_MODEM), [=] {
        const uint lock = lockOf(m_mirror, modem);
        const bool isNewlyBlocked = lock == MM_MODEM_LOCK_SIM_PUK && lockBefore != lock;
        m_unlocking.remove(modem);
        const bool isFailure = result != QRVL_OK && result != QRVL_ERROR_PERMISSION;
        const bool isGone = !m_mirror.contains(modem, QStringLiteral(MM_DBUS_INTERFACE_MODEM)) &&
                            (result == QRVL_ERROR_UNSUPPORTED || result == QRVL_ERROR_NOT_FOUND);
        long meaning = isFailure && isNewlyBlocked ? long(QRVL_ERROR_BLOCKED) : result;
        if (isGone) // it was removed before the code arrived
            meaning = QRVL_ERROR_NO_DEVICE;
        Q_EMIT ended(modem, {number, meaning, {}});
    });
}

void ModemRequests::sendMessage(const Request& request, const QString& modem)
{
    const QVariantMap properties = {{QStringLiteral("number"), request.target},
                                    {QStringLiteral("text"), request.text},
                                    {QStringLiteral("delivery-report-request"), true}};
    auto messaging = proxyFor<MessagingProxy>(m_mirror, modem);
    await(messaging.Create(properties),
          [=, number = request.number](const QDBusPendingCall& call, long result) {
              const QDBusPendingReply<QDBusObjectPath> reply = call;
              if (result == QRVL_OK)
                  send(number, modem, reply.value().path());
              else
                  finishAfterRead({number, result, {}}, modem, MM_DBUS_INTERFACE_MODEM_MESSAGING);
          });
}

void ModemRequests::send(quint32 number, const QString& modem, const QString& message)
{
    if (ModemMessages* const messages = m_messagesOf(modem))
        messages->noteSending(message);
    auto sms = proxyFor<SmsProxy>(m_mirror, message);
    sms.setTimeout(NetworkTimeout);
    await(sms.Send(), [=](const QDBusPendingCall&, long result) {
        ModemMessages* const messages = m_messagesOf(modem);
        if (messages && result != QRVL_OK)
            messages->noteFailure(message);
        m_mirror.fetch(message, QLatin1String(MM_DBUS_INTERFACE_SMS));
        finishAfterRead({number, result, ModemMessages::identifierOf(message)}, modem,
                        MM_DBUS_INTERFACE_MODEM_MESSAGING);
    });
}

void ModemRequests::deleteMessage(const Request& request, const QString& modem)
{
    const ModemMessages* const messages = m_messagesOf(modem);
    const QString message = messages ? messages->pathOf(request.target) : QString();
    if (message.isEmpty()) {
        Q_EMIT ended(modem, {request.number, QRVL_ERROR_NOT_FOUND, {}});
        return;
    }
    auto messaging = proxyFor<MessagingProxy>(m_mirror, modem);
    await(messaging.Delete(QDBusObjectPath(message)),
          [=, number = request.number](const QDBusPendingCall&, long result) {
              finishAfterRead({number, result, {}}, modem, MM_DBUS_INTERFACE_MODEM_MESSAGING);
          });
}

void ModemRequests::sendUssd(const Request& request, const QString& modem)
{
    auto ussd = proxyFor<UssdProxy>(m_mirror, modem);
    ussd.setTimeout(NetworkTimeout);
    const bool isAnswer = dialogueOf(m_mirror, modem) == MM_MODEM_3GPP_USSD_SESSION_STATE_USER_RESPONSE;
    const QDBusPendingReply<QString> started =
        isAnswer ? ussd.Respond(request.target) : ussd.Initiate(request.target);
    await(started, [=, number = request.number](const QDBusPendingCall& call, long result) {
        const QDBusPendingReply<QString> reply = call;
        finishAfterRead({number, result, result == QRVL_OK ? reply.value() : QString()}, modem,
                        MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD);
    });
}

void ModemRequests::cancelUssd(const Request& request, const QString& modem)
{
    if (dialogueOf(m_mirror, modem) <= MM_MODEM_3GPP_USSD_SESSION_STATE_IDLE) {
        Q_EMIT ended(modem, {request.number, QRVL_OK, {}});
        return;
    }
    auto ussd = proxyFor<UssdProxy>(m_mirror, modem);
    await(ussd.Cancel(), [=, number = request.number](const QDBusPendingCall&, long result) {
        finishAfterRead({number, result, {}}, modem, MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD);
    });
}

/// Property changes are sent when the daemon is idle, often after the reply that they belong to. If the daemon has
/// ended, this has no end, and neither has the modem.
void ModemRequests::finishAfterRead(const RequestEnd& end, const QString& modem, const char* interface)
{
    m_mirror.fetch(modem, QLatin1String(interface), [=] { Q_EMIT ended(modem, end); });
}
