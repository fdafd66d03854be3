// Settings, lookups of the well-known plugins, flags and the other shared services.
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
#include <QElapsedTimer>
#include <QSemaphore>
#include <QThread>
#include <QWidget>

#include <atomic>
#include <stdexcept>
#include <thread>

class TestCommonUtils : public CoreTest
{
    Q_OBJECT

public slots:
    void open(const QUrl& url) { m_opened.append(url); }

private slots:
    void initTestCase();
    void cleanup();
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

    /// The plugin that was asked for an interface last, and the number.
    static QString lastAsked()
    {
        const QStringList asked =
            recorder().names({"QueryInterface(0x0)", "QueryInterface(0x1001)", "QueryInterface(0x1011)"});
        return asked.isEmpty() ? QString() : asked.last();
    }

    std::unique_ptr<TestContainer> m_host;
    QList<QUrl> m_opened;
};

namespace {

/// The flags in one string: shutting down, mini mode, close value, frame style, separator.
QString flagValues()
{
    return QString("%1 %2 %3 %4 %5")
        .arg(CommonUtils::IsShuttingDown())
        .arg(CommonUtils::IsMiniMode())
        .arg(CommonUtils::getCloseValue())
        .arg(CommonUtils::GetFrameStyle())
        .arg(CommonUtils::GetSMSSeperatorConfigValue() + 2 * gSeparator);
}

/// Runs until it may end. It can be terminated, but only at a place where it holds no lock.
class StubbornThread : public QThread
{
public:
    StubbornThread()
    {
        start();
        m_isRunning.acquire();
    }

    std::atomic<bool> m_mayEnd{false};
    std::atomic<bool> m_hasEnded{false};

protected:
    void run() override
    {
        setTerminationEnabled(false);
        m_isRunning.release();
        while (!m_mayEnd) {
            msleep(10);
            setTerminationEnabled(true);
            setTerminationEnabled(false);
        }
        m_hasEnded = true;
    }

private:
    QSemaphore m_isRunning;
};

} // namespace

/// Comes before any init(), which sets the flags.
void TestCommonUtils::initTestCase()
{
    QCOMPARE(flagValues(), QString("0 0 0 1 3"));
}

void TestCommonUtils::cleanup()
{
    PublishedHost::publish(nullptr);
    m_host.reset();
    m_opened.clear();
    checkLog();
}

void TestCommonUtils::reading()
{
    for (const auto view : {ScriptedDeviceService::Merged, ScriptedDeviceService::User}) {
        const auto store = [view](const QString& value) {
            service().setSetting("sec", "k%s", value, view);
        };
        const auto read = view ? &CommonUtils::GetUserSettings : &CommonUtils::GetSettings;
        const QString function = view ? "GetUserSettings" : "GetSettings";
        const QString line = "{time}: {file}: " + function + ": QRVL_GetSettings "; // the same for both
        for (const QString& value :
             {QString::fromUtf8("\xE2\x82\xAC \xF0\x9F\x93\xB6\n"), QString(""), QString(QChar(0xD800))}) {
            store(value);
            QCOMPARE(read("sec", "k%s"), value);
        }
        QCOMPARE(log().lines(QtDebugMsg, line + "(sec, k%s) returned 0").size(), 3);

        log().allow(line + "returned {n}");
        store({}); // success without a value
        QCOMPARE(read("sec", "k%s"), QString());
        store("value");
        service().setResult("QRVL_" + function, 3); // with a buffer that is not the caller's
        QCOMPARE(read("sec", "k%s"), QString());
        VERIFY_LOGGED_IN_ORDER(line + "returned 0", line + "(sec, k%s) returned 3", line + "returned 3");
        QCOMPARE(log().lines(QtWarningMsg), log().lines("{*}QRVL_GetSettings returned {n}"));
    }
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
    QVERIFY(!CommonUtils::GetDeviceMgrPlugin() && !CommonUtils::GetMainWindow());
    QVERIFY(!CommonUtils::GetLayoutPlugin() && CommonUtils::GetUIEmbedPlugibList().isEmpty());
    QVERIFY(!CommonUtils::IsPluginAvailable("A") && !CommonUtils::MakeCall("112", UI_CALL_VOICE));
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetDeviceMgrPlugin:Get plugin container error",
                           "{time}: {file}: GetMainWindow : {n} : Enter",
                           "{file}: GetMainWindow: Startup::GetPluginContainer failed",
                           "{time}: {file}: GetMainWindow : {n} : Exit",
                           "Start of {file}: IsPluginAvailable: {n}: ",
                           "End of {file}: IsPluginAvailable: {n}: ", "Start: {time}: {file}: MakeCall {n}",
                           "Null pointer returning from : {time}: {file}: MakeCall {n}");
    QCOMPARE(log().lines().size(), 8);
}

