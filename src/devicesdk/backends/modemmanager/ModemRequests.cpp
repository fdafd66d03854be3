#include "backends/modemmanager/ModemRequests.h"

#include "backends/modemmanager/ManagedModem.h"
#include "backends/modemmanager/RegistrationRequests.h"
#include "backends/modemmanager/UssdRequests.h"
#include "backends/networkmanager/NetworkClient.h"
#include "qrvl.h"

namespace {

/// Why a request that needs the SIM cannot begin.
long simObstacle(const DBusMirror& mirror, const QString& modem)
{
    if (ManagedModem::simOf(mirror, modem).isEmpty())
        return QRVL_ERROR_NO_SIM;
    return ManagedModem::isLocked(mirror, modem) ? QRVL_ERROR_LOCKED : QRVL_OK;
}

bool needsSim(Request::Kind kind)
{
    return kind != Request::EnterPin && kind != Request::EnterPuk && kind != Request::Disconnect;
}

} // namespace

ModemRequests::ModemRequests(DBusMirror& mirror, const MessageRequests::MessagesOf& messagesOf)
    : m_calls(mirror)
    , m_unlocking(m_calls)
    , m_messages(m_calls, messagesOf)
{
    connect(&m_calls, &ModemCalls::ended, this, &ModemRequests::ended);
}

void ModemRequests::begin(const Request& request, const QString& modem, NetworkClient& network)
{
    const long obstacle = needsSim(request.kind) ? simObstacle(m_calls.mirror(), modem) : long(QRVL_OK);
    if (obstacle != QRVL_OK) {
        Q_EMIT ended(modem, {request.number, obstacle, {}});
        return;
    }
    switch (request.kind) {
    case Request::EnterPin:
        return m_unlocking.enterPin(request, modem);
    case Request::EnterPuk:
        return m_unlocking.enterPuk(request, modem);
    case Request::SendMessage:
        return m_messages.send(request, modem);
    case Request::DeleteMessage:
        return m_messages.remove(request, modem);
    case Request::SendUssd:
        return UssdRequests::send(m_calls, request, modem);
    case Request::CancelUssd:
        return UssdRequests::cancel(m_calls, request, modem);
    case Request::ScanNetworks:
        return RegistrationRequests::scan(m_calls, request, modem);
    case Request::Register:
        return RegistrationRequests::registerIn(
            m_calls, request, modem,
            [=, isManual = !request.target.isEmpty()] { Q_EMIT networkChosen(modem, isManual); });
    case Request::Connect:
    case Request::Disconnect:
        return network.begin(request, modem);
    }
}
