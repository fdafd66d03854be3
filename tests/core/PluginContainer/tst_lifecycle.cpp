// Loading, initialising, shutting down and unloading of real plugin libraries, the faulty ones included.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "ProcessInfo.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <atomic>
#include <stdexcept>
#include <thread>

class TestLifecycle : public CoreTest
{
    Q_OBJECT

private slots:
    void getPlugin();
    void bulkLoad();
    void unloadAndReload();
    void stepwiseTeardown();
    void shutDownOrder();
    void sameClsidTwice();
    void faultyCalls_data();
    void faultyCalls();
    void initMayCallBack();
    void uselessLibraries_data();
    void uselessLibraries();
    void firstLoadableFileWins();
    void manyThreads();

private:
    static QString libraryFile(const QString& base) { return base + TEST_LIBRARY_SUFFIX; }
    static QString installed(const QString& base) { return CoreTest::installed(libraryFile(base)); }
};

namespace {

const QVector<PluginEntry> AlphaBetaMain = {
    {"A", "TestAlpha", true}, {"B", "TestBeta", false, true}, {"M", "TestMainFrame"}};

} // namespace

void TestLifecycle::getPlugin()
{
    const auto container = makeContainer(
        pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"N", "TestNothing"}, {"X", "TestBare"}}),
        commonXml({"A", "N", "X"}));
    QVERIFY(!container->GetPlugin("unknown", 0));
    QVERIFY(!container->GetPlugin("B", 0));
    QCOMPARE(log().count("{file}: getPlugin: B not enabled"), 1);
    for (const char* clsid : {"unknown", "B", "AlphaPlugin"}) // a name is no clsid here
        QVERIFY2(!container->IsPluginAvailable(clsid) && !container->IsPluginLoaded(clsid), clsid);
    QVERIFY(recorder().names().isEmpty());

    QVERIFY(container->IsPluginAvailable("A")); // loaded, not initialised
    QCOMPARE(recorder().names({"constructed", "Init"}), QStringList("TestAlpha.constructed"));
    recorder().setAnswer("TestAlpha.Init", -7);
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(50); });
    QObject* const root = container->GetPlugin("A", 0);
    QVERIFY(qobject_cast<IBasePlugin*>(root));
    QCOMPARE(container->GetPlugin("AlphaPlugin", 0x1001), root); // by name
    QVERIFY(!container->GetPlugin("A", 0x7777));                 // a number the plugin does not know
    QCOMPARE(recorder().names({"constructed", "Init"}).size(), 2);
    const QString initialised = "{file}: initPlugin: base IBasePlugin load success, ";
    const QStringList critical = log().lines(QtCriticalMsg);
    QCOMPARE(critical.size(), 2);
    QVERIFY(critical[1].section('=', -1).chopped(2).toInt() >= 50);
    VERIFY_LOGGED_IN_ORDER(
        "{file}: getPlugin: A plugin loaded,,,", "{file}: IsPluginAvailable: A is available",
        "{file}: getPlugin: A already loaded,,,returning cached pointer",
        initialised + "AlphaPlugin init: Start", initialised + "init=-7, AlphaPlugin init: elapsed={n}ms");

    QVERIFY(!container->GetPlugin("N", 0)); // no such library
    QVERIFY(!container->GetPlugin("N", 0)); // and it is tried again
    QCOMPARE(log().count("{file}: getPlugin: N plugin NOT LOADED !!!,,,"), 2);
    QVERIFY(!container->GetPlugin("X", 0)); // a plugin without the base interface
    QVERIFY(container->IsPluginLoaded("X"));
    QVERIFY(log().contains("{file}: IsPluginLoaded: entered, strPluginClsid = X, 1"));
}

void TestLifecycle::bulkLoad()
{
    const auto container = makeContainer(pluginLibraryXml({{"M", "TestMainFrame", true},
                                                           {"A", "TestAlpha"},
                                                           {"N", "TestNothing", true},
                                                           {"B", "TestBeta", false, true},
                                                           {"C", "TestGamma", true}}),
                                         commonXml({"M", "A", "N", "B"}));
    container->GetPlugin("A", 0);
    recorder().reset();
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(recorder().names(), QStringList({"TestMainFrame.constructed", "TestBeta.constructed",
                                              "TestMainFrame.Init", "TestBeta.Init"}));
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList({"M", "A", "B"}));
    VERIFY_LOGGED_IN_ORDER("{file}: {func}: TestMainFrame to be loaded...",
                           "{file}: {func}: TestNothing to be loaded...",
                           "{file}: {func}: MainFramePlugin calling initPlugin",
                           "{time}: {file}: initPlugin: AlphaPlugin is initialized",
                           "{file}: LoadAllStaticOrActivePlugin: plugin count = 5");
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(recorder().names({"constructed", "Init"}).size(), 4);
}