void TestCommonUtils::lookups()
{
    recorder().setAnswer("TestDeviceMgr.Init", 0); // no wait for a modem
    publish({{PluginIds::DeviceManager, "TestDeviceMgr"},
             {PluginIds::MainFrame, "TestMainFrame"},
             {"L", "TestAlpha"}},
            "L"); // the layout's main frame is the one with this name
    QWidget window;
    recorder().setAnswer("TestMainFrame.GetMainWindow", QVariant::fromValue<QObject*>(&window));

    QVERIFY(CommonUtils::GetDeviceMgrPlugin());
    QCOMPARE(lastAsked(), QString("TestDeviceMgr.QueryInterface(0x1001)"));
    QCOMPARE(CommonUtils::GetMainWindow(), &window);
    QCOMPARE(lastAsked(), QString("TestMainFrame.QueryInterface(0x1011)"));
    QVERIFY(!CommonUtils::GetLayoutPlugin()); // it names none
    QCOMPARE(lastAsked(), QString("TestAlpha.QueryInterface(0x1011)"));
    recorder().setAnswer("TestAlpha.GetLayoutPluginClsid", PluginIds::DeviceManager);
    QVERIFY(CommonUtils::GetLayoutPlugin());
    QCOMPARE(lastAsked(), QString("TestDeviceMgr.QueryInterface(0x1001)"));
    QVERIFY(CommonUtils::IsPluginAvailable("L") && !CommonUtils::IsPluginAvailable("unknown"));
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetDeviceMgrPlugin:Get plugin container success");

    log().allow("GetMainWindow: plugin main frame threw: broken");
    log().allow("GetLayoutPluginClsid: plugin main frame threw: broken");
    for (const char* operation : {"TestMainFrame.GetMainWindow", "TestAlpha.GetLayoutPluginClsid"})
        recorder().setHook(operation, [] { throw std::runtime_error("broken"); });
    QVERIFY(!CommonUtils::GetMainWindow() && !CommonUtils::GetLayoutPlugin());
}

void TestCommonUtils::lookupsThatMiss()
{
    publish({{"M", "TestMainFrame"}}, "M");
    QVERIFY(!CommonUtils::GetDeviceMgrPlugin() && !CommonUtils::GetMainWindow());
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetDeviceMgrPlugin:fail to get plugin",
                           "{file}: GetMainWindow: pPluginContainer->GetPlugin failed");
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "unknown");
    QVERIFY(!CommonUtils::GetLayoutPlugin());
    recorder().setAnswer("TestMainFrame.QueryInterface(0x1011)", QVariant::fromValue<QObject*>(this));
    QVERIFY(!CommonUtils::GetLayoutPlugin()); // another kind of plugin
}

