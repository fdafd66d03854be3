// What is counted, for which month, how near the limit is, and what is kept in the files.
#include "Account.h"
#include "TestHome.h"

#include <tuple>

class TestDataUse : public QObject
{
    Q_OBJECT

private slots:
    void periods();
    void growths();
    void limits();
    void warnings();
    void files();
    void tables();
    void speeds();
    void axes();
    void accounts();
    void damagedFiles();
};

namespace {

const TestHome Home;

constexpr quint64 Most = std::numeric_limits<quint64>::max();

const char Imsi[] = "262011234567890";

QDate date(const char* iso)
{
    return QDate::fromString(iso, Qt::ISODate);
}

QString onlyFile()
{
    const QDir folder(homeFile("data-use"));
    return folder.filePath(folder.entryList({"*.txt"}, QDir::Files).value(0));
}

} // namespace

/// Each day is in one period, which begins on the chosen day or on the last one of the month.
void TestDataUse::periods()
{
    for (int firstDay = 1; firstDay <= 31; ++firstDay) {
        Period period = periodOf(date("2023-01-01"), firstDay);
        for (QDate day = date("2023-01-01"); day < date("2025-01-01"); day = day.addDays(1)) {
            if (day > period.last)
                QCOMPARE(std::exchange(period, periodOf(day, firstDay)).last.addDays(1), day);
            QCOMPARE(periodOf(day, firstDay).first, period.first);
            QCOMPARE(period.first.day(), std::min(firstDay, period.first.daysInMonth()));
        }
    }
}

void TestDataUse::growths()
{
    const std::tuple<Traffic, Traffic, Traffic> rows[] = {
        {{10, 5}, {30, 6}, {20, 1}},
        {{10, 5}, {3, 2}, {3, 2}},         // restarted
        {{0xffffffff, 5}, {4, 7}, {4, 2}}, // one of them has overflowed
        {{0, 0}, {Most, 1}, {Most, 1}},
    };
    for (const auto& [before, now, expected] : rows)
        QVERIFY(growth(before, now) == expected);
    Traffic sum{Most, 1};
    QVERIFY((sum += {1, 1}) == (Traffic{Most, 2}) && sum.total() == Most);
}

void TestDataUse::limits()
{
    QCOMPARE(DataLimit().bytes(1024), Q_UINT64_C(0)); // off
    QCOMPARE(DataLimit{true}.bytes(1024), Q_UINT64_C(10737418240));
    const std::tuple<quint64, quint64, int, LimitState> rows[] = {
        {999, 0, 0, LimitState::Below},
        {799, 1000, 79, LimitState::Below},
        {800, 1000, 80, LimitState::Near},
        {1000, 1000, 100, LimitState::Reached},
        {Most, 1, std::numeric_limits<int>::max(), LimitState::Reached},
    };
    for (const auto& [used, most, share, state] : rows) {
        QCOMPARE(shareOf(used, most), share);
        QCOMPARE(limitState(used, most, 80), state);
    }
    DataLimit{true, 250, DataLimit::Megabytes, 90, 31}.save();
    const DataLimit loaded = DataLimit::load();
    QVERIFY(loaded.bytes(1000) == 250000000 && loaded.warnAt == 90 && loaded.firstDay == 31);
    DataLimit{true, -5, DataLimit::Gigabytes, 100, 0}.save(); // somebody has edited the file
    const DataLimit usual = DataLimit::load();
    QVERIFY(usual.bytes(1000) == 10000000000 && usual.warnAt == 80 && usual.firstDay == 1);
}

/// Once for each state and period, and again when the limit was raised in between.
void TestDataUse::warnings()
{
    using S = LimitState;
    const Period march = periodOf(date("2024-03-10"), 1);
    const Period april = periodOf(date("2024-04-10"), 1);
    const std::tuple<S, Period, bool> steps[] = {
        {S::Below, march, false},  {S::Near, march, true},     {S::Near, march, false},
        {S::Reached, march, true}, {S::Reached, march, false}, {S::Below, march, false},
        {S::Reached, march, true}, {S::Near, april, true},     {S::Near, april, false},
    };
    History history;
    for (const auto& [state, period, isNew] : steps) {
        QCOMPARE(history.noteState(state, period), isNew);
        int badLines = 0;
        history = historyFrom(textOf(history), badLines); // a restart changes nothing
        QCOMPARE(badLines, 0);
    }
}

