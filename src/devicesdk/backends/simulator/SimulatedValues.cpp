#include "backends/simulator/SimulatedValues.h"

#include "backends/simulator/SimulatorFile.h"

namespace {

QString registrationOf(const Modem& modem)
{
    const QString network = modem.status.value(QStringLiteral("network"));
    if (network.isEmpty())
        return QStringLiteral("searching");
    return SimulatedValues::isRoaming(modem.imsi, network) ? QStringLiteral("roaming")
                                                           : QStringLiteral("home");
}

/// Without its SIM a modem knows neither the user nor a network, and does not list messages.
void hideSim(Modem& modem)
{
    modem.imsi.clear();
    modem.gid.clear();
    modem.messages.clear();
    for (const char* const key :
         {"network", "network-name", "number", "iccid", "technology", "network-choice"})
        modem.status.remove(QLatin1String(key));
    modem.status[QStringLiteral("registration")] = QStringLiteral("idle");
    modem.status[QStringLiteral("connection")] = QStringLiteral("disconnected");
}

} // namespace

bool SimulatedValues::isRoaming(const QString& imsi, const QString& network)
{
    return !imsi.startsWith(network);
}

void SimulatedValues::complete(Modem& modem)
{
    const bool isHidden =
        modem.status.value(QStringLiteral("sim"), QStringLiteral("ready")) != QLatin1String("ready");
    if (isHidden || modem.status.value(QStringLiteral("connection")) == QLatin1String("disconnected")) {
        modem.status.remove(QStringLiteral("receive-rate"));
        modem.status.remove(QStringLiteral("send-rate"));
    }
    const auto fallBack = [&](const char* key, const QString& value) {
        if (!modem.status.contains(QLatin1String(key)))
            modem.status.insert(QLatin1String(key), value);
    };
    modem.status.insert(QStringLiteral("state"), modem.state == Modem::Attached
                                                     ? QStringLiteral("available")
                                                     : SimulatorFile::stateText(modem.state));
    fallBack("sim", modem.imsi.isEmpty() ? QStringLiteral("absent") : QStringLiteral("ready"));
    fallBack("pin-tries", QString::number(PinTries));
    fallBack("puk-tries", QString::number(PukTries));
    fallBack("registration", registrationOf(modem));
    fallBack("network-choice", QStringLiteral("automatic"));
    fallBack("message-storage", QStringLiteral("sim"));
    fallBack("message-storages", QStringLiteral("sim modem"));
    fallBack("ussd", QStringLiteral("idle"));
    const bool isOnline = modem.status.contains(QStringLiteral("network"));
    fallBack("connection", isOnline ? QStringLiteral("connected") : QStringLiteral("disconnected"));
    if (isHidden)
        hideSim(modem);
}