void TestCommonUtils::makeCall()
{
    const QString nothing = "Null pointer returning from : {time}: {file}: MakeCall {n}";
    const QString end = "End  : {time}: {file}: MakeCall {n}";
    const auto unlisted = _UI_EN_CALL_TYPE(-70000);
    publish({{PluginIds::CallUI, "TestAlpha"}});
    recorder().setAnswer("TestAlpha.Call", true);
    QVERIFY(!CommonUtils::MakeCall("", UI_CALL_VIDEO));
    QCOMPARE(log().count(nothing), 1);
    QVERIFY(!recorder().names().contains("TestAlpha.QueryInterface(0x1001)"));
    QVERIFY(CommonUtils::MakeCall("+49 30 1", unlisted));
    QCOMPARE(lastAsked(), QString("TestAlpha.QueryInterface(0x1001)"));
    QCOMPARE(recorder().calls("TestAlpha.Call")[0].arguments, QVariantList({"+49 30 1", int(unlisted)}));
    recorder().setAnswer("TestAlpha.Call", false);
    QVERIFY(!CommonUtils::MakeCall("refused", UI_CALL_VOICE));
    QCOMPARE(recorder().calls("TestAlpha.Call").size(), 2);
    QVERIFY(log().count(nothing) == 1 && !log().contains(end));
    recorder().setAnswer("TestAlpha.QueryInterface(0x1001)", QVariant::fromValue<QObject*>(this));
    QVERIFY(!CommonUtils::MakeCall("112", UI_CALL_VOICE)); // another kind of plugin
    QCOMPARE(log().count(end), 1);
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
        QStringList expected = {"Z", further, otherCase, "A"};
        if (style == 4 || style == 5)
            expected.removeAll(further);
        QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), expected);
    }
    QCOMPARE(log().count("{file}: GetUIEmbedPlugibList: entered"), 4);
}

void TestCommonUtils::openUrl()
{
    for (const char* scheme : {"file", "test"})
        QDesktopServices::setUrlHandler(scheme, this, "open");
    for (const char* target : {"/doc/manual #1.pdf", "/doc/a.html", "/doc/nohtm", "test://host/path?q=1",
                               "test:page.HTML", "test:page.HTM", "test:a.PDF"}) {
        QVERIFY(CommonUtils::OpenUrl(target));
        QCOMPARE(m_opened.takeLast(), *target == '/' ? QUrl::fromLocalFile(target) : QUrl(target));
    }
    for (const char* scheme : {"file", "test"})
        QDesktopServices::unsetUrlHandler(scheme);
    QVERIFY(!CommonUtils::OpenUrl(""));
    QVERIFY(log().contains("the url is : test://host/path?q=1"));
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QCoreApplication::applicationDirPath());
    QVERIFY(log().contains("{time}: {file}: GetPluginLibraryPath: other os plugin folder is " +
                           QCoreApplication::applicationDirPath()));
}

void TestCommonUtils::flags()
{
    QString values;
    for (void (*change)() : {&CommonUtils::SetShutDownFlag, &CommonUtils::SetMiniModeFlag,
                             &CommonUtils::ResetShutDownFlag, +[] { CommonUtils::setCloseValue(true); },
                             &CommonUtils::ResetMiniModeFlag, +[] { CommonUtils::SetFrameStyle(-70000); },
                             +[] {
                                 CommonUtils::SetSMSSeperatorConfigValue(false);
                             }}) {
        change();
        values += flagValues() + '|';
    }
    QCOMPARE(values,
             QString("1 0 0 1 3|1 1 0 1 3|0 1 0 1 3|0 1 1 1 3|0 0 1 1 3|0 0 1 -70000 3|0 0 1 -70000 0|"));
}

void TestCommonUtils::waitForThread()
{
    const QString enter = "{time}: {file}: WaitForThreadToStop: Enter. unMaxWait: ";
    const QString leave = "{time}: {file}: WaitForThreadToStop: Leave ";
    CommonUtils::WaitForThreadToStop(nullptr, 5);
    QVERIFY(log().contains(enter + '5') && !log().contains(leave));

    QThread withLoop;
    withLoop.start();
    CommonUtils::WaitForThreadToStop(&withLoop, 600);
    QVERIFY(withLoop.isFinished() && log().contains(leave));

    StubbornThread endsInTime;
    std::thread other([&] {
        log().waitFor(enter + "30");
        endsInTime.m_mayEnd = true;
    });
    CommonUtils::WaitForThreadToStop(&endsInTime, 30);
    other.join();
    QVERIFY(endsInTime.isFinished() && endsInTime.m_hasEnded);

    for (const int seconds : {0, 1}) {
        StubbornThread stubborn;
        QElapsedTimer timer;
        timer.start();
        CommonUtils::WaitForThreadToStop(&stubborn, seconds);
        QVERIFY(timer.elapsed() / 900 >= seconds);
        QVERIFY(stubborn.wait(10000)); // it was terminated
        QVERIFY(!stubborn.m_hasEnded);
    }
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
