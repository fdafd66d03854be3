// The start and the end of the application, in an installation of its own: the folder of this program.
#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "Startup/Startup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRect>

class TestStartup : public CoreTest
{
    Q_OBJECT

private slots:
    void startAndEnd();
    void withoutMainFrame_data();
    void withoutMainFrame();
    void withoutFiles();
    void texts();
    void firstRun_data();
    void firstRun();

private:
    void end(std::unique_ptr<Startup> startup);
    static QString configFolder() { return QCoreApplication::applicationDirPath() + "/config"; }

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

void TestStartup::end(std::unique_ptr<Startup> startup)
{
    log().clear();
    startup.reset();
    QVERIFY(!Startup::GetPluginContainer());
    QCOMPARE(log().firstMissingInOrder({"10:23:53 : {file} : ~Startup : Enter", "{file}: ~Startup: entered",
                                        "{*}bUnloaded 1", "{*}plugin MainFramePlugin unloaded"}),
             QString());
    QCOMPARE(recorder().names({"destructed"}).last(), QString("TestMainFrame.destructed"));
    QCOMPARE(recorder().names({"destructed"}).size(), 3);
}

void TestStartup::startAndEnd()
{
    install("M", {PluginIds::DeviceManager, "A", "M"});
    recorder().setHook("TestMainFrame.BuildFrame", [] {
        QVERIFY(Startup::GetMainFrame() && Startup::GetMainFrameService());
        Startup::GetPluginContainer()->LoadAllStaticOrActivePlugin();
    });
    recorder().setHook("TestMainFrame.Destroy", [] { QVERIFY(Startup::GetPluginContainer()); });
    auto startup = std::make_unique<Startup>(true);
    QVERIFY(!startup->parent());
    QVERIFY(dynamic_cast<PluginContainer*>(Startup::GetPluginContainer()));

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
    end(std::move(startup));
}

void TestStartup::withoutMainFrame_data()
{
    QTest::addColumn<QString>("mainPlugin");
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QString>("call"); // what the main frame answers with an object of another kind
    QTest::addColumn<QString>("line");
    const QString failed = "{file}: loadMainFramePlugin: loadMainFramePlugin failed...";
    QTest::newRow("none named") << "" << QStringList({"A", "M"}) << "" << failed;
    QTest::newRow("unknown") << "Z" << QStringList({"A", "M"}) << "" << failed;
    QTest::newRow("disabled") << "M" << QStringList("A") << "" << failed;
    QTest::newRow("no face") << "M" << QStringList({"A", "M"}) << "TestMainFrame.QueryInterface(0x0)"
                             << failed;
    QTest::newRow("no service") << "M" << QStringList({"A", "M"}) << "TestMainFrame.QueryInterface(0x1011)"
                                << "{file}: loadMainFramePlugin: m_pUiPluginService load fail!...";
}

void TestStartup::withoutMainFrame()
{
    QFETCH(QString, mainPlugin);
    QFETCH(QStringList, enabled);
    QFETCH(QString, call);
    QFETCH(QString, line);
    install(mainPlugin, enabled);
    if (!call.isEmpty())
        recorder().setAnswer(call, QVariant::fromValue<QObject*>(this));
    auto startup = std::make_unique<Startup>(true);
    QCOMPARE(log().count(line), 1);
    const bool hasFace = line.contains("Service");
    QCOMPARE(Startup::GetMainFrame() != nullptr, hasFace);
    QVERIFY(!hasFace || !Startup::GetMainFrameService());
    QVERIFY(log().contains("{file}: Startup: exit"));
    QVERIFY(recorder().names({"BuildFrame"}).isEmpty());

    QVERIFY(Startup::GetPluginContainer()->GetPlugin("A", 0));
    startup.reset();
    QVERIFY(recorder().names().contains("TestAlpha.Destroy"));
    QVERIFY(recorder().names().contains("TestAlpha.destructed"));
}

void TestStartup::withoutFiles()
{
    QVERIFY(QDir(configFolder()).removeRecursively());
    const Startup startup(true);
    QVERIFY(Startup::GetPluginContainer() && !Startup::GetMainFrame());
    QCOMPARE(log().count("File " + configFolder() + "/{*}.xml does not exist"), 2);
}

void TestStartup::texts()
{
    QCOMPARE(Startup::tr("IDS_NOT_THERE"), QString());
    QCOMPARE(log().count("10:23:53 : {file} : tr : Enter"), 1);
}

void TestStartup::firstRun_data()
{
    QTest::addColumn<QString>("mark"); // null: none is stored
    QTest::addColumn<bool>("isFirst");
    QTest::newRow("none") << QString() << true;
    QTest::newRow("set") << "true" << false;
    QTest::newRow("capitals") << "TRUE" << true;
    QTest::newRow("blank") << "true " << true;
}

void TestStartup::firstRun()
{
    QFETCH(QString, mark);
    QFETCH(bool, isFirst);
    if (!mark.isNull())
        service().setSetting("Startup", "init", mark);
    const auto container = makeContainer(QByteArray("<l/>"));
    QCOMPARE(container->isFirstTimeStart(), isFirst);
    QVERIFY(log().contains(
        QString("{time}: {file}: isFirstTimeStart: %1first time startup").arg(isFirst ? "" : "not ")));
    container->setRunningMark();
    QCOMPARE(service().setting("Startup", "init", ScriptedDeviceService::User), QString("true"));
    QVERIFY(!container->isFirstTimeStart());
}

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
