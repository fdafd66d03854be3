// Settings, lookups of the well-known plugins, flags and the other shared services.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
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
    void open(const QUrl& url) { m_opened = url; }

private slots:
    void initTestCase();
    void settings();
    void lookups();
    void lookupsThatMiss();
    void embeddedPlugins();
    void openUrl();
    void waitForThread();
    void boundedFill();

private:
    QUrl m_opened;
};

namespace {

/// Which lookups have a result: device manager, main window, layout, available plugin, call.
QString found()
{
    return QString("%1%2%3%4%5")
        .arg(CommonUtils::GetDeviceMgrPlugin() != nullptr)
        .arg(CommonUtils::GetMainWindow() != nullptr)
        .arg(CommonUtils::GetLayoutPlugin() != nullptr)
        .arg(CommonUtils::IsPluginAvailable("M"))
        .arg(CommonUtils::MakeCall("+49 30 1", _UI_EN_CALL_TYPE(-70000)));
}

const QString NoCall = "Null pointer returning from : {time}: {file}: MakeCall {n}";

/// Runs until it may end. It can be terminated, but only at a place where it holds no lock.
class StubbornThread : public QThread
{
public:
    std::atomic<bool> m_isRunning{false}, m_hasEnded{false};
    QSemaphore m_mayEnd;

private:
    void run() override
    {
        setTerminationEnabled(false);
        m_isRunning = true;
        for (; !m_mayEnd.tryAcquire(1, 10); setTerminationEnabled(false))
            setTerminationEnabled(true);
        m_hasEnded = true;
    }
};

} // namespace

/// The flags. Comes before any init(), which sets them.
void TestCommonUtils::initTestCase()
{
    QStringList values; // shutting down, mini mode, close value, frame style, separator
    for (void (*change)() : {+[] {}, &CommonUtils::SetShutDownFlag, &CommonUtils::SetMiniModeFlag,
                             &CommonUtils::ResetShutDownFlag, +[] { CommonUtils::setCloseValue(true); },
                             &CommonUtils::ResetMiniModeFlag, +[] { CommonUtils::SetFrameStyle(-70000); },
                             +[] {
                                 CommonUtils::SetSMSSeperatorConfigValue(false);
                             }}) {
        change();
        values +=
            QString::asprintf("%d%d%d %d %d%d", CommonUtils::IsShuttingDown(), CommonUtils::IsMiniMode(),
                              CommonUtils::getCloseValue(), CommonUtils::GetFrameStyle(),
                              CommonUtils::GetSMSSeperatorConfigValue(), gSeparator);
    }
    QCOMPARE(values.join(", "), QString("000 1 11, 100 1 11, 110 1 11, 010 1 11, 011 1 11, 001 1 11, "
                                        "001 -70000 11, 001 -70000 00"));
}

void TestCommonUtils::settings()
{
    for (const auto view : {ScriptedDeviceService::Merged, ScriptedDeviceService::User}) {
        const QString function = view ? "GetUserSettings" : "GetSettings";
        const QString line = "{time}: {file}: " + function + ": QRVL_GetSettings "; // the same for both
        const auto read = [&](const QString& value) {
            service().setSetting("sec", "k%s", value, view);
            return view ? CommonUtils::GetUserSettings("sec", "k%s") : CommonUtils::GetSettings("sec", "k%s");
        };
        for (const QString& value : {QString("\u20AC \U0001F4F6\n"), QString(""), QString(QChar(0xD800))})
            QCOMPARE(read(value), value);
        QCOMPARE(log().lines(QtDebugMsg, line + "(sec, k%s) returned 0").size(), 3);
        log().allow(line + "returned {n}");
        QCOMPARE(read({}), QString()); // success without a value
        service().setResult("QRVL_" + function, 3);
        QCOMPARE(read("value"), QString()); // with a buffer that is not the caller's
        VERIFY_LOGGED_IN_ORDER(line + "returned 0", line + "(sec, k%s) returned 3", line + "returned 3");
        QCOMPARE(log().lines(QtWarningMsg), log().lines("{*}QRVL_GetSettings returned {n}"));
        QCOMPARE(log().count(line + "returned {n}"), 2); // none for an empty value
    }
    for (const int result : {0, 3, -1}) {
        service().setResult("QRVL_SetSettings", result);
        QCOMPARE(CommonUtils::SetSettings("sec", "key", "secret"), result != 0);
        QVERIFY(log().contains("{time}: {file}: SetSettings: QRVL_SetSettings (sec, key) returned " +
                               QString::number(result)));
    }
    QVERIFY(service().calls().contains("QRVL_SetSettings(sec, key, secret)"));
    QVERIFY(!log().contains("{*}secret{*}"));
}

