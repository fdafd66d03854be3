// Settings, look-ups of the well-known plugins, flags and the other shared services.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PublishedHost.h"
#include "common/SafeMemory.h"

#include <QDesktopServices>
#include <QElapsedTimer>
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

protected:
    void run() override
    {
        // It can be terminated at one place only, not in the middle of something that others use.
        setTerminationEnabled(false);
        while (!m_mayEnd) {
            msleep(10);
            setTerminationEnabled(true);
            setTerminationEnabled(false);
        }
    }
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
    void writing_data();
    void writing();
    void withoutHost();
    void lookups();
    void lookupsThatMiss();
    void makeCall_data();
    void makeCall();
    void embeddedPlugins_data();
    void embeddedPlugins();
    void openUrl_data();
    void openUrl();
    void flags();
    void waitForThread();
    void boundedFill_data();
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
    QTest::addColumn<bool>("isUserView");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("warns");
    for (const bool isUserView : {false, true}) {
        const QByteArray view = isUserView ? "user: " : "merged: ";
        QTest::newRow(view + "value")
            << isUserView << QString::fromUtf8("\xE2\x82\xAC = \xF0\x9F\x93\xB6\n") << 0 << false;
        QTest::newRow(view + "empty value") << isUserView << QString("") << 0 << false;
        QTest::newRow(view + "unpaired surrogate") << isUserView << QString(QChar(0xD800)) << 0 << false;
        QTest::newRow(view + "success without a value") << isUserView << QString() << 0 << true;
        QTest::newRow(view + "failed store") << isUserView << QString("value") << 3 << true;
    }
}

void TestCommonUtils::reading()
{
    QFETCH(bool, isUserView);
    QFETCH(QString, stored);
    QFETCH(int, result);
    QFETCH(bool, warns);
    const auto view = isUserView ? ScriptedDeviceService::User : ScriptedDeviceService::Merged;
    const QString function = isUserView ? "GetUserSettings" : "GetSettings";
    const auto read = isUserView ? &CommonUtils::GetUserSettings : &CommonUtils::GetSettings;
    const QString line =
        "{time}: {file}: " + function + ": QRVL_GetSettings %1returned %2"; // both views say so
    log().allow(line.arg(QString()).arg(result));
    service().setSetting("sec", "k%s", stored, view);
    service().setResult("QRVL_" + function, result);

    QCOMPARE(read("sec", "k%s"), warns ? QString() : stored);
    QCOMPARE(log().lines(QtDebugMsg, line.arg("(sec, k%s) ").arg(result)).size(), 1);
    QCOMPARE(log().lines(QtWarningMsg, line.arg(QString()).arg(result)).size(), warns ? 1 : 0);

    service().setResult("QRVL_" + function, 0);
    QCOMPARE(read("Sec", "k%s"), QString()); // absent
    QVERIFY(log().contains(line.arg(QString()).arg(2)));
}

void TestCommonUtils::writing_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("accepted") << 0;
    QTest::newRow("refused") << 3;
    QTest::newRow("negative code") << -1;
}

void TestCommonUtils::writing()
{
    QFETCH(int, result);
    service().setResult("QRVL_SetSettings", result);
    QCOMPARE(CommonUtils::SetSettings("sec", "key", "secret"), result != 0);
    QVERIFY(service().calls().contains("QRVL_SetSettings(sec, key, secret)"));
    QCOMPARE(log()
                 .lines(QtDebugMsg, "{time}: {file}: SetSettings: QRVL_SetSettings (sec, key) returned " +
                                        QString::number(result))
                 .size(),
             1);
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
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "L");

    QVERIFY(CommonUtils::GetDeviceMgrPlugin());
    QVERIFY(log().contains("{time}: {file}: GetDeviceMgrPlugin:Get plugin container success"));
    QCOMPARE(CommonUtils::GetMainWindow(), &window);
    QCOMPARE(log().firstMissingInOrder({"{time}: {file}: GetMainWindow : {n} : Enter",
                                        "{time}: {file}: GetMainWindow : {n} : Exit"}),
             QString());
    QVERIFY(!m_host->IsPluginLoaded("L"));
    QVERIFY(CommonUtils::GetLayoutPlugin());
    QVERIFY(!recorder().calls("TestAlpha.QueryInterface(0x1001)").isEmpty());
    QVERIFY(CommonUtils::IsPluginAvailable("L"));
    QVERIFY(!CommonUtils::IsPluginAvailable("unknown"));
    QCOMPARE(log().count("Start of {file}: IsPluginAvailable: {n}: "), 2);
    QCOMPARE(log().count("End of {file}: IsPluginAvailable: {n}: "), 2);
}

