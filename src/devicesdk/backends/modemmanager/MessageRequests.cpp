#include "backends/modemmanager/MessageRequests.h"

#include "backends/modemmanager/ModemCalls.h"
#include "backends/modemmanager/ModemMessages.h"
#include "messagingproxy.h"
#include "qrvl.h"
#include "smsproxy.h"

#include <QDBusPendingReply>

#include <ModemManager.h>

namespace {

constexpr int SendingTimeout = 180 * 1000; // messages of many parts

} // namespace

void MessageRequests::send(const Request& request, const QString& modem)
{
    const QVariantMap properties = {{QStringLiteral("number"), request.target},
                                    {QStringLiteral("text"), request.text},
                                    {QStringLiteral("delivery-report-request"), true}};
    auto messaging = m_calls.proxy<MessagingProxy>(modem);
    m_calls.await(messaging.Create(properties), [=, number = request.number](const QDBusPendingCall& call,
                                                                             long result) {
        const QDBusPendingReply<QDBusObjectPath> reply = call;
        if (result == QRVL_OK)
            sendCreated(number, modem, reply.value().path());
        else
            m_calls.endAfterRead(modem, {number, result, {}}, MM_DBUS_INTERFACE_MODEM_MESSAGING);
    });
}

void MessageRequests::sendCreated(quint32 number, const QString& modem, const QString& message)
{
    if (ModemMessages* const messages = m_messagesOf(modem))
        messages->noteSending(message);
    auto sms = m_calls.proxy<SmsProxy>(message);
    sms.setTimeout(SendingTimeout);
    m_calls.await(sms.Send(), [=](const QDBusPendingCall&, long result) {
        ModemMessages* const messages = m_messagesOf(modem);
        if (messages && result != QRVL_OK)
            messages->noteFailure(message);
        m_calls.mirror().fetch(message, QLatin1String(MM_DBUS_INTERFACE_SMS));
        m_calls.endAfterRead(modem, {number, result, ModemMessages::identifierOf(message)},
                             MM_DBUS_INTERFACE_MODEM_MESSAGING);
    });
}

void MessageRequests::remove(const Request& request, const QString& modem)
{
    const ModemMessages* const messages = m_messagesOf(modem);
    const QString message = messages ? messages->pathOf(request.target) : QString();
    if (message.isEmpty()) {
        m_calls.end(modem, {request.number, QRVL_ERROR_NOT_FOUND, {}});
        return;
    }
    auto messaging = m_calls.proxy<MessagingProxy>(modem);
    m_calls.await(messaging.Delete(QDBusObjectPath(message)),
                  [=, number = request.number](const QDBusPendingCall&, long result) {
                      m_calls.endAfterRead(modem, {number, result, {}}, MM_DBUS_INTERFACE_MODEM_MESSAGING);
                  });
}
