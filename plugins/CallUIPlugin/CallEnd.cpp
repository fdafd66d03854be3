#include "CallEnd.h"

#include "support/Modems.h"
#include "support/Text.h"

namespace {

struct Entry
{
    CallEnd end;
    const char* id;      ///< of the string
    QLatin1String value; ///< of the simulated modem; empty if the network does not cause this end
};

constexpr Entry Entries[] = {
    {CallEnd::HungUp, "IDS_CALL_HUNG_UP", QLatin1String()},
    {CallEnd::Busy, "IDS_CALL_BUSY", QLatin1String("busy")},
    {CallEnd::NoAnswer, "IDS_CALL_NO_ANSWER", QLatin1String("no-answer")},
    {CallEnd::Refused, "IDS_CALL_REFUSED", QLatin1String("refused")},
    {CallEnd::NoNetwork, "IDS_CALL_NO_NETWORK", QLatin1String()},
    {CallEnd::NoModem, "IDS_CALL_NO_MODEM", QLatin1String()},
};

} // namespace

QString wordsOf(CallEnd end)
{
    for (const Entry& entry : Entries) {
        if (entry.end == end)
            return text(entry.id);
    }
    return {};
}

CallEnd simulatedEnd(quint32 modem)
{
    const QString value = modemValue(modem, QStringLiteral("calls"));
    for (const Entry& entry : Entries) {
        if (entry.value.size() > 0 && entry.value == value)
            return entry.end;
    }
    return CallEnd::HungUp;
}
