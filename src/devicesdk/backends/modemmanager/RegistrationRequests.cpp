#include "backends/modemmanager/RegistrationRequests.h"

#include "backends/modemmanager/ModemCalls.h"
#include "backends/modemmanager/ModemNames.h"
#include "modem3gppproxy.h"
#include "qrvl.h"

#include <QDBusPendingReply>

#include <ModemManager.h>

namespace {

constexpr int ScanTimeout = 320 * 1000; // ModemManager waits for 300 seconds
constexpr int RegistrationTimeout = 130 * 1000;

/// A line of RequestEnd.text, see QRVL_DevSrv_ScanNetworks().
QString lineOf(const QVariantMap& network)
{
    const auto text = [&](const char* key) {
        return network.value(QLatin1String(key)).toString().simplified();
    };
    const auto number = [&](const char* key) {
        return network.value(QLatin1String(key)).toUInt();
    };
    const QString longName = text("operator-long");
    return QStringList({text("operator-code"), ModemNames::availability(number("status")),
                        ModemNames::technology(number("access-technology")),
                        longName.isEmpty() ? text("operator-short") : longName})
        .join(QLatin1Char('\t'));
}

} // namespace

void RegistrationRequests::scan(ModemCalls& calls, const Request& request, const QString& modem)
{
    auto proxy = calls.proxy<Modem3gppProxy>(modem);
    proxy.setTimeout(ScanTimeout);
    calls.await(proxy.Scan(),
                [=, &calls, number = request.number](const QDBusPendingCall& call, long result) {
                    const QDBusPendingReply<VariantMapList> reply = call;
                    QStringList lines;
                    if (result == QRVL_OK) {
                        for (const QVariantMap& network : reply.value())
                            lines.append(lineOf(network));
                    }
                    calls.end(modem, {number, result, lines.join(QLatin1Char('\n'))});
                });
}

void RegistrationRequests::registerIn(ModemCalls& calls, const Request& request, const QString& modem,
                                      const std::function<void()>& chosen)
{
    auto proxy = calls.proxy<Modem3gppProxy>(modem);
    proxy.setTimeout(RegistrationTimeout);
    calls.await(proxy.Register(request.target),
                [=, &calls, number = request.number](const QDBusPendingCall&, long result) {
                    if (result == QRVL_OK)
                        chosen();
                    calls.endAfterRead(modem, {number, result, {}}, MM_DBUS_INTERFACE_MODEM_MODEM3GPP);
                });
}
