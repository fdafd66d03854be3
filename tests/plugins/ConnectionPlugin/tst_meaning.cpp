// What the page says about each combination of values.
#include "Meaning.h"
#include "ModemReport.h"

#include <qrvl.h>

#include <QtTest>

#include <tuple>

class TestMeaning : public QObject
{
    Q_OBJECT

private slots:
    void states();
    void since();
};

namespace {

using R = ConnectionReport;
using Look::Sign;
using Values = QVector<std::pair<QString R::*, const char*>>;

/// A modem that could connect, with some values replaced.
R reportWith(const Values& values, int failure, bool isHomeOnly)
{
    R report{{}, {}, "available", {}, "ready", "home", "disconnected", failure, isHomeOnly};
    for (const auto& [key, value] : values)
        report.*key = value;
    return report;
}

/// "LOCKED PIN_HINT", with the button's action if it is on.
QString said(const Meaning& meaning)
{
    const QMap<Action, QString> actions = {
        {Action::Connect, "connect"},      {Action::Cancel, "cancel"}, {Action::Disconnect, "disconnect"},
        {Action::EnterPin, "pin"},         {Action::EnterPuk, "puk"},  {Action::ChooseNetwork, "network"},
        {Action::AllowRoaming, "roaming"}, {Action::Help, "help"}};
    QStringList words;
    for (const char* id : {meaning.title, meaning.sentence})
        words << (id ? QString(id).remove("IDS_CONN_") : QString::number(meaning.failure));
    return words.join(' ') + ": " + (meaning.isPossible ? actions.value(meaning.action, "-") : "off");
}

} // namespace

void TestMeaning::states()
{
    const int none = QRVL_OK;
    const int refused = QRVL_ERROR_REFUSED;
    const std::tuple<Values, int, bool, Sign, const char*> rows[] = {
        {{}, none, false, Sign::Disconnected, "DISCONNECTED DISCONNECTED_HINT: connect"},
        {{}, none, true, Sign::Disconnected, "DISCONNECTED DISCONNECTED_HINT: connect"},
        {{}, refused, false, Sign::Failed, "12 12: connect"},
        {{{&R::registration, "idle"}},
         none,
         false,
         Sign::Disconnected,
         "DISCONNECTED DISCONNECTED_HINT: connect"},
        {{{&R::registration, "roaming"}},
         none,
         false,
         Sign::Disconnected,
         "DISCONNECTED DISCONNECTED_HINT: connect"},
        {{{&R::registration, "roaming"}},
         refused,
         true,
         Sign::Disconnected,
         "DISCONNECTED ROAMING_HINT: roaming"},
        {{{&R::registration, "searching"}},
         refused,
         false,
         Sign::Searching,
         "SEARCHING SEARCHING_HINT: network"},
        {{{&R::registration, "denied"}}, none, false, Sign::Refused, "DENIED DENIED_HINT: network"},
        {{{&R::connectionProblem, "no-networkmanager"}},
         none,
         false,
         Sign::Failed,
         "DISCONNECTED NO_NETWORKMANAGER_HINT: -"},
        {{{&R::connectionProblem, "no-bus"}}, none, false, Sign::Failed, "DISCONNECTED NO_BUS_HINT: -"},
        {{{&R::connection, "connecting"}, {&R::registration, "searching"}},
         none,
         false,
         Sign::Connecting,
         "CONNECTING CONNECTING_HINT: cancel"},
        {{{&R::connection, "connected"}, {&R::registration, "roaming"}},
         none,
         true,
         Sign::Connected,
         "CONNECTED CONNECTED_HINT: disconnect"},
        {{{&R::connection, "connected"}}, refused, false, Sign::Connected, "CONNECTED 12: disconnect"},
        {{{&R::connection, "disconnecting"}},
         none,
         false,
         Sign::Connecting,
         "DISCONNECTING DISCONNECTING_HINT: off"},
        {{{&R::sim, "absent"}, {&R::connection, ""}}, none, false, Sign::NoSim, "NO_SIM NO_SIM_HINT: -"},
        {{{&R::sim, "pin"}, {&R::registration, "searching"}},
         refused,
         false,
         Sign::Locked,
         "LOCKED PIN_HINT: pin"},
        {{{&R::sim, "puk"}}, none, false, Sign::Locked, "LOCKED PUK_HINT: puk"},
        {{{&R::sim, "locked"}}, none, false, Sign::Locked, "LOCKED OTHER_LOCK_HINT: -"},
        {{{&R::sim, "blocked"}}, none, false, Sign::Refused, "BLOCKED BLOCKED_HINT: -"},
        {{{&R::sim, "error"}}, none, false, Sign::NoSim, "SIM_ERROR SIM_ERROR_HINT: -"},
        {{{&R::sim, ""}}, none, false, Sign::Disconnected, "DISCONNECTED DISCONNECTED_HINT: connect"},
        {{{&R::state, ""}}, none, false, Sign::NoModem, "NO_MODEM NO_MODEM_HINT: help"},
        {{{&R::state, "rejected"}}, none, false, Sign::Refused, "REJECTED REJECTED_HINT: help"},
        {{{&R::state, "failed"}}, none, false, Sign::Failed, "FAILED FAILED_HINT: help"},
        {{{&R::state, "failed"}, {&R::stateReason, "unknown"}},
         none,
         false,
         Sign::Failed,
         "FAILED FAILED_HINT: help"},
        {{{&R::state, "failed"}, {&R::stateReason, "sim-error"}},
         none,
         false,
         Sign::Failed,
         "FAILED SIM_ERROR_HINT: -"},
        {{{&R::state, "failed"}, {&R::stateReason, "no-profile"}},
         none,
         false,
         Sign::NoSim,
         "FAILED NO_PROFILE_HINT: -"},
        {{{&R::state, "failed"}, {&R::stateReason, "capabilities"}},
         none,
         false,
         Sign::Failed,
         "FAILED CAPABILITIES_HINT: -"},
        {{{&R::state, ""}, {&R::problem, "no-bus"}}, none, false, Sign::Failed, "NO_SEARCH NO_BUS_HINT: -"},
        {{{&R::state, ""}, {&R::problem, "no-modemmanager"}},
         none,
         false,
         Sign::Failed,
         "NO_SEARCH NO_MODEMMANAGER_HINT: -"},
    };
    for (const auto& [values, failure, isHomeOnly, sign, expected] : rows) {
        const Meaning meaning = meaningOf(reportWith(values, failure, isHomeOnly));
        QCOMPARE(said(meaning), QString(expected));
        QVERIFY2(meaning.sign == sign, expected);
    }
}

void TestMeaning::since()
{
    const QDateTime start({2024, 2, 29}, {23, 5, 9});
    const std::tuple<qint64, QLocale, QString> rows[] = {
        {0, QLocale("de"), "23:05 (0:00:00)"},
        {3 * 60 + 7, QLocale("de"), "23:05 (0:03:07)"},
        {-30, QLocale("de"), "23:05 (0:00:00)"}, // another clock
        {26 * 3600 + 59, QLocale("de"), "29.02.24 23:05 (26:00:59)"},
        {3 * 60 + 7, QLocale("ar-SA"), "١١:٠٥ م (٠:٠٣:٠٧)"},
    };
    for (const auto& [seconds, locale, expected] : rows)
        QCOMPARE(sinceText(start, start.addSecs(seconds), locale), expected);
}

QTEST_GUILESS_MAIN(TestMeaning)
#include "tst_meaning.moc"
