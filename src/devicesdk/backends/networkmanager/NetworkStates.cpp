#include "backends/networkmanager/NetworkStates.h"

#include "qrvl.h"

#include <algorithm>
#include <iterator>

namespace {

/// Reasons for a new state.
enum Reason : uint {
    NoSecrets = 7,
    PppStartFailed = 12,
    PppDisconnect = 13,
    PppFailed = 14,
    ModemBusy = 23,
    ModemNoCarrier = 25,
    ModemDialTimeout = 26,
    GsmApnFailed = 29,
    GsmNotSearching = 30,
    GsmDenied = 31,
    GsmTimeout = 32,
    GsmRegistrationFailed = 33,
    GsmPinCheckFailed = 34,
    Removed = 36,
    ConnectionRemoved = 38,
    Carrier = 40,
    ModemNotFound = 43,
    GsmSimNotInserted = 45,
    GsmSimPinRequired = 46,
    GsmSimPukRequired = 47,
    GsmSimWrong = 48,
    ModemManagerUnavailable = 52,
    SimPinIncorrect = 59,
    NewActivation = 60
};

struct Meaning
{
    uint reason;
    long result;
};

constexpr Meaning Meanings[] = {
    {NoSecrets, QRVL_ERROR_ACCESS_POINT},
    {PppStartFailed, QRVL_ERROR_ACCESS_POINT},
    {PppDisconnect, QRVL_ERROR_REFUSED},
    {PppFailed, QRVL_ERROR_ACCESS_POINT},
    {ModemBusy, QRVL_ERROR_BUSY},
    {ModemNoCarrier, QRVL_ERROR_NO_COVERAGE},
    {ModemDialTimeout, QRVL_ERROR_TIMEOUT},
    {GsmApnFailed, QRVL_ERROR_ACCESS_POINT},
    {GsmNotSearching, QRVL_ERROR_NO_COVERAGE},
    {GsmDenied, QRVL_ERROR_REFUSED},
    {GsmTimeout, QRVL_ERROR_NO_COVERAGE},
    {GsmRegistrationFailed, QRVL_ERROR_NO_COVERAGE},
    {GsmPinCheckFailed, QRVL_ERROR_LOCKED},
    {Removed, QRVL_ERROR_NO_DEVICE},
    {ConnectionRemoved, QRVL_ERROR_CANCELLED},
    {NetworkStates::UserRequested, QRVL_ERROR_CANCELLED},
    {Carrier, QRVL_ERROR_NO_COVERAGE},
    {ModemNotFound, QRVL_ERROR_NO_DEVICE},
    {GsmSimNotInserted, QRVL_ERROR_NO_SIM},
    {GsmSimPinRequired, QRVL_ERROR_LOCKED},
    {GsmSimPukRequired, QRVL_ERROR_LOCKED},
    {GsmSimWrong, QRVL_ERROR_NO_SIM},
    {ModemManagerUnavailable, QRVL_ERROR_SERVICE},
    {SimPinIncorrect, QRVL_ERROR_LOCKED},
    {NewActivation, QRVL_ERROR_CANCELLED},
};

} // namespace

long NetworkStates::resultOf(uint reason)
{
    const auto* const found = std::find_if(std::begin(Meanings), std::end(Meanings),
                                           [&](const Meaning& meaning) { return meaning.reason == reason; });
    return found == std::end(Meanings) ? long(QRVL_ERROR_FAILED) : found->result;
}

bool NetworkStates::isConnecting(uint state)
{
    return state >= Prepare && state <= Secondaries;
}

bool NetworkStates::isInUse(uint state)
{
    return isConnecting(state) || state == Activated;
}

QString NetworkStates::connectionText(uint state)
{
    if (isConnecting(state))
        return QStringLiteral("connecting");
    if (state == Activated)
        return QStringLiteral("connected");
    return state == Deactivating ? QStringLiteral("disconnecting") : QStringLiteral("disconnected");
}
