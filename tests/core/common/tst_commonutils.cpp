// Settings, look-ups of the well-known plugins, flags and the other shared services.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PublishedHost.h"
#include "common/SafeMemory.h"

#include <QDesktopServices>
#include <QSemaphore>
#include <QThread>
#include <QWidget>

#include <atomic>
#include <thread>

namespace {

/// Ends when it is told to and not before, unless it is terminated.
class StubbornThread : public QThread
{
public:
    std::atomic<bool> m_mayEnd{false};

    /// Returns when it can be terminated at one place only, not in the middle of something that others use:
    /// the start of a thread takes locks of the whole process.
    void startGuarded()
    {
        start();
        m_isGuarded.acquire();
    }

protected:
    void run() override
    {
        setTerminationEnabled(false);
        m_isGuarded.release();
        while (!m_mayEnd) {
            msleep(10);
            setTerminationEnabled(true);
            setTerminationEnabled(false);
        }
    }

private:
    QSemaphore m_isGuarded;
};

} // namespace

class TestCommonUtils : public CoreTest
{
    Q_OBJECT

public slots:
    void open(const QUrl& url) { m_opened.append(url); }

private slots:
    void cleanup();
    void reading_data();
    void reading();
    void writing();
    void withoutHost();
    void lookups();
    void lookupsThatMiss();
    void makeCall();
    void embeddedPlugins();
    void openUrl();
    void flags();
    void waitForThread();
    void boundedFill();

private:
    void publish(const QVector<PluginEntry>& entries, const QString& mainPlugin = {})
    {
        m_host = makeContainer(entries, mainPlugin);
        PublishedHost::publish(m_host.get());
    }

    std::unique_ptr<TestContainer> m_host;
    QList<QUrl> m_opened;
};

void TestCommonUtils::cleanup()
{
    PublishedHost::publish(nullptr);
    m_host.reset();
    m_opened.clear();
    checkLog();
}

void TestCommonUtils::reading_data()
{
    const auto row = dataTable<QString, int>("function", "view");
    row("merged", "GetSettings", ScriptedDeviceService::Merged);
    row("user", "GetUserSettings", ScriptedDeviceService::User);
}

void TestCommonUtils::reading()
{
    QFETCH(QString, function);
    QFETCH(int, view);
    const auto store = [=](const QString& value) {
        service().setSetting("sec", "k%s", value, ScriptedDeviceService::View(view));
    };
    const auto read = view ? &CommonUtils::GetUserSettings : &CommonUtils::GetSettings;
    const QString line = "{time}: {file}: " + function + ": QRVL_GetSettings "; // both views say so
    for (const QString& value :
         {QString::fromUtf8("\xE2\x82\xAC \xF0\x9F\x93\xB6\n"), QString(""), QString(QChar(0xD800))}) {
        store(value);
        QCOMPARE(read("sec", "k%s"), value);
    }
    QCOMPARE(log().lines(QtDebugMsg, line + "(sec, k%s) returned 0").size(), 3);

    log().allow(line + "returned 0");
    store({}); // success without a value
    QCOMPARE(read("sec", "k%s"), QString());
    QCOMPARE(log().lines(QtWarningMsg).size(), 1);
    log().allow(line + "returned 3");
    store("value");
    service().setResult("QRVL_" + function, 3);
    QCOMPARE(read("sec", "k%s"), QString());
    QCOMPARE(log().lines(QtWarningMsg, line + "returned 3").size(), 1);
}

void TestCommonUtils::writing()
{
    for (const int result : {0, 3, -1}) {
        service().setResult("QRVL_SetSettings", result);
        QCOMPARE(CommonUtils::SetSettings("sec", "key", "secret"), result != 0);
        QCOMPARE(log().count("{time}: {file}: SetSettings: QRVL_SetSettings (sec, key) returned " +
                             QString::number(result)),
                 1);
    }
    QVERIFY(service().calls().contains("QRVL_SetSettings(sec, key, secret)"));
    QVERIFY(!log().contains("{*}secret{*}"));
}

void TestCommonUtils::withoutHost()
{
    QVERIFY(!CommonUtils::GetDeviceMgrPlugin());
    QVERIFY(log().contains("{time}: {file}: GetDeviceMgrPlugin:Get plugin container error"));
    QVERIFY(!CommonUtils::GetMainWindow());
    QVERIFY(log().contains("{file}: GetMainWindow: Startup::GetPluginContainer failed"));
    QVERIFY(!CommonUtils::GetLayoutPlugin());
    QVERIFY(!CommonUtils::IsPluginAvailable("A"));
    QVERIFY(!CommonUtils::MakeCall("112", UI_CALL_VOICE));
    QVERIFY(CommonUtils::GetUIEmbedPlugibList().isEmpty());
}

