#include "ModemReport.h"

#include "support/Look.h"
#include "support/NetworkWords.h"
#include "support/Numbers.h"
#include "support/OperatorNames.h"
#include "support/Text.h"
#include "support/Units.h"

namespace {

constexpr QLatin1String Connected("connected");

/// For each number of bars.
constexpr const char* SignalWords[Look::SignalBars + 1] = {
    "IDS_CONN_SIGNAL_NONE", "IDS_CONN_SIGNAL_WEAK",      "IDS_CONN_SIGNAL_FAIR",
    "IDS_CONN_SIGNAL_GOOD", "IDS_CONN_SIGNAL_EXCELLENT",
};

QString signalWords(const QString& reported)
{
    const int strength = reported.toInt();
    const QString words = reported.isEmpty() ? QString() : text(SignalWords[Look::signalBars(strength)]);
    return words.contains(QLatin1String("%1")) ? words.arg(numberText(strength)) : words;
}

QString roamingWords(const QString& registration)
{
    if (registration == QLatin1String("roaming"))
        return text("IDS_CONN_ROAMING_YES");
    return registration == QLatin1String("home") ? text("IDS_CONN_ROAMING_NO") : QString();
}

} // namespace

QDateTime connectedSince(const Modem& modem)
{
    bool isNumber = false;
    const qint64 seconds = modemValue(modem, "connection.since").toLongLong(&isNumber);
    return isNumber ? QDateTime::fromSecsSinceEpoch(seconds) : QDateTime();
}

QString sinceText(const QDateTime& since, const QDateTime& now, const QLocale& locale)
{
    const QString moment = since.date() == now.date() ? locale.toString(since.time(), QLocale::ShortFormat)
                                                      : locale.toString(since, QLocale::ShortFormat);
    return QStringLiteral("%1 (%2)").arg(moment, durationText(since.secsTo(now), locale));
}

Facts readFacts(const Modem& modem, const OperatorNames& names, const Units& units)
{
    Facts facts;
    facts.network = networkName(modem, names);
    facts.technology = technologyName(modemValue(modem, "technology"));
    facts.signal = facts.network.isEmpty() ? QString() : signalWords(modemValue(modem, "signal"));
    facts.roaming = roamingWords(modemValue(modem, "registration"));
    if (modemValue(modem, "connection") != Connected)
        return facts;
    const quint64 received = modemValue(modem, "received").toULongLong();
    const quint64 sent = modemValue(modem, "sent").toULongLong();
    facts.address = modemValue(modem, "connection.address");
    facts.traffic = QStringLiteral("\u2193 %1   \u2191 %2").arg(units.volume(received), units.volume(sent));
    facts.volume = units.volume(received + sent);
    return facts;
}
