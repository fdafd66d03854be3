#include "Meaning.h"

#include <qrvl.h>

#include <algorithm>
#include <iterator>

namespace {

using Look::Sign;

/// What it means that a value is reported.
struct Rule
{
    QString ConnectionReport::*value;
    QLatin1String is;
    Meaning meaning;
};

constexpr Meaning NoModem{Sign::NoModem, "IDS_CONN_NO_MODEM", "IDS_CONN_NO_MODEM_HINT", Action::Help};
constexpr Meaning ReadyToConnect{Sign::Disconnected, "IDS_CONN_DISCONNECTED", "IDS_CONN_DISCONNECTED_HINT",
                                 Action::Connect};
constexpr Meaning RoamingExcluded{Sign::Disconnected, "IDS_CONN_DISCONNECTED", "IDS_CONN_ROAMING_HINT",
                                  Action::AllowRoaming};

using R = ConnectionReport;

/// The first rule that applies counts.
const Rule Rules[] = {
    {&R::problem, QLatin1String("no-bus"), {Sign::Failed, "IDS_CONN_NO_SEARCH", "IDS_CONN_NO_BUS_HINT"}},
    {&R::problem,
     QLatin1String("no-modemmanager"),
     {Sign::Failed, "IDS_CONN_NO_SEARCH", "IDS_CONN_NO_MODEMMANAGER_HINT"}},
    {&R::state, QLatin1String(), NoModem},
    {&R::state,
     QLatin1String("rejected"),
     {Sign::Refused, "IDS_CONN_REJECTED", "IDS_CONN_REJECTED_HINT", Action::Help}},
    {&R::stateReason,
     QLatin1String("sim-error"),
     {Sign::Failed, "IDS_CONN_FAILED", "IDS_CONN_SIM_ERROR_HINT"}},
    {&R::stateReason,
     QLatin1String("no-profile"),
     {Sign::NoSim, "IDS_CONN_FAILED", "IDS_CONN_NO_PROFILE_HINT"}},
    {&R::stateReason,
     QLatin1String("capabilities"),
     {Sign::Failed, "IDS_CONN_FAILED", "IDS_CONN_CAPABILITIES_HINT"}},
    {&R::state,
     QLatin1String("failed"),
     {Sign::Failed, "IDS_CONN_FAILED", "IDS_CONN_FAILED_HINT", Action::Help}},

    {&R::sim, QLatin1String("absent"), {Sign::NoSim, "IDS_CONN_NO_SIM", "IDS_CONN_NO_SIM_HINT"}},
    {&R::sim, QLatin1String("pin"), {Sign::Locked, "IDS_CONN_LOCKED", "IDS_CONN_PIN_HINT", Action::EnterPin}},
    {&R::sim, QLatin1String("puk"), {Sign::Locked, "IDS_CONN_LOCKED", "IDS_CONN_PUK_HINT", Action::EnterPuk}},
    {&R::sim, QLatin1String("blocked"), {Sign::Refused, "IDS_CONN_BLOCKED", "IDS_CONN_BLOCKED_HINT"}},
    {&R::sim, QLatin1String("locked"), {Sign::Locked, "IDS_CONN_LOCKED", "IDS_CONN_OTHER_LOCK_HINT"}},
    {&R::sim, QLatin1String("error"), {Sign::NoSim, "IDS_CONN_SIM_ERROR", "IDS_CONN_SIM_ERROR_HINT"}},

    {&R::connection,
     QLatin1String("connecting"),
     {Sign::Connecting, "IDS_CONN_CONNECTING", "IDS_CONN_CONNECTING_HINT", Action::Cancel}},
    {&R::connection,
     QLatin1String("connected"),
     {Sign::Connected, "IDS_CONN_CONNECTED", "IDS_CONN_CONNECTED_HINT", Action::Disconnect}},
    {&R::connection,
     QLatin1String("disconnecting"),
     {Sign::Connecting, "IDS_CONN_DISCONNECTING", "IDS_CONN_DISCONNECTING_HINT", Action::Disconnect, false}},

    {&R::connectionProblem,
     QLatin1String("no-bus"),
     {Sign::Failed, "IDS_CONN_DISCONNECTED", "IDS_CONN_NO_BUS_HINT"}},
    {&R::connectionProblem,
     QLatin1String("no-networkmanager"),
     {Sign::Failed, "IDS_CONN_DISCONNECTED", "IDS_CONN_NO_NETWORKMANAGER_HINT"}},
    {&R::registration,
     QLatin1String("searching"),
     {Sign::Searching, "IDS_CONN_SEARCHING", "IDS_CONN_SEARCHING_HINT", Action::ChooseNetwork}},
    {&R::registration,
     QLatin1String("denied"),
     {Sign::Refused, "IDS_CONN_DENIED", "IDS_CONN_DENIED_HINT", Action::ChooseNetwork}},
};

/// A connection that could not be ended.
Meaning withFailure(Meaning meaning, const ConnectionReport& report)
{
    meaning.failure = report.failure;
    if (report.failure != QRVL_OK)
        meaning.sentence = nullptr;
    return meaning;
}

} // namespace

Meaning meaningOf(const ConnectionReport& report)
{
    const auto* const rule = std::find_if(std::begin(Rules), std::end(Rules), [&](const Rule& candidate) {
        return report.*candidate.value == candidate.is;
    });
    if (rule != std::end(Rules))
        return rule->meaning.sign == Sign::Connected ? withFailure(rule->meaning, report) : rule->meaning;
    if (report.isHomeOnly && report.registration == QLatin1String("roaming"))
        return RoamingExcluded;
    if (report.failure == QRVL_OK)
        return ReadyToConnect;
    return {Sign::Failed, nullptr, nullptr, Action::Connect, true, report.failure};
}
