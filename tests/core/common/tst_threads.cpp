// Counting workers and waiting for them. The limit of the wait applies to the whole process, hence a test
// program of its own; the last test uses up what the others leave.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"

#include <QElapsedTimer>
#include <QThread>

#include <stdexcept>
#include <thread>

namespace {

const QString Increments = "{time}: {file}: ThreadCountInc:threadCount is ";
const QString Decrements = "{time}: {file}: ThreadCountDec: threadCount is ";
const QString Wakes = "{time}: {file}: ThreadCountDec:ThreadFinished.wakeAll();";
const QString WaitBegins = "{time}: {file}: WaitThreadsStop: start ThreadFinished.wait";
const QString WaitEnds = "{time}: {file}: WaitThreadsStop: end ThreadFinished.wait";

void runTwice(void (*run)())
{
    std::thread other(run);
    run();
    other.join();
}

} // namespace

class TestThreads : public CoreTest
{
    Q_OBJECT

private slots:
    void init()
    {
        CoreTest::init();
        log().allow("{time}: {file}: {func}:{*}hread{*}");
    }
    void cleanup()
    {
        m_rounds += log().count(WaitBegins);
        CoreTest::cleanup();
    }
    void counting();
    void waitWithoutWorkers();
    void lastWorkerWakesAll();
    void workerThatNeverEnds();

private:
    /// A host with one plugin.
    void publishHost(const QString& clsid = PluginIds::NotifyService)
    {
        publish(makeContainer({{clsid, "TestAlpha"}}));
    }

    int m_rounds = 0; ///< of waiting, in all tests
};

void TestThreads::counting()
{
    CommonUtils::ThreadCountInc("Owner%s", "name");
    CommonUtils::ThreadCountInc({}, {});
    for (const int left : {1, 0, -1})
        QCOMPARE(CommonUtils::ThreadCountDec("Owner", "name"), left);
    VERIFY_LOGGED_IN_ORDER(Increments + "1; thread: Owner%s: name",
                           Increments + "2; thread: : ", Decrements + "1; thread: Owner: name",
                           Decrements + "0; thread: Owner: name", Wakes,
                           Decrements + "-1; thread: Owner: name", Wakes);
    QCOMPARE(log().lines(QtWarningMsg).size(), 7);
    CommonUtils::ThreadCountInc({}, {}); // 0 again

    // A count and its log line are one step.
    runTwice([] {
        for (int round = 0; round < 1000; ++round) {
            CommonUtils::ThreadCountInc({}, {});
            CommonUtils::ThreadCountDec({}, {});
        }
    });
    int count = 0;
    for (const QString& line : log().lines("{*}threadCount is {*}").mid(6)) {
        count += line.contains("ThreadCountInc") ? 1 : -1;
        QVERIFY2(line.contains(QString("threadCount is %1;").arg(count)), qPrintable(line));
    }
    QCOMPARE(count, 0);
}

void TestThreads::waitWithoutWorkers()
{
    CommonUtils::ThreadCountInc({}, {});
    CommonUtils::WaitThreadsStop(); // no host, no wait
    CommonUtils::ThreadCountDec({}, {});
    QVERIFY(log().contains("{file}: WaitThreadsStop: Startup::GetPluginContainer failed"));

    log().allow("StopThreads: plugin notification service threw: broken");
    recorder().setHook("TestAlpha.StopThreads", [] { throw std::runtime_error("broken"); });
    for (const QString clsid : {"C986A689-A5F6-4215-84BD-39BA626F1F57", "other"}) {
        publishHost(clsid);
        CommonUtils::WaitThreadsStop();
    }
    recorder().setAnswer("TestAlpha.QueryInterface(0x2011)", QVariant::fromValue<QObject*>(this));
    publishHost(); // not an INotifyService
    CommonUtils::WaitThreadsStop();
    QCOMPARE(recorder().calls("TestAlpha.StopThreads").size(), 1);
    QCOMPARE(log().count("{file}: WaitThreadsStop: stop thread called"), 1);
    QVERIFY(!log().contains(WaitBegins));
    QCOMPARE(log().lines(QtWarningMsg, WaitEnds).size(), 3);
}

/// Both waiters end before their 500 ms are over. On a busy machine that may take a few attempts.
void TestThreads::lastWorkerWakesAll()
{
    publishHost("other");
    qint64 shortest = 1000;
    for (int attempt = 1; attempt <= 8 && shortest > 400; ++attempt) {
        CommonUtils::ThreadCountInc({}, {});
        std::thread waiters([] { runTwice(CommonUtils::WaitThreadsStop); });
        log().waitFor(WaitBegins, 2 * attempt);
        QElapsedTimer timer;
        timer.start();
        CommonUtils::ThreadCountDec({}, {});
        waiters.join();
        shortest = qMin(shortest, timer.elapsed());
    }
    QVERIFY2(shortest <= 400, qPrintable(QString::number(shortest)));
    VERIFY_LOGGED_IN_ORDER(WaitBegins, WaitBegins, Wakes, WaitEnds, WaitEnds);
}

void TestThreads::workerThatNeverEnds()
{
    publishHost();
    recorder().setHook("TestAlpha.StopThreads", [this] { QVERIFY(!log().contains(WaitBegins)); });
    CommonUtils::ThreadCountInc("Worker", "stuck");
    QElapsedTimer timer;
    timer.start();
    CommonUtils::WaitThreadsStop();
    const int rounds = log().count(WaitBegins);
    QCOMPARE(m_rounds + rounds, 20);
    QVERIFY(timer.elapsed() / 450 >= rounds);
    recorder().setHook("TestAlpha.StopThreads", {});
    CommonUtils::WaitThreadsStop(); // nothing is left of the limit
    QCOMPARE(log().count(WaitBegins), rounds);
    QCOMPARE(log().count(WaitEnds), 2);
    QCOMPARE(recorder().calls("TestAlpha.StopThreads").size(), 2);
    QCOMPARE(recorder().calls("TestAlpha.StopThreads")[0].thread, QThread::currentThreadId());
    QCOMPARE(CommonUtils::ThreadCountDec("Worker", "stuck"), 0);
}

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
