// What is counted, for which month, how near the limit is, and what is kept in the files.
#include "Account.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

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

QDate date(const char* iso)
{
    return QDate::fromString(iso, Qt::ISODate);
}

QString onlyFile()
{
    const QDir folder(qEnvironmentVariable("QRVL_USER_DIR") + "/data-use");
    const QStringList files = folder.entryList(QDir::Files);
    return files.size() == 1 ? folder.filePath(files.first()) : QString();
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

} // namespace

void TestDataUse::periods()
{
    const std::tuple<const char*, int, const char*, const char*> rows[] = {
        {"2024-03-01", 1, "2024-03-01", "2024-03-31"},  {"2024-03-31", 1, "2024-03-01", "2024-03-31"},
        {"2024-03-14", 15, "2024-02-15", "2024-03-14"}, {"2024-03-15", 15, "2024-03-15", "2024-04-14"},
        {"2024-01-05", 29, "2023-12-29", "2024-01-28"}, {"2023-02-28", 29, "2023-02-28", "2023-03-28"},
        {"2024-02-28", 29, "2024-01-29", "2024-02-28"}, {"2024-02-29", 31, "2024-02-29", "2024-03-30"},
        {"2023-03-01", 31, "2023-02-28", "2023-03-30"}, {"2024-04-30", 31, "2024-04-30", "2024-05-30"},
        {"2024-05-30", 31, "2024-04-30", "2024-05-30"},
    };
    for (const auto& [day, firstDay, first, last] : rows) {
        const Period period = periodOf(date(day), firstDay);
        QCOMPARE(period.first, date(first));
        QCOMPARE(period.last, date(last));
    }
    // No day is in two periods or in none.
    for (int firstDay = 1; firstDay <= 31; ++firstDay) {
        Period period = periodOf(date("2023-01-01"), firstDay);
        for (QDate day = date("2023-01-01"); day < date("2025-01-01"); day = day.addDays(1)) {
            if (day > period.last)
                QCOMPARE(std::exchange(period, periodOf(day, firstDay)).last.addDays(1), day);
            QCOMPARE(periodOf(day, firstDay).first, period.first);
        }
    }
}

void TestDataUse::growths()
{
    const std::tuple<Traffic, Traffic, Traffic> rows[] = {
        {{0, 0}, {0, 0}, {0, 0}},
        {{10, 5}, {30, 6}, {20, 1}},
        {{10, 5}, {3, 2}, {3, 2}},                     // restarted
        {{10, 5}, {3, 7}, {3, 2}},                     // one of them has overflowed
        {{Q_UINT64_C(0xffffffff), 0}, {4, 0}, {4, 0}}, // 32 bits
        {{0, 0}, {~Q_UINT64_C(0), 1}, {~Q_UINT64_C(0), 1}},
    };
    for (const auto& [before, now, expected] : rows)
        QVERIFY(growth(before, now) == expected);
}

void TestDataUse::limits()
{
    DataLimit limit;
    QCOMPARE(limit.bytes(1024), Q_UINT64_C(0)); // off
    limit.isOn = true;
    QCOMPARE(limit.bytes(1024), Q_UINT64_C(10737418240));
    limit.unit = DataLimit::Megabytes;
    QCOMPARE(limit.bytes(1000), Q_UINT64_C(10000000));
    const std::tuple<quint64, quint64, int, LimitState> rows[] = {
        {999, 0, 0, LimitState::Below},
        {0, 1000, 0, LimitState::Below},
        {799, 1000, 79, LimitState::Below},
        {800, 1000, 80, LimitState::Near},
        {999, 1000, 99, LimitState::Near},
        {1000, 1000, 100, LimitState::Reached},
        {3500, 1000, 350, LimitState::Reached},
        {~Q_UINT64_C(0), 1, std::numeric_limits<int>::max(), LimitState::Reached},
    };
    for (const auto& [used, most, share, state] : rows) {
        QCOMPARE(shareOf(used, most), share);
        QCOMPARE(limitState(used, most, 80), state);
    }
    DataLimit{true, 250, DataLimit::Megabytes, 90, 31}.save();
    const DataLimit loaded = DataLimit::load();
    QCOMPARE(loaded.bytes(1000), Q_UINT64_C(250000000));
    QCOMPARE(loaded.warnAt, 90);
    QCOMPARE(loaded.firstDay, 31);
    DataLimit{true, -5, DataLimit::Gigabytes, 100, 0}.save(); // somebody has edited the file
    QCOMPARE(DataLimit::load().bytes(1000), Q_UINT64_C(10000000000));
    QCOMPARE(DataLimit::load().warnAt, 80);
    QCOMPARE(DataLimit::load().firstDay, 1);
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
    QVERIFY(repaired.days == (History::Days{{date("2024-03-03"), {5, 6}}}));
    QVERIFY(!repaired.counters);

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
    log.add({0, 0}, 121000 + SpeedLog::Span);
    QCOMPARE(log.steps().size(), 1);
}

