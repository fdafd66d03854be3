#include "Connector.h"

#include "support/AccessPoint.h"
#include "support/Requests.h"
#include "support/Secret.h"

#include <qrvl.h>

namespace {

constexpr QLatin1String Connecting("connecting");
constexpr QLatin1String Disconnecting("disconnecting");

long start(const Modem& modem, quint32* request)
{
    const AccessPoint accessPoint = AccessPoint::load(modem);
    QString password = accessPoint.password(modem);
    const QRVL_AccessPoint argument{utf16(accessPoint.name), utf16(accessPoint.user), utf16(password),
                                    accessPoint.isHomeOnly ? QRVL_CONNECT_HOME_ONLY : 0, 0};
    const long result = QRVL_DevSrv_Connect(modem.id, &argument, request);
    wipe(password);
    return result;
}

} // namespace

Connector::Connector(Requests& requests, QObject* parent)
    : QObject(parent)
    , m_requests(requests)
{
}

void Connector::connectModem(const Modem& modem)
{
    begin(modem, Connecting);
    m_requests.start([&](quint32* request) { return start(modem, request); }, this,
                     [this, modem](const RequestEnd& end) { finish(modem, Connecting, end.result); });
}

void Connector::disconnectModem(const Modem& modem)
{
    begin(modem, Disconnecting);
    m_requests.start([&](quint32* request) { return QRVL_DevSrv_Disconnect(modem.id, request); }, this,
                     [this, modem](const RequestEnd& end) { finish(modem, Disconnecting, end.result); });
}

void Connector::begin(const Modem& modem, QLatin1String aim)
{
    m_attempts[modem.id] = {aim, true, QRVL_OK};
    Q_EMIT changed();
}

void Connector::finish(const Modem& modem, QLatin1String aim, int result)
{
    Attempt& attempt = m_attempts[modem.id];
    if (attempt.aim != aim)
        return; // the user has cancelled it meanwhile
    attempt = {aim, false, result};
    Q_EMIT changed();
}

void Connector::complete(const Modem& modem, ConnectionReport& report) const
{
    const Attempt attempt = m_attempts.value(modem.id);
    const bool isConnected = report.connection == QLatin1String("connected");
    if (attempt.isUnderWay && (attempt.aim == Disconnecting || !isConnected))
        report.connection = attempt.aim;
    const bool isStillFailed = isConnected == (attempt.aim == Disconnecting);
    if (report.failure == QRVL_OK && isStillFailed)
        report.failure = attempt.failure;
}