void TestLifecycle::unloadAndReload()
{
    const auto container = makeContainer(AlphaBetaMain); // no main frame is named
    QVERIFY(!container->UnloadPlugin("A"));              // not loaded
    QVERIFY(!container->UnloadPlugin("unknown"));
    for (const char* key : {"A", "AlphaPlugin"}) {
        recorder().reset();
        QVERIFY(container->GetPlugin("A", 0));
        QVERIFY(isLibraryInMemory(libraryFile("TestAlpha")));
        QVERIFY(container->UnloadPlugin(key));
        QVERIFY(!container->IsPluginLoaded("A"));
        QVERIFY(!isLibraryInMemory(libraryFile("TestAlpha")));
        QCOMPARE(recorder().names({"constructed", "Init", "Destroy", "destructed"}),
                 QStringList({"TestAlpha.constructed", "TestAlpha.Init", "TestAlpha.destructed"}));
    }
    QVERIFY(log().contains("{file}: unloadPlugin: try to unload plugin AlphaPlugin"));

    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->UnloadAllPlugins());
    QVERIFY(container->GetLoadedPluginClsids().isEmpty());
    QCOMPARE(recorder().names({"Destroy"}).size(), 2);
    QVERIFY(container->GetPlugin("A", 0)); // the records live on
    QVERIFY(container->UnloadAllPlugins() && container->UnloadAllPlugins());
}

void TestLifecycle::stepwiseTeardown()
{
    const auto container = makeContainer(AlphaBetaMain, "M");
    container->GetPlugin("A", 0);
    container->GetPlugin("M", 0);
    QVERIFY(container->IsPluginAvailable("B")); // loaded, not initialised
    for (const char* clsid : {"unknown", "AlphaPlugin", "B", "M"})
        QVERIFY2(!container->DestroyPlugin(clsid) && !container->UnRegisterFormPluginContainer(clsid), clsid);
    QVERIFY(container->UnRegisterFormPluginContainer("A"));
    QVERIFY(container->DestroyPlugin("A"));
    container->Release(); // does nothing, by contract
    QCOMPARE(container->GetLastError(), 0);
    QCOMPARE(recorder().names({"UnSDKRegisterEvent", "Destroy"}),
             QStringList({"TestAlpha.UnSDKRegisterEvent", "TestAlpha.Destroy"}));
    QVERIFY(container->IsPluginLoaded("A"));
    VERIFY_LOGGED_IN_ORDER("{file}: UnRegisterFormPluginContainer: entered. Plugin: A",
                           "UnSDKRegisterEvent Plugin Name: AlphaPlugin, Plugin ClsID: A",
                           "{file}: DestroyPlugin: entered. Plugin: A",
                           "Destroying Plugin Name: AlphaPlugin, Plugin ClsID: A",
                           "{file}: DestroyPlugin: exited.");
}

void TestLifecycle::shutDownOrder()
{
    QVector<PluginEntry> entries = AlphaBetaMain;
    entries.prepend({"G", "TestGamma"});
    auto container = makeContainer(entries, "M");
    container->LoadAllStaticOrActivePlugin();
    container->GetPlugin("M", 0);
    QVERIFY(container->IsPluginAvailable("G")); // never initialised, so nothing to shut down but its library
    recorder().reset();
    container.reset();

    QStringList names = recorder().names({"UnSDKRegisterEvent", "Destroy", "destructed"});
    // The plugins other than the main frame go in no stated order.
    QCOMPARE(names.size(), 10);
    std::sort(names.begin(), names.begin() + 2);
    std::sort(names.begin() + 2, names.begin() + 4);
    std::sort(names.begin() + 6, names.begin() + 9);
    QCOMPARE(names, QStringList({"TestAlpha.UnSDKRegisterEvent", "TestBeta.UnSDKRegisterEvent",
                                 "TestAlpha.Destroy", "TestBeta.Destroy", "TestMainFrame.UnSDKRegisterEvent",
                                 "TestMainFrame.Destroy", "TestAlpha.destructed", "TestBeta.destructed",
                                 "TestGamma.destructed", "TestMainFrame.destructed"}));
    for (const PluginEntry& entry : qAsConst(entries))
        QVERIFY2(!isLibraryInMemory(libraryFile(entry.url)), qUtf8Printable(entry.url));
    VERIFY_LOGGED_IN_ORDER("{file}: unloadAllPlugins: bUnloaded 1", "{file}: unloadAllPlugins: bUnloaded 1",
                           "{file}: unloadPlugin: plugin MainFramePlugin unloaded");
}

void TestLifecycle::sameClsidTwice()
{
    auto container = makeContainer(QVector<PluginEntry>{{"A", "TestAlpha", true}, {"A", "TestBeta", true}});
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->GetPlugin("A", 0));
    QCOMPARE(container->GetPluginNameByClsid("A"), QString("BetaPlugin"));
    container.reset();
    QVERIFY(!isLibraryInMemory(libraryFile("TestAlpha")) && !isLibraryInMemory(libraryFile("TestBeta")));
}

void TestLifecycle::faultyCalls_data()
{
    const auto row = dataTable<QString, bool>("call", "isUsable"); // whether GetPlugin still gives the plugin
    row("constructor", "constructed", false);
    row("Init", "Init", true);
    row("QueryInterface", "QueryInterface(0x0)", false);
    row("UnSDKRegisterEvent", "UnSDKRegisterEvent", true);
    row("Destroy", "Destroy", true);
}

