// What the page says about each combination of values.
#include "Meaning.h"
#include "ModemReport.h"
#include "Samples.h"

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

/// A modem that could connect, with some values replaced: "sim=pin failure=12 home-only".
R reportWith(const QString& values)
{
    static const QHash<QString, QString R::*> members = {{"problem", &R::problem},
                                                         {"connection-problem", &R::connectionProblem},
                                                         {"state", &R::state},
                                                         {"reason", &R::stateReason},
                                                         {"sim", &R::sim},
                                                         {"registration", &R::registration},
                                                         {"connection", &R::connection}};
    R report{{}, {}, "available", {}, "ready", "home", "disconnected"};
    for (const QString& word : values.split(' ', Qt::SkipEmptyParts)) {
        const QString key = word.section('=', 0, 0), value = word.section('=', 1);
        if (members.contains(key))
            report.*members[key] = value;
        else if (key == "failure")
            report.failure = value.toInt();
        else
            report.isHomeOnly = key == "home-only";
    }
    return report;
}

/// "Locked | LOCKED PIN_HINT: pin": the picture, the strings, and the button's action if it is on.
QString said(const Meaning& meaning)
{
    const QStringList signs = {"NoModem",      "NoSim",      "Locked",    "Searching", "Refused",
                               "Disconnected", "Connecting", "Connected", "Failed"}; // as in Sign
    const char* const actions[] = {"-",   "connect", "cancel",  "disconnect", "pin",
                                   "puk", "network", "roaming", "help"}; // as in ConnectionAction
    QStringList words;
    for (const char* id : {meaning.title, meaning.sentence})
        words << (id ? QString(id).remove("IDS_CONN_") : QString::number(meaning.failure));
    return signs.value(int(meaning.sign) - int(Look::Sign::NoModem)) + " | " + words.join(' ') + ": " +
           (meaning.isPossible ? actions[int(meaning.action)] : "off");
}

} // namespace

void TestMeaning::states()
{
    for (const QStringList& row : tableIn(MEANINGS))
        QCOMPARE(row[0] + " | " + said(meaningOf(reportWith(row[0]))), row.join(" | "));
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