void TestCommonUtils::lookups()
{
    recorder().setAnswer("TestDeviceMgr.Init", 0); // no wait for a modem
    publish(makeContainer({{PluginIds::DeviceManager, "TestDeviceMgr"},
                           {PluginIds::MainFrame, "TestMainFrame"},
                           {PluginIds::CallUI, "TestBeta"},
                           {"M", "TestAlpha"}},
                          "M")); // the layout's main frame is the one with this name
    QWidget window;
    recorder().setAnswer("TestMainFrame.GetMainWindow", QVariant::fromValue<QObject*>(&window));
    recorder().setAnswer("TestBeta.Call", true);
    QVERIFY(!CommonUtils::MakeCall("", UI_CALL_VIDEO));
    QVERIFY(!recorder().names().contains("TestBeta.QueryInterface(0x1001)"));
    QCOMPARE(found(), QString("11011")); // no layout is named
    recorder().setAnswer("TestAlpha.GetLayoutPluginClsid", PluginIds::DeviceManager);
    QCOMPARE(found(), QString("11111"));
    QCOMPARE(CommonUtils::GetMainWindow(), &window);
    QCOMPARE(recorder().calls("TestBeta.Call")[0].arguments, QVariantList({"+49 30 1", -70000}));

    for (const char* operation : {"TestMainFrame.GetMainWindow", "TestAlpha.GetLayoutPluginClsid"}) {
        log().allow(QString(operation).section('.', 1) + ": plugin main frame threw: broken");
        recorder().setHook(operation, [] { throw std::runtime_error("broken"); });
    }
    recorder().setAnswer("TestBeta.Call", false);
    QCOMPARE(found(), QString("10010"));
    QCOMPARE(log().count(NoCall), 1);
}

void TestCommonUtils::lookupsThatMiss()
{
    QCOMPARE(found(), QString("00000")); // there is no host
    QVERIFY(CommonUtils::GetUIEmbedPlugibList().isEmpty());
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetDeviceMgrPlugin:Get plugin container error",
                           "{file}: GetMainWindow: Startup::GetPluginContainer failed", NoCall);
    publish(makeContainer({{"M", "TestMainFrame"}, {PluginIds::CallUI, "TestAlpha"}}, "M"));
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "unknown");
    const auto otherKind = QVariant::fromValue<QObject*>(this);
    recorder().setAnswer("TestAlpha.QueryInterface(0x1001)", otherKind);
    QCOMPARE(found(), QString("00010"));
    VERIFY_LOGGED_IN_ORDER("{time}: {file}: GetDeviceMgrPlugin:fail to get plugin",
                           "{file}: GetMainWindow: pPluginContainer->GetPlugin failed",
                           "End  : {time}: {file}: MakeCall {n}");
    recorder().setAnswer("TestMainFrame.QueryInterface(0x1011)", otherKind);
    publish(makeContainer({{PluginIds::MainFrame, "TestMainFrame"}}, "FramePlugin"));
    QCOMPARE(found(), QString("00000"));
    QCOMPARE(log().count(NoCall), 2);
}