/// Whatever a plugin throws stays with it: the others start and end as always.
void TestLifecycle::faultyCalls()
{
    QFETCH(QString, call);
    log().allow("{*}threw{*}");
    for (const bool isStandard : {true, false}) {
        recorder().reset();
        recorder().setHook("TestAlpha." + call, [isStandard] {
            if (isStandard)
                throw std::runtime_error("broken");
            throw 1;
        });
        auto container = makeContainer(AlphaBetaMain, "M");
        container->LoadAllStaticOrActivePlugin();
        QTEST(container->GetPlugin("A", 0) != nullptr, "isUsable");
        QVERIFY(container->GetPlugin("M", 0));
        container.reset();
        for (const char* name : {"TestBeta.Init", "TestBeta.UnSDKRegisterEvent", "TestBeta.Destroy",
                                 "TestMainFrame.Destroy", "TestMainFrame.destructed"})
            QVERIFY2(recorder().names().contains(name), name);
        QVERIFY(!isLibraryInMemory(libraryFile("TestBeta")));
        QVERIFY(!isLibraryInMemory(libraryFile("TestAlpha")));
    }
}

void TestLifecycle::initMayCallBack()
{
    auto container = makeContainer(AlphaBetaMain, "M");
    IPluginContainer& host = *container;
    recorder().setHook("TestAlpha.Init", [&] {
        QVERIFY(host.GetPlugin("A", 0)); // itself, already marked as initialised
        QVERIFY(host.GetPlugin("BetaPlugin", 0x1001));
        host.LoadAllStaticOrActivePlugin();
    });
    recorder().setHook("TestBeta.Init", [&] { QVERIFY(host.GetPlugin("A", 0)); }); // a cycle
    recorder().setHook("TestBeta.Destroy", [&] { QVERIFY(host.GetPlugin("A", 0)); });
    QVERIFY(container->GetPlugin("A", 0));
    QCOMPARE(recorder().names({"Init"}), QStringList({"TestAlpha.Init", "TestBeta.Init"}));
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList({"A", "B"}));
    container.reset();
    QVERIFY(!isLibraryInMemory(libraryFile("TestAlpha")));
}

void TestLifecycle::uselessLibraries_data()
{
    const auto row = dataTable<QByteArray>("content");
    row("empty", "");
    row("foreign ELF", QByteArray("\x7F\x45LF\x01\x02\x01").leftJustified(4096, '\0'));
    row("foreign PE", QByteArray("MZ").leftJustified(60, '\0') + QByteArray("\x40\0\0\0PE\0\0\x64\xAA", 10));
    QFile real(installed("TestAlpha"));
    QVERIFY(real.open(QIODevice::ReadOnly));
    row("cut in the middle", real.read(9000));
}

void TestLifecycle::uselessLibraries()
{
    QFETCH(QByteArray, content);
    const QString file = installed("TestUseless");
    writeFile(file, content);
    const auto container =
        makeContainer(QVector<PluginEntry>{{"U", "TestUseless", true}, {"B", "TestBeta", true}});
    container->LoadAllStaticOrActivePlugin();
    QFile::remove(file);
    QVERIFY(!container->GetPlugin("U", 0));
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList("B"));
    QCOMPARE(log().count("{file}: loadPlugin: strFileName = " + file), 1);
    QCOMPARE(log().count("{time}: {file}: loadPlugin: error : {*}"), 1);
    const PluginStatus status = container->GetPluginStatus().constFirst();
    QVERIFY(status.state == PluginStatus::State::Enabled && !status.error.isEmpty());
}

void TestLifecycle::firstLoadableFileWins()
{
    // One file is no library by its name, one by its content; one is good.
    writeFile(CoreTest::installed("TestMany.txt"), "text");
    writeFile(installed("TestManyA"), "text");
    QFile::remove(installed("TestManyB"));
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestManyB")));
    const auto container = makeContainer(QVector<PluginEntry>{{"Y", "TestMany"}});
    QVERIFY(container->GetPlugin("Y", 0));
    QCOMPARE(log().count("{file}: loadPlugin: strFileName = " + installed("TestManyB") +
                         ", QObject* plugin loaded successfully {*}"),
             1);
    QVERIFY(!log().contains("{*}TestMany.txt{*}"));
}

void TestLifecycle::manyThreads()
{
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(20); });
    const auto container = makeContainer(AlphaBetaMain, "M");
    std::atomic<int> found{0};
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads)
        thread = std::thread([&] {
            QStringList changes;
            for (int round = 0; round < 50; ++round) {
                found += container->GetPlugin("A", 0) != nullptr;
                container->HandleDeviceSwitched("Lume", changes, changes);
                container->UpdateAllStaticOrActivePlugins();
                container->GetLoadedPluginClsids();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(found.load(), 200);
    QCOMPARE(recorder().names({"Init"}).size(), 2);
}

QTEST_GUILESS_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