void TestCommonUtils::lookupsThatMiss()
{
    publish({{"M", "TestMainFrame"}}, "M"); // a main frame of another clsid
    QVERIFY(!CommonUtils::GetDeviceMgrPlugin());
    QVERIFY(log().contains("{time}: {file}: GetDeviceMgrPlugin:fail to get plugin"));
    QVERIFY(!CommonUtils::GetMainWindow());
    QVERIFY(log().contains("{file}: GetMainWindow: pPluginContainer->GetPlugin failed"));
    QVERIFY(!CommonUtils::GetLayoutPlugin()); // it names no layout plugin
    recorder().setAnswer("TestMainFrame.GetLayoutPluginClsid", "unknown");
    QVERIFY(!CommonUtils::GetLayoutPlugin());
    recorder().setAnswer("TestMainFrame.QueryInterface(0x1011)", QVariant::fromValue<QObject*>(this));
    QVERIFY(!CommonUtils::GetLayoutPlugin());
}

void TestCommonUtils::makeCall_data()
{
    QTest::addColumn<QString>("clsid"); // of the plugin that is there
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isCallPlugin");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QString>("line");
    const QString callUi = PluginIds::CallUI;
    const QString nothing = "Null pointer returning from : {time}: {file}: MakeCall {n}";
    QTest::newRow("begun") << callUi << "+49 30 1" << true << true << "Start: {time}: {file}: MakeCall {n}";
    QTest::newRow("refused by the plugin")
        << callUi << "x" << true << false << "Start: {time}: {file}: MakeCall {n}";
    QTest::newRow("no number") << callUi << "" << true << true << nothing;
    QTest::newRow("no call plugin") << "other"
                                    << "112" << true << true << nothing;
    QTest::newRow("no call interface")
        << callUi << "112" << false << true << "End  : {time}: {file}: MakeCall {n}";
}

void TestCommonUtils::makeCall()
{
    QFETCH(QString, clsid);
    QFETCH(QString, number);
    QFETCH(bool, isCallPlugin);
    QFETCH(bool, answer);
    QFETCH(QString, line);
    publish({{clsid, "TestAlpha"}});
    recorder().setAnswer("TestAlpha.Call", answer);
    if (!isCallPlugin)
        recorder().setAnswer("TestAlpha.QueryInterface(0x1001)", QVariant::fromValue<QObject*>(this));
    const bool isPassedOn = line.startsWith("Start");

    QCOMPARE(CommonUtils::MakeCall(number, UI_CALL_VIDEO), isPassedOn && answer);
    QVERIFY(log().contains(line));
    const QVector<RecordedCall> calls = recorder().calls("TestAlpha.Call");
    QCOMPARE(calls.size(), isPassedOn ? 1 : 0);
    QVERIFY(!isPassedOn || calls[0].arguments == QVariantList({number, int(UI_CALL_VIDEO)}));
    QCOMPARE(m_host->IsPluginLoaded(clsid), clsid != "other" && !number.isEmpty());
}

void TestCommonUtils::embeddedPlugins_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("hasFurther");
    QTest::newRow("1") << 1 << true;
    QTest::newRow("5") << 5 << false;
    QTest::newRow("4") << 4 << false;
    QTest::newRow("all but the bit") << ~4 << true;
}

void TestCommonUtils::embeddedPlugins()
{
    QFETCH(int, style);
    QFETCH(bool, hasFurther);
    const QString further = "92804312-432E-401F-96BB-1C20D852815D";
    QVector<PluginEntry> entries = {{"Z", "u"}, {further, "u"}, {"T", "u", false, false, 1}};
    for (const char* clsid : {"D754AE84-535F-4c18-85F8-F154CFE34DDF", "881EA87E-882C-4f22-961C-466E0686F707",
                              "90DC623D-19BD-4dee-8940-470AD75BB60E", "385BDF98-9AA3-4121-9FBB-CACB1CD9608B",
                              "FCDC307E-06DC-4dfa-AC83-834D0E306D48", "D2AB6727-AF80-4ef7-B37E-F217803B85A4",
                              "A6CD67EE-16A0-4dbd-9ACB-34801E876418", "140B81C0-F62B-4ee0-9897-BDC3F8F03B18",
                              "D754AE84-535F-4c18-85F8-F154CFE34FFF", "FAB7A06E-5770-4ffd-B511-479BAE2B74AC"})
        entries += {PluginEntry{clsid, "u"}};
    const QString otherCase = "881EA87E-882C-4F22-961C-466E0686F707";
    entries += {{otherCase, "u"}, {"A", "u"}};
    publish(entries);

    CommonUtils::SetFrameStyle(style);
    QStringList expected = {"Z", further, otherCase, "A"};
    if (!hasFurther)
        expected.removeAll(further);
    QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), expected);
}