void TestCommonUtils::embeddedPlugins()
{
    const QString further = "92804312-432E-401F-96BB-1C20D852815D"; // not in a compact frame
    const QString otherCase = "881EA87E-882C-4F22-961C-466E0686F707";
    QVector<PluginEntry> entries = {{"T", "u", false, false, 1}};
    for (const QString& clsid : QStringList{
             "Z", further, "D754AE84-535F-4c18-85F8-F154CFE34DDF", "881EA87E-882C-4f22-961C-466E0686F707",
             "90DC623D-19BD-4dee-8940-470AD75BB60E", "385BDF98-9AA3-4121-9FBB-CACB1CD9608B",
             "FCDC307E-06DC-4dfa-AC83-834D0E306D48", "D2AB6727-AF80-4ef7-B37E-F217803B85A4",
             "A6CD67EE-16A0-4dbd-9ACB-34801E876418", "140B81C0-F62B-4ee0-9897-BDC3F8F03B18",
             "D754AE84-535F-4c18-85F8-F154CFE34FFF", "FAB7A06E-5770-4ffd-B511-479BAE2B74AC", otherCase, "A"})
        entries += {PluginEntry{clsid, "u"}};
    publish(makeContainer(entries));
    for (const int style : {1, ~4, 4, 5}) {
        CommonUtils::SetFrameStyle(style);
        const QString compact = style == 4 || style == 5 ? "" : further + ' ';
        QCOMPARE(CommonUtils::GetUIEmbedPlugibList().join(' '), "Z " + compact + otherCase + " A");
    }
}

void TestCommonUtils::openUrl()
{
    QDesktopServices::setUrlHandler("file", this, "open");
    QDesktopServices::setUrlHandler("test", this, "open");
    for (const char* target : {"/doc/manual #1.pdf", "/doc/a.html", "/doc/nohtm", "test:page.HTML",
                               "test:page.HTM", "test:a.PDF", "test://host/path?q=1"}) {
        QVERIFY(CommonUtils::OpenUrl(target));
        QCOMPARE(m_opened, *target == '/' ? QUrl::fromLocalFile(target) : QUrl(target));
    }
    QDesktopServices::unsetUrlHandler("file");
    QDesktopServices::unsetUrlHandler("test");
    QVERIFY(!CommonUtils::OpenUrl("") && log().contains("the url is : test://host/path?q=1"));
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QCoreApplication::applicationDirPath());
}

void TestCommonUtils::waitForThread()
{
    const QString enter = "{time}: {file}: WaitForThreadToStop: Enter. unMaxWait: ";
    CommonUtils::WaitForThreadToStop(nullptr, 5);
    QThread withLoop;
    withLoop.start();
    CommonUtils::WaitForThreadToStop(&withLoop, 600);
    QVERIFY(withLoop.isFinished());
    for (const int seconds : {0, 1, 30}) {
        StubbornThread thread;
        thread.start();
        QTRY_VERIFY(thread.m_isRunning);
        const bool endsInTime = seconds == 30;
        std::thread other([&] { thread.m_mayEnd.release(endsInTime && log().waitFor(enter + "30")); });
        QElapsedTimer timer;
        timer.start();
        CommonUtils::WaitForThreadToStop(&thread, seconds);
        QVERIFY(endsInTime || timer.elapsed() / 900 >= seconds);
        other.join();
        QVERIFY(thread.wait(10000)); // it has ended or was terminated
        QCOMPARE(thread.m_hasEnded, endsInTime);
    }
}

void TestCommonUtils::boundedFill()
{
    const std::tuple<unsigned, unsigned, unsigned, QByteArray> cases[] = {
        {4, 3, 1, "xxx-"}, {4, 0, 1, "----"}, {2, 8, 0, "xx--"}, {1u << 31, 2, 0, "----"}};
    for (const auto& [size, count, result, filled] : cases) {
        QByteArray buffer("----");
        QCOMPARE(QRVL_memset(buffer.data(), size, 0x100 + 'x', count), result);
        QCOMPARE(buffer, filled);
    }
    QCOMPARE(QRVL_memset(nullptr, 4, 0, 4), 0u);
}

QTEST_MAIN(TestCommonUtils)
#include "tst_commonutils.moc"
