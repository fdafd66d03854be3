#include "support/ConnectionState.h"

#include "support/AccessPoint.h"

#include <qrvl.h>

#include <algorithm>
#include <iterator>

namespace {

using Action = ConnectionAction;
using Look::Sign;
using R = ConnectionReport;
using S = ConnectionState;

/// What it means that a value is reported.
struct Rule
{
    QString R::*value;
    QLatin1String is;
    S state;
};

/// The first rule that applies wins.
const Rule Rules[] = {
    {&R::problem, QLatin1String("no-bus"), {S::NoBus, Sign::Failed}},
    {&R::problem, QLatin1String("no-modemmanager"), {S::NoModemManager, Sign::Failed}},
    {&R::state, QLatin1String(), {S::NoModem, Sign::NoModem, Action::Help}},
    {&R::state, QLatin1String("rejected"), {S::ModemRejected, Sign::Refused, Action::Help}},
    {&R::stateReason, QLatin1String("sim-error"), {S::SimFailed, Sign::Failed}},
    {&R::stateReason, QLatin1String("no-profile"), {S::NoProfile, Sign::NoSim}},
    {&R::stateReason, QLatin1String("capabilities"), {S::MissingCapabilities, Sign::Failed}},
    {&R::state, QLatin1String("failed"), {S::ModemFailed, Sign::Failed, Action::Help}},

    {&R::sim, QLatin1String("absent"), {S::NoSim, Sign::NoSim}},
    {&R::sim, QLatin1String("pin"), {S::NeedsPin, Sign::Locked, Action::EnterPin}},
    {&R::sim, QLatin1String("puk"), {S::NeedsPuk, Sign::Locked, Action::EnterPuk}},
    {&R::sim, QLatin1String("blocked"), {S::SimBlocked, Sign::Refused}},
    {&R::sim, QLatin1String("locked"), {S::OtherLock, Sign::Locked}},
    {&R::sim, QLatin1String("error"), {S::SimError, Sign::NoSim}},

    {&R::connection, QLatin1String("connecting"), {S::Connecting, Sign::Connecting, Action::Cancel}},
    {&R::connection, QLatin1String("connected"), {S::Connected, Sign::Connected, Action::Disconnect}},
    {&R::connection,
     QLatin1String("disconnecting"),
     {S::Disconnecting, Sign::Connecting, Action::Disconnect, false}},

    {&R::connectionProblem, QLatin1String("no-bus"), {S::NoConnectionBus, Sign::Failed}},
    {&R::connectionProblem, QLatin1String("no-networkmanager"), {S::NoNetworkManager, Sign::Failed}},
    {&R::registration, QLatin1String("searching"), {S::Searching, Sign::Searching, Action::ChooseNetwork}},
    {&R::registration, QLatin1String("denied"), {S::Denied, Sign::Refused, Action::ChooseNetwork}},
};

constexpr QLatin1String Roaming("roaming");

QString stateOf(const Modem& modem, const Modems& unusable)
{
    if (modem.id != 0)
        return QStringLiteral("available");
    return unusable.isEmpty() ? QString() : modemValue(unusable.first(), "state");
}

} // namespace

ConnectionReport readConnectionReport(const Modem& modem)
{
    const Modems unusable = modem.id == 0 ? unusableModems() : Modems();
    ConnectionReport report;
    report.problem = modem.id == 0 ? serviceValue(QStringLiteral("problem")) : QString();
    report.connectionProblem = serviceValue(QStringLiteral("connection-problem"));
    report.state = stateOf(modem, unusable);
    report.stateReason = unusable.isEmpty() ? QString() : modemValue(unusable.first(), "state.reason");
    if (modem.id == 0)
        return report;
    report.sim = modemValue(modem, "sim");
    report.registration = modemValue(modem, "registration");
    report.connection = modemValue(modem, "connection");
    report.failure = modemValue(modem, "connection.error").toInt();
    report.isHomeOnly = report.registration == Roaming && AccessPoint::load(modem).isHomeOnly;
    return report;
}

ConnectionState connectionState(const ConnectionReport& report)
{
    const auto* const rule = std::find_if(std::begin(Rules), std::end(Rules), [&](const Rule& candidate) {
        return report.*candidate.value == candidate.is;
    });
    if (rule != std::end(Rules))
        return rule->state;
    if (report.isHomeOnly && report.registration == Roaming)
        return {S::RoamingExcluded, Sign::Disconnected, Action::AllowRoaming};
    if (report.failure == QRVL_OK)
        return {S::Disconnected, Sign::Disconnected, Action::Connect};
    return {S::ConnectingFailed, Sign::Failed, Action::Connect};
}
