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

/// "LOCKED PIN_HINT", with the button's action if it is on.
QString said(const Meaning& meaning)
{
    const char* const actions[] = {"-",   "connect", "cancel",  "disconnect", "pin",
                                   "puk", "network", "roaming", "help"}; // as in Action
    QStringList words;
    for (const char* id : {meaning.title, meaning.sentence})
        words << (id ? QString(id).remove("IDS_CONN_") : QString::number(meaning.failure));
    return words.join(' ') + ": " + (meaning.isPossible ? actions[int(meaning.action)] : "off");
}

} // namespace

void TestMeaning::states()
{
    constexpr int refused = QRVL_ERROR_REFUSED;
    const QString ready = "DISCONNECTED DISCONNECTED_HINT: connect";
    struct Row
    {
        Sign sign;
        QString said;
        Values values = {};
        int failure = QRVL_OK;
        bool isHomeOnly = false;
    };
    const Row rows[] = {
        {Sign::Disconnected, ready},
        {Sign::Disconnected, ready, {}, QRVL_OK, true},
        {Sign::Failed, "12 12: connect", {}, refused},
        {Sign::Disconnected, ready, {{&R::registration, "idle"}}},
        {Sign::Disconnected, ready, {{&R::registration, "roaming"}}},
        {Sign::Disconnected,
         "DISCONNECTED ROAMING_HINT: roaming",
         {{&R::registration, "roaming"}},
         refused,
         true},
        {Sign::Searching, "SEARCHING SEARCHING_HINT: network", {{&R::registration, "searching"}}, refused},
        {Sign::Refused, "DENIED DENIED_HINT: network", {{&R::registration, "denied"}}},
        {Sign::Failed,
         "DISCONNECTED NO_NETWORKMANAGER_HINT: -",
         {{&R::connectionProblem, "no-networkmanager"}}},
        {Sign::Failed, "DISCONNECTED NO_BUS_HINT: -", {{&R::connectionProblem, "no-bus"}}},
        {Sign::Connecting,
         "CONNECTING CONNECTING_HINT: cancel",
         {{&R::connection, "connecting"}, {&R::registration, "searching"}}},
        {Sign::Connected,
         "CONNECTED CONNECTED_HINT: disconnect",
         {{&R::connection, "connected"}, {&R::registration, "roaming"}},
         QRVL_OK,
         true},
        {Sign::Connected, "CONNECTED 12: disconnect", {{&R::connection, "connected"}}, refused},
        {Sign::Connecting, "DISCONNECTING DISCONNECTING_HINT: off", {{&R::connection, "disconnecting"}}},
        {Sign::NoSim, "NO_SIM NO_SIM_HINT: -", {{&R::sim, "absent"}, {&R::connection, ""}}},
        {Sign::Locked, "LOCKED PIN_HINT: pin", {{&R::sim, "pin"}, {&R::registration, "searching"}}, refused},
        {Sign::Locked, "LOCKED PUK_HINT: puk", {{&R::sim, "puk"}}},
        {Sign::Locked, "LOCKED OTHER_LOCK_HINT: -", {{&R::sim, "locked"}}},
        {Sign::Refused, "BLOCKED BLOCKED_HINT: -", {{&R::sim, "blocked"}}},
        {Sign::NoSim, "SIM_ERROR SIM_ERROR_HINT: -", {{&R::sim, "error"}}},
        {Sign::Disconnected, ready, {{&R::sim, ""}}},
        {Sign::NoModem, "NO_MODEM NO_MODEM_HINT: help", {{&R::state, ""}}},
        {Sign::Refused, "REJECTED REJECTED_HINT: help", {{&R::state, "rejected"}}},
        {Sign::Failed, "FAILED FAILED_HINT: help", {{&R::state, "failed"}}},
        {Sign::Failed, "FAILED SIM_ERROR_HINT: -", {{&R::state, "failed"}, {&R::stateReason, "sim-error"}}},
        {Sign::NoSim, "FAILED NO_PROFILE_HINT: -", {{&R::state, "failed"}, {&R::stateReason, "no-profile"}}},
        {Sign::Failed,
         "FAILED CAPABILITIES_HINT: -",
         {{&R::state, "failed"}, {&R::stateReason, "capabilities"}}},
        {Sign::Failed, "NO_SEARCH NO_BUS_HINT: -", {{&R::state, ""}, {&R::problem, "no-bus"}}},
        {Sign::Failed,
         "NO_SEARCH NO_MODEMMANAGER_HINT: -",
         {{&R::state, ""}, {&R::problem, "no-modemmanager"}}},
    };
    for (const Row& row : rows) {
        // A modem that could connect, with some values replaced.
        R report{{}, {}, "available", {}, "ready", "home", "disconnected", row.failure, row.isHomeOnly};
        for (const auto& [key, value] : row.values)
            report.*key = value;
        const Meaning meaning = meaningOf(report);
        QCOMPARE(said(meaning), row.said);
        QVERIFY2(meaning.sign == row.sign, qPrintable(row.said));
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
