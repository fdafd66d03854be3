// The start and the end of the application.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "Startup/Startup.h"

#include <QRect>

class TestStartup : public CoreTest
{
    Q_OBJECT

private slots:
    void startAndEnd();
    void withoutMainFrame_data();
    void withoutMainFrame();
    void firstRun();

private:
    /// Installs the device manager, A and the main frame M.
    static void install(const QString& mainPlugin, const QStringList& enabled)
    {
        const QVector<PluginEntry> plugins{{PluginIds::DeviceManager, "TestDeviceMgr"},
                                           {"A", "TestAlpha", true},
                                           {"M", "TestMainFrame", true}};
        writeFile(installed("config/pluginslib.xml"), pluginLibraryXml(plugins, mainPlugin));
        writeFile(installed("config/PluginsConfig.xml"), "<config>" + commonXml(enabled) + "</config>");
    }
};

void TestStartup::startAndEnd()
{
    install("M", {PluginIds::DeviceManager, "A", "M"});
    writeFile(installed("plugins/XFramePlugin/XFramePlugin_x-y.lang"), "<item name='A'>a</item>");
    recorder().setHook("TestMainFrame.BuildFrame", [] {
        QVERIFY(Startup::GetMainFrame() && Startup::GetMainFrameService());
        Startup::GetPluginContainer()->LoadAllStaticOrActivePlugin();
    });
    recorder().setHook("TestMainFrame.Destroy", [] { QVERIFY(Startup::GetPluginContainer()); });
    auto startup = std::make_unique<Startup>(true);
    VERIFY_LOGGED_IN_ORDER("{file}: Startup: entered", "{file}: initializePluginContainer: entered",
                           "{file}: PluginContainer: entered, strPluginsFile = " +
                               installed("config/pluginslib.xml"),
                           "Parsing " + installed("config/PluginsConfig.xml") + " done... ",
                           "{file}: loadMainFramePlugin: entered",
                           "{file}: loadMainFramePlugin: m_pUiPlugin loaded...", "{file}: Startup: exit");
    QStringList calls = recorder().names();
    calls.removeAll("TestDeviceMgr.StartDetection"); // comes from the configuration thread, at any time
    calls.removeAll("TestDeviceMgr.QueryInterface(0x1001)");
    QCOMPARE(calls, QStringList({"TestDeviceMgr.constructed", "TestDeviceMgr.Init",
                                 "TestMainFrame.constructed", "TestMainFrame.Init",
                                 "TestMainFrame.QueryInterface(0x0)", "TestMainFrame.QueryInterface(0x1011)",
                                 "TestMainFrame.BuildFrame", "TestAlpha.constructed", "TestAlpha.Init"}));
    const RecordedCall build = recorder().calls("TestMainFrame.BuildFrame").constFirst();
    QVERIFY(!build.arguments[0].value<QObject*>());
    QCOMPARE(build.arguments[1].toRect(), QRect());
    QCOMPARE(build.thread, QThread::currentThreadId());

    service().setSetting("language", "active", "_x-y");
    QCOMPARE(Startup::tr("A"), QString("a"));
    startup.reset();
    QVERIFY(!Startup::GetPluginContainer());
    VERIFY_LOGGED_IN_ORDER("10:23:53 : {file} : tr : Enter", "10:23:53 : {file} : ~Startup : Enter",
                           "{file}: ~Startup: entered", "{*}bUnloaded 1",
                           "{*}plugin MainFramePlugin unloaded");
    QCOMPARE(recorder().names({"destructed"}).size(), 3);
    QCOMPARE(recorder().names({"destructed"}).last(), QString("TestMainFrame.destructed"));
}

void TestStartup::withoutMainFrame_data()
{
    // call: what the main frame answers with an object of another kind
    const auto row = dataTable<QString, QStringList, QString>("mainPlugin", "enabled", "call");
    row("none named", "", {"A", "M"}, "");
    row("unknown", "Z", {"A", "M"}, "");
    row("disabled", "M", {"A"}, "");
    row("no face", "M", {"A", "M"}, "TestMainFrame.QueryInterface(0x0)");
    row("no service", "M", {"A", "M"}, "TestMainFrame.QueryInterface(0x1011)");
}

void TestStartup::withoutMainFrame()
{
    QFETCH(QString, mainPlugin);
    QFETCH(QStringList, enabled);
    QFETCH(QString, call);
    install(mainPlugin, enabled);
    if (!call.isEmpty())
        recorder().setAnswer(call, QVariant::fromValue<QObject*>(this));
    auto startup = std::make_unique<Startup>(true);
    const bool hasFace = call.endsWith("(0x1011)");
    QCOMPARE(log().count("{file}: loadMainFramePlugin: loadMainFramePlugin failed..."), hasFace ? 0 : 1);
    QCOMPARE(log().count("{file}: loadMainFramePlugin: m_pUiPluginService load fail!..."), hasFace ? 1 : 0);
    QCOMPARE(Startup::GetMainFrame() != nullptr, hasFace);
    QVERIFY(!hasFace || !Startup::GetMainFrameService());
    QVERIFY(log().contains("{file}: Startup: exit") && recorder().names({"BuildFrame"}).isEmpty());
    QVERIFY(Startup::GetPluginContainer()->GetPlugin("A", 0));
    startup.reset();
    QVERIFY(recorder().names().contains("TestAlpha.destructed"));
}

void TestStartup::firstRun()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    for (const char* mark : {"", "TRUE", "true "}) {
        service().setSetting("Startup", "init", mark);
        QVERIFY2(container->isFirstTimeStart(), mark);
    }
    container->setRunningMark();
    QCOMPARE(service().setting("Startup", "init", ScriptedDeviceService::User), QString("true"));
    QVERIFY(!container->isFirstTimeStart());
    QCOMPARE(log().count("{time}: {file}: isFirstTimeStart: first time startup"), 3);
    QCOMPARE(log().count("{time}: {file}: isFirstTimeStart: not first time startup"), 1);
}

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