void TestDataUse::files()
{
    History history;
    QVERIFY(history.take({1000, 100}, date("2024-03-30")) == Traffic());
    QVERIFY(history.take({1500, 100}, date("2024-03-31")) == (Traffic{500, 0}));
    history.take({1700, 150}, date("2024-04-01"));
    history.take({30, 5}, date("2024-04-02")); // restarted
    history.take({90, 5}, date("2024-03-31")); // the clock was set back
    int badLines = 0;
    const History read = historyFrom(textOf(history), badLines);
    QCOMPARE(badLines, 0);
    QVERIFY(read.days == (History::Days{{date("2024-03-31"), {560, 0}},
                                        {date("2024-04-01"), {200, 50}},
                                        {date("2024-04-02"), {30, 5}}}));
    QVERIFY(read.counters == (Traffic{90, 5}));
    QVERIFY(read.sum({date("2024-04-01"), date("2024-04-02")}) == (Traffic{230, 55}));

    const History repaired = historyFrom("\xff\xfe 3\n2024-02-30 1 1\n2024-03-01 1\r\n2024-03-02 -1 1\n"
                                         "2024-03-03 5 6\r\nwarned 2024-03-01 7\ncounters x 1\n2024-03-04 1",
                                         badLines);
    QCOMPARE(badLines, 7);
    QVERIFY(repaired.days == (History::Days{{date("2024-03-03"), {5, 6}}}) && !repaired.counters);

    for (int day = 0; day < 2000; ++day)
        history.days.insert(date("2025-01-01").addDays(day), {1, 1});
    const History kept = historyFrom(textOf(history), badLines);
    QCOMPARE(kept.days.size(), 800);
    QCOMPARE(kept.days.lastKey(), history.days.lastKey());
}

void TestDataUse::tables()
{
    const History::Days days = {{date("2024-03-01"), {5, 0}}, {date("2024-02-29"), {1234567890123, 6}}};
    QCOMPARE(csvOf(days, {"Tag", "\"Empfangen\", Byte", "Gesendet"}),
             QByteArray("\"Tag\",\"\"\"Empfangen\"\", Byte\",\"Gesendet\"\r\n"
                        "2024-02-29,1234567890123,6\r\n2024-03-01,5,0\r\n"));
}

void TestDataUse::speeds()
{
    SpeedLog log;
    log.add({500, 0}, 1000); // nobody knows since when
    log.add({1000, 10}, 1300);
    QVERIFY(log.steps().isEmpty());
    log.add({1000, 10}, 2000);
    QCOMPARE(log.steps().size(), 1);
    QVERIFY(log.steps().last().perSecond == (Traffic{2500, 20}));
    log.restart(60000);
    log.add({0, 0}, 61000);
    log.add({120000, 0}, 121000); // once a minute
    QCOMPARE(log.steps().last().begin, 61000);
    QVERIFY(log.steps().last().perSecond == (Traffic{2000, 0}));
    log.add({Most, 0}, 121000 + SpeedLog::Span);
    QCOMPARE(log.steps().size(), 1);
    log.add({Most, 0}, 122000 + SpeedLog::Span);
    QCOMPARE(log.steps().last().perSecond.received, Q_UINT64_C(1) << 60);
}

void TestDataUse::axes()
{
    constexpr quint64 kilo = 1024;
    constexpr quint64 giga = kilo * kilo * kilo;
    const std::tuple<quint64, int, quint64> rows[] = {
        {0, 1024, kilo},
        {kilo + 1, 1024, 2 * kilo},
        {300 * kilo, 1024, 500 * kilo},
        {1001 * kilo, 1024, kilo * kilo},
        {999999, 1000, 1000000},
        {3000 * giga, 1024, 5000 * giga},
    };
    for (const auto& [largest, base, top] : rows)
        QCOMPARE(axisTop(largest, base), top);
    QVERIFY(axisTop(Most, 1000) > 0); // ends
}

