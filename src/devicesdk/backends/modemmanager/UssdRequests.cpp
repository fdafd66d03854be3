#include "backends/modemmanager/UssdRequests.h"

#include "backends/modemmanager/ModemCalls.h"
#include "qrvl.h"
#include "ussdproxy.h"

#include <QDBusPendingReply>

#include <ModemManager.h>

namespace {

constexpr int NetworkTimeout = 180 * 1000; // abroad
const char UssdInterface[] = MM_DBUS_INTERFACE_MODEM_MODEM3GPP_USSD;

uint dialogueOf(const DBusMirror& mirror, const QString& modem)
{
    return mirror.value(modem, QLatin1String(UssdInterface), QStringLiteral("State")).toUInt();
}

} // namespace

void UssdRequests::send(ModemCalls& calls, const Request& request, const QString& modem)
{
    auto ussd = calls.proxy<UssdProxy>(modem);
    ussd.setTimeout(NetworkTimeout);
    const bool isAnswer = dialogueOf(calls.mirror(), modem) == MM_MODEM_3GPP_USSD_SESSION_STATE_USER_RESPONSE;
    const QDBusPendingReply<QString> started =
        isAnswer ? ussd.Respond(request.target) : ussd.Initiate(request.target);
    calls.await(started, [=, &calls, number = request.number](const QDBusPendingCall& call, long result) {
        const QDBusPendingReply<QString> reply = call;
        calls.endAfterRead(modem, {number, result, result == QRVL_OK ? reply.value() : QString()},
                           UssdInterface);
    });
}

void UssdRequests::cancel(ModemCalls& calls, const Request& request, const QString& modem)
{
    if (dialogueOf(calls.mirror(), modem) <= MM_MODEM_3GPP_USSD_SESSION_STATE_IDLE) {
        calls.end(modem, {request.number, QRVL_OK, {}});
        return;
    }
    auto ussd = calls.proxy<UssdProxy>(modem);
    calls.await(ussd.Cancel(), [=, &calls, number = request.number](const QDBusPendingCall&, long result) {
        calls.endAfterRead(modem, {number, result, {}}, UssdInterface);
    });
}