void TestCommonUtils::lookups()
{
    recorder().setAnswer("TestDeviceMgr.Init", 0); // no wait for a modem
    publish({{PluginIds::DeviceManager, "TestDeviceMgr"},
             {PluginIds::MainFrame, "TestMainFrame"},
             {"L", "TestAlpha"}},
            PluginIds::MainFrame);
    QWidget window;
    recorder().setAnswer("TestMainFrame.GetMainWindow", QVariant::fromValue<QObject*>(&window));

    QVERIFY(CommonUtils::GetDeviceMgrPlugin());
    QCOMPARE(CommonUtils::GetMainWindow(), &window);
    QVERIFY(!CommonUtils::GetLayoutPlugin()); // the main frame names none
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "L");
    QVERIFY(CommonUtils::GetLayoutPlugin());
    QVERIFY(!recorder().calls("TestAlpha.QueryInterface(0x1001)").isEmpty());
    QVERIFY(CommonUtils::IsPluginAvailable("L"));
    QVERIFY(!CommonUtils::IsPluginAvailable("unknown"));
    VERIFY_LOGGED_IN_ORDER(
        "{time}: {file}: GetDeviceMgrPlugin:Get plugin container success",
        "{time}: {file}: GetMainWindow : {n} : Enter", "{time}: {file}: GetMainWindow : {n} : Exit",
        "Start of {file}: IsPluginAvailable: {n}: ", "End of {file}: IsPluginAvailable: {n}: ");
}

void TestCommonUtils::lookupsThatMiss()
{
    publish({{"M", "TestMainFrame"}}, "M"); // a main frame of another clsid
    QVERIFY(!CommonUtils::GetDeviceMgrPlugin());
    QVERIFY(log().contains("{time}: {file}: GetDeviceMgrPlugin:fail to get plugin"));
    QVERIFY(!CommonUtils::GetMainWindow());
    QVERIFY(log().contains("{file}: GetMainWindow: pPluginContainer->GetPlugin failed"));
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "unknown");
    QVERIFY(!CommonUtils::GetLayoutPlugin());
    recorder().setAnswer("TestMainFrame.QueryInterface(0x1011)", QVariant::fromValue<QObject*>(this));
    QVERIFY(!CommonUtils::GetLayoutPlugin());
}

void TestCommonUtils::makeCall()
{
    const QString nothing = "Null pointer returning from : {time}: {file}: MakeCall {n}";
    publish({{PluginIds::CallUI, "TestAlpha"}});
    QVERIFY(!CommonUtils::MakeCall("", UI_CALL_VIDEO));
    QVERIFY(log().contains(nothing));
    recorder().setAnswer("TestAlpha.Call", true);
    QVERIFY(CommonUtils::MakeCall("+49 30 1", UI_CALL_VIDEO));
    QCOMPARE(recorder().calls("TestAlpha.Call")[0].arguments, QVariantList({"+49 30 1", int(UI_CALL_VIDEO)}));
    recorder().setAnswer("TestAlpha.Call", false);
    QVERIFY(!CommonUtils::MakeCall("refused", UI_CALL_VOICE));
    QCOMPARE(recorder().calls("TestAlpha.Call").size(), 2);
    QCOMPARE(log().count("Start: {time}: {file}: MakeCall {n}"), 3);
    QCOMPARE(log().count("End  : {time}: {file}: MakeCall {n}"), 0);
    recorder().setAnswer("TestAlpha.QueryInterface(0x1001)", QVariant::fromValue<QObject*>(this));
    QVERIFY(!CommonUtils::MakeCall("112", UI_CALL_VOICE)); // another kind of plugin
    QCOMPARE(log().count("End  : {time}: {file}: MakeCall {n}"), 1);
    publish({{"other", "TestAlpha"}});
    QVERIFY(!CommonUtils::MakeCall("112", UI_CALL_VOICE));
    QCOMPARE(log().count(nothing), 2);
}