void TestCommonUtils::openUrl_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QUrl>("url");
    QTest::newRow("document") << "/doc/manual #1.pdf" << QUrl::fromLocalFile("/doc/manual #1.pdf");
    QTest::newRow("page") << "/doc/a.html" << QUrl::fromLocalFile("/doc/a.html");
    QTest::newRow("short suffix") << "/doc/a.htm" << QUrl::fromLocalFile("/doc/a.htm");
    QTest::newRow("no dot needed") << "/doc/nohtml" << QUrl::fromLocalFile("/doc/nohtml");
    QTest::newRow("address") << "test://host/path?q=1" << QUrl("test://host/path?q=1");
    QTest::newRow("capitals are no file") << "test:page.HTML" << QUrl("test:page.HTML");
}

void TestCommonUtils::openUrl()
{
    QFETCH(QString, target);
    QFETCH(QUrl, url);
    for (const char* scheme : {"file", "test"})
        QDesktopServices::setUrlHandler(scheme, this, "open");
    const bool isOpened = CommonUtils::OpenUrl(target);
    for (const char* scheme : {"file", "test"})
        QDesktopServices::unsetUrlHandler(scheme);
    QVERIFY(isOpened);
    QCOMPARE(m_opened, QList<QUrl>({url}));
    QCOMPARE(log().lines("the url is : {*}").size(), 1);
}

void TestCommonUtils::flags()
{
    // Each is read after it was changed to the other value and back; init() has put them to what they are at
    // first.
    QVERIFY(!CommonUtils::IsShuttingDown() && !CommonUtils::IsMiniMode() && !CommonUtils::getCloseValue());
    CommonUtils::SetShutDownFlag();
    QVERIFY(CommonUtils::IsShuttingDown() && !CommonUtils::IsMiniMode() && !CommonUtils::getCloseValue());
    CommonUtils::SetMiniModeFlag();
    CommonUtils::ResetShutDownFlag();
    QVERIFY(!CommonUtils::IsShuttingDown() && CommonUtils::IsMiniMode());
    CommonUtils::setCloseValue(true);
    CommonUtils::ResetMiniModeFlag();
    QVERIFY(!CommonUtils::IsMiniMode() && CommonUtils::getCloseValue());
    CommonUtils::SetFrameStyle(-5);
    QCOMPARE(CommonUtils::GetFrameStyle(), -5);
    CommonUtils::SetSMSSeperatorConfigValue(false);
    QVERIFY(!gSeparator);
    gSeparator = true;
    QVERIFY(CommonUtils::GetSMSSeperatorConfigValue());
}

void TestCommonUtils::waitForThread()
{
    QElapsedTimer timer;
    timer.start();
    CommonUtils::WaitForThreadToStop(nullptr, 5);
    QVERIFY(log().contains("{time}: {file}: WaitForThreadToStop: Enter. unMaxWait: 5"));
    QVERIFY(!log().contains("{*}Leave{*}"));

    QThread withLoop;
    withLoop.start();
    CommonUtils::WaitForThreadToStop(&withLoop, 30);
    QVERIFY(withLoop.isFinished() && timer.elapsed() < 10000);
    QVERIFY(log().contains("{time}: {file}: WaitForThreadToStop: Leave "));

    StubbornThread endsInTime;
    endsInTime.start();
    std::thread other([&] {
        QThread::msleep(100);
        endsInTime.m_mayEnd = true;
    });
    CommonUtils::WaitForThreadToStop(&endsInTime, 30);
    other.join();
    QVERIFY(endsInTime.isFinished() && endsInTime.m_mayEnd);

    StubbornThread stubborn;
    stubborn.start();
    CommonUtils::WaitForThreadToStop(&stubborn, 0);
    QVERIFY(stubborn.wait(10000)); // it was terminated
    QVERIFY(!stubborn.m_mayEnd);
}

void TestCommonUtils::boundedFill_data()
{
    QTest::addColumn<unsigned>("size");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<unsigned>("result");
    QTest::addColumn<QByteArray>("filled");
    QTest::newRow("all") << 4u << 4u << 1u << QByteArray("xxxx");
    QTest::newRow("part") << 4u << 3u << 1u << QByteArray("xxx-");
    QTest::newRow("none") << 4u << 0u << 1u << QByteArray("----");
    QTest::newRow("more than there is") << 2u << 8u << 0u << QByteArray("xx--");
    QTest::newRow("no room") << 0u << 1u << 0u << QByteArray("----");
    QTest::newRow("negative size") << 0x80000000u << 2u << 0u << QByteArray("----");
}

void TestCommonUtils::boundedFill()
{
    QFETCH(unsigned, size);
    QFETCH(unsigned, count);
    QByteArray buffer("----");
    QTEST(QRVL_memset(buffer.data(), size, 0x100 + 'x', count), "result");
    QTEST(buffer, "filled");
    QCOMPARE(QRVL_memset(nullptr, size, 0, count), 0u);
}

QTEST_MAIN(TestCommonUtils)
#include "tst_commonutils.moc"
