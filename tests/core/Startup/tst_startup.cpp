// The start and the end of the application.
#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "Startup/Startup.h"
#include "ToolBar/ToolBarLogic.h"

#include <QRect>

class TestStartup : public CoreTest
{
    Q_OBJECT

private slots:
    void startAndEnd();
    void withoutMainFrame_data();
    void withoutMainFrame();

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
                           "Parsing " + installed("config/pluginslib.xml") + " done... ",
                           "Parsing " + installed("config/PluginsConfig.xml") + " done... ",
                           "{file}: loadMainFramePlugin: entered",
                           "{file}: loadMainFramePlugin: m_pUiPlugin loaded...", "{file}: Startup: exit");
    const RecordedCall build = recorder().calls("TestMainFrame.BuildFrame").constFirst();
    QVERIFY(!build.arguments[0].value<QObject*>() && build.arguments[1].toRect() == QRect());

    service().setSetting("language", "active", "_x-y");
    QCOMPARE(Startup::tr("A"), QString("a"));
    QVERIFY(ToolBarLogic::getPlugin("AlphaPlugin"));
    startup.reset();
    QVERIFY(!Startup::GetPluginContainer() && !ToolBarLogic::m_pPluginContainer);
    VERIFY_LOGGED_IN_ORDER("10:23:53 : {file} : tr : Enter", "10:23:53 : {file} : ~Startup : Enter",
                           "{file}: ~Startup: entered", "{*}plugin MainFramePlugin unloaded");
    QCOMPARE(recorder().names({"constructed", "BuildFrame"}),
             QStringList({"TestDeviceMgr.constructed", "TestMainFrame.constructed",
                          "TestMainFrame.BuildFrame", "TestAlpha.constructed"}));
    QCOMPARE(recorder().names({"destructed"}).last(), QString("TestMainFrame.destructed"));
}

void TestStartup::withoutMainFrame_data()
{
    // call: what the main frame answers with an object of another kind
    const auto row = dataTable<QString, QStringList, QString>("mainPlugin", "enabled", "call");
    row("none named", "", {"A", "M"}, "");
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
    recorder().setAnswer(call, QVariant::fromValue<QObject*>(this));
    auto startup = std::make_unique<Startup>(true);
    const bool hasFace = Startup::GetMainFrame();
    QCOMPARE(hasFace, call.endsWith("(0x1011)"));
    QVERIFY(!hasFace || !Startup::GetMainFrameService());
    const QString reason = hasFace ? "m_pUiPluginService load fail!..." : "loadMainFramePlugin failed...";
    VERIFY_LOGGED_IN_ORDER("{file}: loadMainFramePlugin: " + reason, "{file}: Startup: exit");
    QVERIFY(recorder().names({"BuildFrame"}).isEmpty() && Startup::GetPluginContainer()->GetPlugin("A", 0));
    startup.reset();
    QVERIFY(recorder().names().contains("TestAlpha.destructed"));
}

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