void TestCommonUtils::embeddedPlugins()
{
    const QString further = "92804312-432E-401F-96BB-1C20D852815D"; // not in a compact frame
    const QString otherCase = "881EA87E-882C-4F22-961C-466E0686F707";
    QVector<PluginEntry> entries = {{"Z", "u"}, {further, "u"}, {"T", "u", false, false, 1}};
    for (const char* clsid : {"D754AE84-535F-4c18-85F8-F154CFE34DDF", "881EA87E-882C-4f22-961C-466E0686F707",
                              "90DC623D-19BD-4dee-8940-470AD75BB60E", "385BDF98-9AA3-4121-9FBB-CACB1CD9608B",
                              "FCDC307E-06DC-4dfa-AC83-834D0E306D48", "D2AB6727-AF80-4ef7-B37E-F217803B85A4",
                              "A6CD67EE-16A0-4dbd-9ACB-34801E876418", "140B81C0-F62B-4ee0-9897-BDC3F8F03B18",
                              "D754AE84-535F-4c18-85F8-F154CFE34FFF", "FAB7A06E-5770-4ffd-B511-479BAE2B74AC"})
        entries += {PluginEntry{clsid, "u"}};
    entries += {{otherCase, "u"}, {"A", "u"}};
    publish(entries);
    for (const int style : {1, ~4, 4, 5}) {
        CommonUtils::SetFrameStyle(style);
        const bool isCompact = style == 4 || style == 5;
        QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), isCompact
                                                          ? QStringList({"Z", otherCase, "A"})
                                                          : QStringList({"Z", further, otherCase, "A"}));
    }
}

void TestCommonUtils::openUrl()
{
    for (const char* scheme : {"file", "test"})
        QDesktopServices::setUrlHandler(scheme, this, "open");
    for (const char* target : {"/doc/manual #1.pdf", "/doc/a.html", "/doc/nohtm"}) {
        QVERIFY(CommonUtils::OpenUrl(target));
        QCOMPARE(m_opened.takeLast(), QUrl::fromLocalFile(target));
    }
    for (const char* target : {"test://host/path?q=1", "test:page.HTML"}) { // capitals are no file
        QVERIFY(CommonUtils::OpenUrl(target));
        QCOMPARE(m_opened.takeLast(), QUrl(target));
    }
    for (const char* scheme : {"file", "test"})
        QDesktopServices::unsetUrlHandler(scheme);
    QVERIFY(log().contains("the url is : test://host/path?q=1"));
}

void TestCommonUtils::flags()
{
    CommonUtils::SetShutDownFlag();
    QVERIFY(CommonUtils::IsShuttingDown() && !CommonUtils::IsMiniMode() && !CommonUtils::getCloseValue());
    CommonUtils::ResetShutDownFlag();
    CommonUtils::setCloseValue(true);
    QVERIFY(!CommonUtils::IsShuttingDown() && !CommonUtils::IsMiniMode() && CommonUtils::getCloseValue());
    CommonUtils::SetSMSSeperatorConfigValue(false);
    QVERIFY(!gSeparator && !CommonUtils::GetSMSSeperatorConfigValue());
}

void TestCommonUtils::waitForThread()
{
    CommonUtils::WaitForThreadToStop(nullptr, 5);
    QVERIFY(log().contains("{time}: {file}: WaitForThreadToStop: Enter. unMaxWait: 5"));
    QVERIFY(!log().contains("{*}Leave{*}"));

    QThread withLoop;
    withLoop.start();
    CommonUtils::WaitForThreadToStop(&withLoop, 600);
    QVERIFY(withLoop.isFinished());
    QVERIFY(log().contains("{time}: {file}: WaitForThreadToStop: Leave "));

    StubbornThread endsInTime;
    endsInTime.startGuarded();
    std::thread other([&] {
        QThread::msleep(100);
        endsInTime.m_mayEnd = true;
    });
    CommonUtils::WaitForThreadToStop(&endsInTime, 30);
    other.join();
    QVERIFY(endsInTime.isFinished() && endsInTime.m_mayEnd);

    StubbornThread stubborn;
    stubborn.startGuarded();
    CommonUtils::WaitForThreadToStop(&stubborn, 0);
    QVERIFY(stubborn.wait(10000)); // it was terminated
    QVERIFY(!stubborn.m_mayEnd);
}

void TestCommonUtils::boundedFill()
{
    const struct
    {
        unsigned size, count, result;
        QByteArray filled;
    } cases[] = {{4, 4, 1, "xxxx"}, {4, 3, 1, "xxx-"}, {4, 0, 1, "----"},
                 {2, 8, 0, "xx--"}, {0, 1, 0, "----"}, {0x80000000u, 2, 0, "----"}}; // a negative size
    for (const auto& row : cases) {
        QByteArray buffer("----");
        QCOMPARE(QRVL_memset(buffer.data(), row.size, 0x100 + 'x', row.count), row.result);
        QCOMPARE(buffer, row.filled);
    }
    QCOMPARE(QRVL_memset(nullptr, 4, 0, 4), 0u);
}

QTEST_MAIN(TestCommonUtils)
#include "tst_commonutils.moc"
