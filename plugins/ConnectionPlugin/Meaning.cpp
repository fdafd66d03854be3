#include "Meaning.h"

#include <qrvl.h>

#include <algorithm>
#include <iterator>

namespace {

using S = ConnectionState;

struct Words
{
    S::Kind kind;
    const char* title;
    const char* sentence;
};

constexpr Words AllWords[] = {
    {S::NoBus, "IDS_CONN_NO_SEARCH", "IDS_CONN_NO_BUS_HINT"},
    {S::NoModemManager, "IDS_CONN_NO_SEARCH", "IDS_CONN_NO_MODEMMANAGER_HINT"},
    {S::NoModem, "IDS_CONN_NO_MODEM", "IDS_CONN_NO_MODEM_HINT"},
    {S::ModemRejected, "IDS_CONN_REJECTED", "IDS_CONN_REJECTED_HINT"},
    {S::SimFailed, "IDS_CONN_FAILED", "IDS_CONN_SIM_ERROR_HINT"},
    {S::NoProfile, "IDS_CONN_FAILED", "IDS_CONN_NO_PROFILE_HINT"},
    {S::MissingCapabilities, "IDS_CONN_FAILED", "IDS_CONN_CAPABILITIES_HINT"},
    {S::ModemFailed, "IDS_CONN_FAILED", "IDS_CONN_FAILED_HINT"},
    {S::NoSim, "IDS_CONN_NO_SIM", "IDS_CONN_NO_SIM_HINT"},
    {S::NeedsPin, "IDS_CONN_LOCKED", "IDS_CONN_PIN_HINT"},
    {S::NeedsPuk, "IDS_CONN_LOCKED", "IDS_CONN_PUK_HINT"},
    {S::SimBlocked, "IDS_CONN_BLOCKED", "IDS_CONN_BLOCKED_HINT"},
    {S::OtherLock, "IDS_CONN_LOCKED", "IDS_CONN_OTHER_LOCK_HINT"},
    {S::SimError, "IDS_CONN_SIM_ERROR", "IDS_CONN_SIM_ERROR_HINT"},
    {S::Connecting, "IDS_CONN_CONNECTING", "IDS_CONN_CONNECTING_HINT"},
    {S::Connected, "IDS_CONN_CONNECTED", "IDS_CONN_CONNECTED_HINT"},
    {S::Disconnecting, "IDS_CONN_DISCONNECTING", "IDS_CONN_DISCONNECTING_HINT"},
    {S::NoConnectionBus, "IDS_CONN_DISCONNECTED", "IDS_CONN_NO_BUS_HINT"},
    {S::NoNetworkManager, "IDS_CONN_DISCONNECTED", "IDS_CONN_NO_NETWORKMANAGER_HINT"},
    {S::Searching, "IDS_CONN_SEARCHING", "IDS_CONN_SEARCHING_HINT"},
    {S::Denied, "IDS_CONN_DENIED", "IDS_CONN_DENIED_HINT"},
    {S::RoamingExcluded, "IDS_CONN_DISCONNECTED", "IDS_CONN_ROAMING_HINT"},
    {S::Disconnected, "IDS_CONN_DISCONNECTED", "IDS_CONN_DISCONNECTED_HINT"},
    {S::ConnectingFailed, nullptr, nullptr},
};

} // namespace

Meaning meaningOf(const ConnectionReport& report)
{
    const S state = connectionState(report);
    const auto* const words =
        std::find_if(std::begin(AllWords), std::end(AllWords),
                     [&](const Words& candidate) { return candidate.kind == state.kind; });
    Meaning meaning{state.sign, words->title, words->sentence, state.action, state.isPossible};
    if (state.kind == S::Connected || state.kind == S::ConnectingFailed)
        meaning.failure = report.failure; // the modem could not be disconnected, or connected
    if (meaning.failure != QRVL_OK)
        meaning.sentence = nullptr;
    return meaning;
}
