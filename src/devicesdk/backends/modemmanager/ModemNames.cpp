#include "backends/modemmanager/ModemNames.h"

#include <ModemManager.h>
#include <algorithm>
#include <iterator>

namespace {

struct Name
{
    uint number;
    const char* text;
};

constexpr Name Registrations[] = {
    {MM_MODEM_3GPP_REGISTRATION_STATE_IDLE, "idle"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_HOME, "home"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_SEARCHING, "searching"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_DENIED, "denied"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_ROAMING, "roaming"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_HOME_SMS_ONLY, "home"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_ROAMING_SMS_ONLY, "roaming"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_EMERGENCY_ONLY, "denied"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_HOME_CSFB_NOT_PREFERRED, "home"},
    {MM_MODEM_3GPP_REGISTRATION_STATE_ROAMING_CSFB_NOT_PREFERRED, "roaming"},
};

/// Flags, the fastest first.
constexpr Name Technologies[] = {
    {MM_MODEM_ACCESS_TECHNOLOGY_5GNR, "5g"},
    {MM_MODEM_ACCESS_TECHNOLOGY_LTE | MM_MODEM_ACCESS_TECHNOLOGY_LTE_CAT_M |
         MM_MODEM_ACCESS_TECHNOLOGY_LTE_NB_IOT,
     "lte"},
    {MM_MODEM_ACCESS_TECHNOLOGY_HSPA_PLUS, "hspa+"},
    {MM_MODEM_ACCESS_TECHNOLOGY_HSPA | MM_MODEM_ACCESS_TECHNOLOGY_HSDPA | MM_MODEM_ACCESS_TECHNOLOGY_HSUPA,
     "hspa"},
    {MM_MODEM_ACCESS_TECHNOLOGY_UMTS, "umts"},
    {MM_MODEM_ACCESS_TECHNOLOGY_EDGE, "edge"},
    {MM_MODEM_ACCESS_TECHNOLOGY_GPRS, "gprs"},
    {MM_MODEM_ACCESS_TECHNOLOGY_GSM | MM_MODEM_ACCESS_TECHNOLOGY_GSM_COMPACT, "gsm"},
};

constexpr Name Failures[] = {
    {MM_MODEM_STATE_FAILED_REASON_SIM_ERROR, "sim-error"},
    {MM_MODEM_STATE_FAILED_REASON_UNKNOWN_CAPABILITIES, "capabilities"},
    {MM_MODEM_STATE_FAILED_REASON_ESIM_WITHOUT_PROFILES, "no-profile"},
};

constexpr Name Dialogues[] = {
    {MM_MODEM_3GPP_USSD_SESSION_STATE_IDLE, "idle"},
    {MM_MODEM_3GPP_USSD_SESSION_STATE_ACTIVE, "active"},
    {MM_MODEM_3GPP_USSD_SESSION_STATE_USER_RESPONSE, "reply"},
};

constexpr Name Availabilities[] = {
    {MM_MODEM_3GPP_NETWORK_AVAILABILITY_AVAILABLE, "available"},
    {MM_MODEM_3GPP_NETWORK_AVAILABILITY_CURRENT, "current"},
    {MM_MODEM_3GPP_NETWORK_AVAILABILITY_FORBIDDEN, "forbidden"},
};

constexpr Name Storages[] = {
    {MM_SMS_STORAGE_SM, "sim"},
    {MM_SMS_STORAGE_ME, "modem"},
    {MM_SMS_STORAGE_MT, "both"},
};

template <std::size_t size>
QString nameOf(uint number, const Name (&names)[size], const char* fallback)
{
    const auto* const found = std::find_if(std::begin(names), std::end(names),
                                           [&](const Name& name) { return name.number == number; });
    return QLatin1String(found == std::end(names) ? fallback : found->text);
}

} // namespace

QString ModemNames::state(Modem::State state)
{
    switch (state) {
    case Modem::Rejected:
        return QStringLiteral("rejected");
    case Modem::Failed:
        return QStringLiteral("failed");
    default:
        return QStringLiteral("available");
    }
}

QString ModemNames::failure(uint reason)
{
    return nameOf(reason, Failures, "unknown");
}

QString ModemNames::registration(uint state)
{
    return nameOf(state, Registrations, "unknown");
}

QString ModemNames::connection(int state)
{
    switch (state) {
    case MM_MODEM_STATE_CONNECTED:
        return QStringLiteral("connected");
    case MM_MODEM_STATE_CONNECTING:
        return QStringLiteral("connecting");
    case MM_MODEM_STATE_DISCONNECTING:
        return QStringLiteral("disconnecting");
    default:
        return QStringLiteral("disconnected");
    }
}

QString ModemNames::dialogue(uint state)
{
    return nameOf(state, Dialogues, "idle");
}

QString ModemNames::availability(uint state)
{
    return nameOf(state, Availabilities, "unknown");
}

QString ModemNames::storage(uint storage)
{
    return nameOf(storage, Storages, "");
}

QString ModemNames::technology(uint flags)
{
    const auto* const found = std::find_if(std::begin(Technologies), std::end(Technologies),
                                           [&](const Name& name) { return (name.number & flags) != 0; });
    return found == std::end(Technologies) ? QString() : QLatin1String(found->text);
}
