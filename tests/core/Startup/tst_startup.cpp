// The start and the end of the application, in an installation of its own: the folder of this program.
#include "CoreTest.h"
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
    static QString configFolder() { return installed("config"); }

    /// Writes the installation's files: device manager, A and the main frame M.
    static void install(const QString& mainPlugin, const QStringList& enabled)
    {
        writeFile(configFolder() + "/pluginslib.xml",
                  pluginLibraryXml({{PluginIds::DeviceManager, "TestDeviceMgr"},
                                    {"A", "TestAlpha", true},
                                    {"M", "TestMainFrame", true}},
                                   mainPlugin));
        writeFile(configFolder() + "/PluginsConfig.xml", "<config>" + commonXml(enabled) + "</config>");
    }
};

void TestStartup::startAndEnd()
{
    install("M", {PluginIds::DeviceManager, "A", "M"});
    recorder().setHook("TestMainFrame.BuildFrame", [] {
        QVERIFY(Startup::GetMainFrame() && Startup::GetMainFrameService());
        Startup::GetPluginContainer()->LoadAllStaticOrActivePlugin();
    });
    recorder().setHook("TestMainFrame.Destroy", [] { QVERIFY(Startup::GetPluginContainer()); });
    auto startup = std::make_unique<Startup>(true);

    QCOMPARE(
        log().firstMissingInOrder({
            "{file}: Startup: entered",
            "{file}: initializePluginContainer: entered",
            "{file}: PluginContainer: entered, strPluginsFile = " + configFolder() + "/pluginslib.xml",
            "getDeviceName: m_strCustomizeName =><=",
            "Parsing " + configFolder() + "/pluginslib.xml done... ",
            "Parsing " + configFolder() + "/PluginsConfig.xml done... ",
            "{time}: {file}: {func}: enabling based on common and operator",
            "{file}: initPlugin: base IBasePlugin load success, init=1, DeviceMgrPlugin init: elapsed={n}ms",
            "{file}: loadMainFramePlugin: entered",
            "{file}: loadMainFramePlugin: m_pUiPlugin loaded...",
            "{file}: Startup: exit",
        }),
        QString());
    QVERIFY(!log().contains("{*}showing splash screen..."));
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

    QCOMPARE(Startup::tr("IDS_NOT_THERE"), QString());
    QCOMPARE(log().count("10:23:53 : {file} : tr : Enter"), 1);
    log().clear();
    startup.reset();
    QVERIFY(!Startup::GetPluginContainer());
    QCOMPARE(log().firstMissingInOrder({"10:23:53 : {file} : ~Startup : Enter", "{file}: ~Startup: entered",
                                        "{*}bUnloaded 1", "{*}plugin MainFramePlugin unloaded"}),
             QString());
    QCOMPARE(recorder().names({"destructed"}).last(), QString("TestMainFrame.destructed"));
    QCOMPARE(recorder().names({"destructed"}).size(), 3);
}

void TestStartup::withoutMainFrame_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QString>("call"); // what the main frame answers with an object of another kind
    QTest::newRow("none named") << "" << QStringList({"A", "M"}) << "";
    QTest::newRow("unknown") << "Z" << QStringList({"A", "M"}) << "";
    QTest::newRow("disabled") << "M" << QStringList("A") << "";
    QTest::newRow("no face") << "M" << QStringList({"A", "M"}) << "TestMainFrame.QueryInterface(0x0)";
    QTest::newRow("no service") << "M" << QStringList({"A", "M"}) << "TestMainFrame.QueryInterface(0x1011)";
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
    QVERIFY(log().contains("{file}: Startup: exit"));
    QVERIFY(recorder().names({"BuildFrame"}).isEmpty());

    QVERIFY(Startup::GetPluginContainer()->GetPlugin("A", 0));
    startup.reset();
    QVERIFY(recorder().names().contains("TestAlpha.destructed"));
}

void TestStartup::firstRun()
{
    const auto container = makeContainer(QByteArray("<l/>"));
    QVERIFY(container->isFirstTimeStart());
    for (const char* other : {"TRUE", "true "}) {
        service().setSetting("Startup", "init", other);
        QVERIFY2(container->isFirstTimeStart(), other);
    }
    container->setRunningMark();
    QCOMPARE(service().setting("Startup", "init", ScriptedDeviceService::User), QString("true"));
    QVERIFY(!container->isFirstTimeStart());
    QCOMPARE(log().count("{time}: {file}: isFirstTimeStart: first time startup"), 3);
    QCOMPARE(log().count("{time}: {file}: isFirstTimeStart: not first time startup"), 1);
}

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