void TestDataUse::axes()
{
    constexpr quint64 kilo = 1024;
    const std::tuple<quint64, int, quint64> rows[] = {
        {0, 1024, kilo},
        {kilo, 1024, kilo},
        {kilo + 1, 1024, 2 * kilo},
        {300 * kilo, 1024, 500 * kilo},
        {1001 * kilo, 1024, kilo * kilo},
        {kilo * kilo + 1, 1024, 2 * kilo * kilo},
        {999999, 1000, 1000000},
        {3000000, 1000, 5000000},
        {3000 * kilo * kilo * kilo, 1024, 5000 * kilo * kilo * kilo},
    };
    for (const auto& [largest, base, top] : rows)
        QCOMPARE(axisTop(largest, base), top);
    QVERIFY(axisTop(~Q_UINT64_C(0), 1000) > 0); // ends
}

/// Counting goes on after a restart of the application, also over a new connection.
void TestDataUse::accounts()
{
    const QString imsi = "262011234567890";
    const QDate today = date("2024-03-01");
    {
        Account account(imsi);
        account.read({{5000, 500}, 100}, today, 0); // the connection is older than the application
        QVERIFY(account.sinceConnecting() == (Traffic{5000, 500}));
        account.read({{6000, 500}, 100}, today, 1000);
        QVERIFY(account.sinceConnecting() == (Traffic{6000, 500}));
        account.read({{6000, 500}, 200}, today, 2000);
        QVERIFY(account.sinceConnecting() == Traffic());
        account.read({{6500, 510}, 200}, today, 3000);
        account.disconnect();
        QVERIFY(!account.isConnected());
        account.read({{7000, 510}, 200}, today, 9000); // has gone on in between
        account.read({{7000, 520}, 200}, today, 10000);
        QVERIFY(account.sinceConnecting() == (Traffic{0, 10}));
        QCOMPARE(account.speeds().steps().last().begin, 9000);
        account.save();
    }
    const QString file = onlyFile();
    QVERIFY(!file.isEmpty() && !file.contains(imsi) && !contentOf(file).contains(imsi.toLatin1()));
    Account account(imsi);
    account.read({{7300, 530}, 300}, today.addDays(1), 0);
    QVERIFY(account.history().days == (History::Days{{today, {2000, 20}}, {today.addDays(1), {300, 10}}}));
    QVERIFY(Account("another").history().days.isEmpty());
}

void TestDataUse::damagedFiles()
{
    const QString file = onlyFile();
    const auto countIn = [](Account& account) {
        account.read({{1, 1}, 1}, date("2024-03-02"), 0);
        account.read({{2, 2}, 1}, date("2024-03-02"), 1000);
        account.save();
    };
    write(file, "2024-03-01 1 1\nnonsense\n");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("data-use/[0-9a-f]+.txt: 1 lines are ignored"));
    Account repaired("262011234567890");
    countIn(repaired);
    QVERIFY(contentOf(file).contains("2024-03-01 1 1\n2024-03-02 1 1\n"));

    const QByteArray huge(2 << 20, 'x'); // not ours
    write(file, huge);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be read"));
    Account untouched("262011234567890");
    countIn(untouched);
    QCOMPARE(contentOf(file).size(), huge.size());

    QDir(QFileInfo(file).path()).removeRecursively();
    write(QFileInfo(file).path(), {}); // no folder can be made
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot be written"));
    Account lost("262011234567890");
    countIn(lost);
    countIn(lost); // says so once
}

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("QRVL_USER_DIR", home.path().toLocal8Bit());
    QCoreApplication application(argc, argv);
    TestDataUse test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_datause.moc"