/// Counting goes on after a restart of the application, also over a new connection.
void TestDataUse::accounts()
{
    const QDate today = date("2024-03-01");
    {
        Account account(Imsi);
        const std::tuple<Traffic, qint64, Traffic> steps[] = {
            {{5000, 500}, 100, {5000, 500}}, // the connection is older than the application
            {{6000, 500}, 100, {6000, 500}},
            {{6000, 500}, 200, {0, 0}},
            {{6500, 510}, 200, {500, 10}},
        };
        qint64 now = 0;
        for (const auto& [counters, since, sinceConnecting] : steps) {
            account.read({counters, since}, today, now += 1000);
            QVERIFY(account.sinceConnecting() == sinceConnecting);
        }
        account.disconnect();
        QVERIFY(!account.isConnected());
        account.read({{7000, 510}, 200}, today, 9000); // has gone on in between
        account.read({{7000, 520}, 200}, today, 10000);
        QVERIFY(account.sinceConnecting() == (Traffic{0, 10}));
        QCOMPARE(account.speeds().steps().last().begin, 9000);
        account.save();
        QVERIFY(!onlyFile().contains(Imsi) && !contentOf(onlyFile()).contains(Imsi));
    }
    Account account(Imsi);
    account.read({{7300, 530}, 300}, today.addDays(1), 0);
    QVERIFY(account.history().days == (History::Days{{today, {2000, 20}}, {today.addDays(1), {300, 10}}}));
    account.save();
    const QString file = onlyFile();
    QVERIFY(QFile::rename(file, file + ".kept"));
    account.read({{7300, 530}, 300}, today.addDays(1), 1000);
    account.save(); // nothing has changed
    QVERIFY(!QFile::exists(file) && QFile::rename(file + ".kept", file));

    Account exchanged("another");
    exchanged.forgetCounters();
    exchanged.read({{9000, 900}, 300}, today, 0);
    QVERIFY(exchanged.history().days.isEmpty() && exchanged.sinceConnecting() == Traffic());
}

/// What makes sense is counted on; what cannot be read is left alone.
void TestDataUse::damagedFiles()
{
    const QString file = onlyFile();
    const auto countAfter = [](const char* warning) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
        Account account(Imsi);
        for (const quint64 bytes : {1, 2, 3}) {
            account.read({{bytes, bytes}, 1}, date("2024-03-02"), 0);
            account.save(); // logs once
        }
    };
    const QByteArray damaged = "2024-03-01 1 1\nnonsense\n";
    writeFile(file, damaged);
    countAfter("data-use/[0-9a-f]+.txt: 1 lines are ignored");
    QVERIFY(contentOf(file).contains("2024-03-01 1 1\n2024-03-02 2 2\n"));
    QCOMPARE(contentOf(file + ".damaged"), damaged);

    const QByteArray huge(2 << 20, 'x'); // not ours
    writeFile(file, huge);
    countAfter("cannot be read");
    QCOMPARE(contentOf(file).size(), huge.size());

#ifdef Q_OS_LINUX
    QVERIFY(QFile::remove(file) && QFile::link("/proc/self/mem", file)); // can be opened, but not read
    countAfter("cannot be read");
    QVERIFY(QFileInfo(file).isSymLink());
#endif

    QDir(QFileInfo(file).path()).removeRecursively();
    writeFile(QFileInfo(file).path(), {}); // no folder can be made
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be written"));
    Account account(Imsi);
    account.read({{1, 1}, 1}, date("2024-03-02"), 0);
    account.save();
    account.save(); // logs once
    QVERIFY(QFile::remove(QFileInfo(file).path()));
    account.save(); // nothing has changed, but it is not written yet
    QVERIFY(QFile::exists(file));
}

QTEST_GUILESS_MAIN(TestDataUse)
#include "tst_datause.moc"
