// The bookkeeping of worker threads, and the bounded wait for them. The limit of the wait is one for the
// whole process, hence a test program of its own and the order of the tests.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"
#include "PublishedHost.h"

#include <QThread>

#include <array>
#include <stdexcept>
#include <thread>

class TestThreads : public CoreTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void counting();
    void countingFromManyThreads();
    void waitWithoutHost();
    void waitWithoutWorkers();
    void waitForWorkers();
    void waitForWorkerThatNeverEnds();

private:
    /// A host with one plugin, the notification service.
    void publishHost(const QString& clsid = PluginIds::NotifyService)
    {
        m_host = makeContainer({{clsid, "TestAlpha"}});
        PublishedHost::publish(m_host.get());
    }

    static int stopRequests() { return recorder().calls("TestAlpha.StopThreads").size(); }

    std::unique_ptr<TestContainer> m_host;
    int m_rounds = 0; ///< of waiting, over all tests
};

namespace {

const QString WaitBegins = "{time}: {file}: WaitThreadsStop: start ThreadFinished.wait";
const QString WaitEnds = "{time}: {file}: WaitThreadsStop: end ThreadFinished.wait";
const QString Wakes = "{time}: {file}: ThreadCountDec:ThreadFinished.wakeAll();";

} // namespace

void TestThreads::init()
{
    CoreTest::init();
    log().allow("{time}: {file}: ThreadCount{*}");
    log().allow(WaitBegins);
    log().allow(WaitEnds);
}

void TestThreads::cleanup()
{
    PublishedHost::publish(nullptr);
    m_host.reset();
    checkLog();
}

void TestThreads::counting()
{
    CommonUtils::ThreadCountInc("Owner%s", "name");
    QCOMPARE(log().lines(QtWarningMsg),
             QStringList(log().lines("{time}: {file}: ThreadCountInc:threadCount is 1; "
                                     "thread: Owner%s: name")));
    CommonUtils::ThreadCountInc({}, {});
    QCOMPARE(CommonUtils::ThreadCountDec("Owner", "name"), 1);
    QVERIFY(log().contains("{time}: {file}: ThreadCountDec: threadCount is 1; thread: Owner: name"));
    QVERIFY(!log().contains(Wakes));
    QCOMPARE(CommonUtils::ThreadCountDec({}, {}), 0);
    QCOMPARE(CommonUtils::ThreadCountDec({}, {}), -1);
    QCOMPARE(log().lines(QtWarningMsg, Wakes).size(), 2);
    CommonUtils::ThreadCountInc({}, {}); // for the next tests
}

void TestThreads::countingFromManyThreads()
{
    std::array<std::thread, 8> threads;
    for (std::thread& thread : threads)
        thread = std::thread([] {
            for (int round = 0; round < 100; ++round) {
                CommonUtils::ThreadCountInc("Worker", QString::number(round));
                CommonUtils::ThreadCountDec("Worker", QString::number(round));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    CommonUtils::ThreadCountInc({}, {});
    QCOMPARE(CommonUtils::ThreadCountDec({}, {}), 0);
}

void TestThreads::waitWithoutHost()
{
    CommonUtils::ThreadCountInc({}, {});
    CommonUtils::WaitThreadsStop();
    CommonUtils::ThreadCountDec({}, {});
    QVERIFY(log().contains("{file}: WaitThreadsStop: Startup::GetPluginContainer failed"));
    QVERIFY(!log().contains(WaitBegins) && !log().contains(WaitEnds));
}

void TestThreads::waitWithoutWorkers()
{
    log().allow("StopThreads: plugin notification service threw: broken");
    const auto wait = [this](const QString& clsid) {
        recorder().setHook("TestAlpha.StopThreads", [] { throw std::runtime_error("broken"); });
        publishHost(clsid);
        CommonUtils::WaitThreadsStop();
        return stopRequests();
    };
    QCOMPARE(wait(PluginIds::NotifyService), 1);
    QCOMPARE(wait("other"), 1);
    recorder().setAnswer("TestAlpha.QueryInterface(0x2011)", QVariant::fromValue<QObject*>(this));
    QCOMPARE(wait(PluginIds::NotifyService), 1);
    QCOMPARE(log().count("{file}: WaitThreadsStop: stop thread called"), 1);
    QVERIFY(!log().contains(WaitBegins));
    QCOMPARE(log().lines(QtWarningMsg, WaitEnds).size(), 3);
}

/// A worker that ends while it is waited for.
void TestThreads::waitForWorkers()
{
    publishHost();
    CommonUtils::ThreadCountInc("Worker", "first");
    std::thread worker;
    recorder().setHook("TestAlpha.StopThreads", [&] {
        worker = std::thread([&] {
            log().waitFor(WaitBegins);
            CommonUtils::ThreadCountDec("Worker", "first");
        });
    });
    CommonUtils::WaitThreadsStop();
    worker.join();
    m_rounds = log().count(WaitBegins);
    QVERIFY(m_rounds < 20);
    VERIFY_LOGGED_IN_ORDER(WaitBegins, Wakes, WaitEnds);
    QCOMPARE(recorder().calls("TestAlpha.StopThreads")[0].thread, QThread::currentThreadId());
}

/// The one test that waits for the limit; nothing is left of it afterwards.
void TestThreads::waitForWorkerThatNeverEnds()
{
    publishHost();
    CommonUtils::ThreadCountInc("Worker", "stuck");
    CommonUtils::WaitThreadsStop();
    QCOMPARE(m_rounds + log().count(WaitBegins), 20);
    CommonUtils::WaitThreadsStop();
    QCOMPARE(m_rounds + log().count(WaitBegins), 20);
    QCOMPARE(log().count(WaitEnds), 2);
    QCOMPARE(stopRequests(), 2);
    QCOMPARE(CommonUtils::ThreadCountDec("Worker", "stuck"), 0);
}

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
