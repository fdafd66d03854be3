// Loading, initialising, shutting down and unloading of real plugin libraries, faulty ones included.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "ProcessInfo.h"

#include <QFile>
#include <QPluginLoader>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <stdexcept>
#include <thread>

using Fault = PluginStatus::Fault;
using State = PluginStatus::State;
Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(State)

class TestLifecycle : public CoreTest
{
    Q_OBJECT

private slots:
    void getPlugin();
    void bulkLoad();
    void unloadAndReload();
    void stepwiseTeardown();
    void shutDownOrder();
    void shutDownSurprises_data();
    void shutDownSurprises();
    void sameClsidTwice();
    void faultyCalls_data();
    void faultyCalls();
    void initMayCallBack();
    void uselessLibraries_data();
    void uselessLibraries();
    void findsTheFile_data();
    void findsTheFile();
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
    QVERIFY(!container->GetPlugin("unknown", 0) && !container->GetPlugin("B", 0));
    QCOMPARE(log().count("{file}: getPlugin: B not enabled"), 1);
    for (const char* clsid : {"unknown", "B", "AlphaPlugin"}) { // a name is no clsid here
        QVERIFY2(!container->IsPluginAvailable(clsid) && !container->IsPluginLoaded(clsid), clsid);
        QCOMPARE(container->GetPluginType(clsid), *clsid == 'B' ? 0 : -1);
        QCOMPARE(container->GetPluginNameByClsid(clsid), QString(*clsid == 'B' ? "BetaPlugin" : ""));
        QVERIFY(log().contains(QString("{file}: IsPluginAvailable: %1 is not available").arg(clsid)));
    }
    QVERIFY(recorder().names().isEmpty());

    QVERIFY(container->IsPluginAvailable("A")); // loaded, not initialised
    QCOMPARE(recorder().names({"constructed", "Init"}), QStringList("TestAlpha.constructed"));
    recorder().setAnswer("TestAlpha.Init", -7);
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(50); });
    QVERIFY(qobject_cast<IBasePlugin*>(container->GetPlugin("A", 0)));
    QVERIFY(qobject_cast<IMainFrameUIService*>(container->GetPlugin("AlphaPlugin", 0x1011))); // by name
    QVERIFY(!container->GetPlugin("A", 0x7777)); // a number the plugin does not know
    QCOMPARE(recorder().names({"constructed", "Init"}).size(), 2);
    const QString initialised = "{file}: initPlugin: base IBasePlugin load success, ";
    const QStringList critical = log().lines(QtCriticalMsg);
    QCOMPARE(critical.size(), 2);
    QVERIFY(critical[1].section('=', -1).chopped(2).toInt() >= 50);
    VERIFY_LOGGED_IN_ORDER("{file}: getPlugin: A plugin loaded,,,",
                           "{file}: IsPluginAvailable: A is available", "{file}: GetPlugin: entered",
                           "{file}: getPlugin: entered",
                           "{file}: getPlugin: A already loaded,,,returning cached pointer",
                           "{time}: {file}: initPlugin: called", initialised + "AlphaPlugin init: Start",
                           initialised + "init=-7, AlphaPlugin init: elapsed={n}ms");

    QVERIFY(!container->GetPlugin("N", 0) && !container->GetPlugin("N", 0)); // it is tried again
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
    container->LoadAllStaticOrActivePlugin(); // nothing is left to do
    QCOMPARE(recorder().names(), QStringList({"TestMainFrame.constructed", "TestBeta.constructed",
                                              "TestMainFrame.Init", "TestBeta.Init"}));
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList({"M", "A", "B"}));
    VERIFY_LOGGED_IN_ORDER("{file}: loadAllStaticOrActivePlugin: TestMainFrame to be loaded...",
                           "{file}: loadAllStaticOrActivePlugin: TestNothing to be loaded...",
                           "{file}: loadAllStaticOrActivePlugin: MainFramePlugin calling initPlugin",
                           "{time}: {file}: initPlugin: AlphaPlugin is initialized",
                           "{file}: LoadAllStaticOrActivePlugin: plugin count = 5",
                           "{file}: GetLoadedPluginClsids: M loaded");
}

void TestLifecycle::unloadAndReload()
{
    auto container = makeContainer(AlphaBetaMain); // no main frame is named
    QVERIFY(!container->UnloadPlugin("A") && !container->UnloadPlugin("unknown"));
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

    QVERIFY(container->GetPlugin("A", 0) && container->GetPlugin("B", 0)); // the records live on
    QPluginLoader other(installed("TestAlpha"));
    other.setLoadHints({});
    QVERIFY(other.load());
    QVERIFY(!container->UnloadAllPlugins()); // A's library is in use, which does not stop the others
    QCOMPARE(container->GetLoadedPluginClsids(), QStringList("A"));
    QCOMPARE(log().count("{file}: unloadPlugin: plugin AlphaPlugin NOT UNLOADED; {*}"), 1);
    QCOMPARE(log().count("{file}: unloadAllPlugins: bUnloaded 0"), 1);
    container.reset();
    QVERIFY(other.unload());
}

void TestLifecycle::stepwiseTeardown()
{
    const auto container = makeContainer(AlphaBetaMain, "M");
    container->GetPlugin("A", 0);
    container->GetPlugin("M", 0);
    QVERIFY(container->IsPluginAvailable("B")); // loaded, not initialised
    for (const char* clsid : {"unknown", "AlphaPlugin", "B", "M"})
        QVERIFY2(!container->DestroyPlugin(clsid) && !container->UnRegisterFormPluginContainer(clsid), clsid);
    QVERIFY(container->UnRegisterFormPluginContainer("A") && container->DestroyPlugin("A"));
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
    QVERIFY(container->IsPluginAvailable("G")); // never initialised, so only its library is unloaded
    recorder().reset();
    container.reset();

    QStringList names = recorder().names({"UnSDKRegisterEvent", "Destroy", "destructed"});
    // The order among the plugins other than the main frame is not defined.
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

void TestLifecycle::shutDownSurprises_data()
{
    // What A does when it is asked to unregister, and how often G is then destroyed.
    const auto row = dataTable<QString, int>("operation", "destroyed");
    row("loads another", "load", 1);
    row("unloads another", "unload", 0);
    row("disables all", "disable", 1);
}

void TestLifecycle::shutDownSurprises()
{
    QFETCH(QString, operation);
    const auto container = makeContainer({{"A", "TestAlpha"}, {"G", "TestGamma"}});
    container->GetPlugin("A", 0);
    if (operation != "load")
        container->GetPlugin("G", 0);
    recorder().setHook("TestAlpha.UnSDKRegisterEvent", [&] {
        if (operation == "load")
            container->GetPlugin("G", 0);
        else if (operation == "unload")
            container->UnloadPlugin("G");
        else
            container->disableAllPlugins();
    });
    QVERIFY(container->UnloadAllPlugins());
    QCOMPARE(recorder().names({"UnSDKRegisterEvent", "Destroy"}).filter("TestAlpha").size(), 2);
    QTEST(recorder().calls("TestGamma.Destroy").size(), "destroyed");
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
    const auto row = dataTable<QString, QString, Fault, State>("call", "line", "fault", "state");
    const QString plugin = ": plugin AlphaPlugin threw";
    row("constructor", "constructed", "load: plugin {*}TestAlpha{*} threw", Fault::ConstructorThrew,
        State::Enabled);
    row("Init", "Init", "Init" + plugin, Fault::InitThrew, State::Loaded);
    row("QueryInterface", "QueryInterface(0x0)", "QueryInterface" + plugin, Fault::None, State::Initialized);
    row("UnSDKRegisterEvent", "UnSDKRegisterEvent", "UnSDKRegisterEvent" + plugin, Fault::None,
        State::Initialized);
    row("Destroy", "Destroy", "Destroy" + plugin, Fault::None, State::Initialized);
}

/// Whatever a plugin throws affects no other: they start and end as always.
void TestLifecycle::faultyCalls()
{
    QFETCH(QString, call);
    QFETCH(QString, line);
    log().allow(line + "{*}");
    for (const char* text : {": broken", ""}) {
        recorder().reset();
        recorder().setHook("TestAlpha." + call, [text] {
            if (*text)
                throw std::runtime_error("broken");
            throw 1;
        });
        auto container = makeContainer(AlphaBetaMain, "M");
        container->LoadAllStaticOrActivePlugin();
        const bool isUsable = call != "constructed" && !call.startsWith("Query");
        QCOMPARE(container->GetPlugin("A", 0) != nullptr, isUsable);
        QVERIFY(container->GetPlugin("M", 0));
        const PluginStatus status = container->GetPluginStatus().constFirst();
        QTEST(status.fault, "fault");
        QTEST(status.state, "state");
        QVERIFY(status.fault == Fault::None ? status.error.isEmpty()
                                            : status.error.contains("threw" + QString(text)));
        container.reset();
        QVERIFY(log().contains(line + text));
        for (const char* name : {"TestBeta.Init", "TestBeta.UnSDKRegisterEvent", "TestBeta.Destroy",
                                 "TestMainFrame.Destroy", "TestMainFrame.destructed"})
            QVERIFY2(recorder().names().contains(name), name);
        QVERIFY(!isLibraryInMemory(libraryFile("TestBeta")) && !isLibraryInMemory(libraryFile("TestAlpha")));
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
    const auto row = dataTable<QString, QByteArray, Fault>("url", "content", "fault");
    const QByteArray foreignPe =
        QByteArray("MZ").leftJustified(60, '\0') + QByteArray("\x40\0\0\0PE\0\0\x64\xAA", 10);
    row("no file", "TestNothing", "", Fault::NoLibrary);
    row("empty", "TestUseless", "", Fault::NotAPlugin);
    row("foreign ELF", "TestUseless", QByteArray("\x7F\x45LF\x01\x02\x01").leftJustified(4096, '\0'),
        Fault::OtherPlatform);
    row("foreign PE", "TestUseless", foreignPe, Fault::OtherPlatform);
    row("PE cut in its header", "TestUseless", foreignPe.left(62), Fault::NotAPlugin);
    QFile real(installed("TestAlpha"));
    QVERIFY(real.open(QIODevice::ReadOnly));
    row("cut in the middle", "TestUseless", real.read(9000), Fault::NotAPlugin);
    row("no base interface", "TestBare", "", Fault::NoBaseInterface);
    if (QFile::exists(installed("TestUndefined")))
        row("missing symbol", "TestUndefined", "", Fault::NotLoadable);
}

void TestLifecycle::uselessLibraries()
{
    QFETCH(QString, url);
    QFETCH(QByteArray, content);
    const QString file = installed(url);
    const bool isOurs = url == "TestUseless";
    if (isOurs)
        writeFile(file, content);
    const auto container = makeContainer(QVector<PluginEntry>{{"U", url, true}, {"B", "TestBeta", true}});
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(!container->GetPlugin("U", 0));
    const PluginStatus status = container->GetPluginStatus().constFirst();
    QTEST(status.fault, "fault");
    QVERIFY(!status.error.isEmpty() && status.url == url);
    const bool isLoaded = status.fault == Fault::NoBaseInterface;
    QVERIFY(status.state == (isLoaded ? State::Loaded : State::Enabled));
    QCOMPARE(container->IsPluginLoaded("U"), isLoaded);
    QVERIFY(container->IsPluginLoaded("B"));
    QCOMPARE(log().count("{time}: {file}: loadPlugin: error : " + status.error),
             isLoaded || status.fault == Fault::NoLibrary ? 0 : 2);
    if (!isOurs)
        return;
    QFile::remove(file);
    QVERIFY(QFile::copy(installed("TestAlpha"), file)); // repaired
    QVERIFY(container->GetPlugin("U", 0));
    QVERIFY(container->GetPluginStatus().constFirst().error.isEmpty());
    container->UnloadPlugin("U");
    QFile::remove(file);
}

void TestLifecycle::findsTheFile_data()
{
    const auto row = dataTable<QString>("url");
    row("beginning of the name", "TestMany");
    row("in another case", "testMANY");
    row("wildcards", "TestM?n[x-z]");
}

/// The first loadable file wins: one is no library by its name, one by its content, one is good.
void TestLifecycle::findsTheFile()
{
    QFETCH(QString, url);
    namespace fs = std::filesystem;
    const fs::path folder = QCoreApplication::applicationDirPath().toStdString();
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    QFile::remove(installed("TestManyB"));
    writeFile(CoreTest::installed("TestMany.txt"), "text");
    writeFile(installed("TestManyA"), "text");
    fs::last_write_time(folder, longAgo);
    const auto container = makeContainer(QVector<PluginEntry>{{"Y", url}, {"Z", "TestZebra"}});
    QVERIFY(!container->GetPlugin("Y", 0));
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestManyB"))); // the folder's time changes
    QVERIFY(container->GetPlugin("Y", 0));
    QVERIFY(container->UnloadPlugin("Y"));
    QCOMPARE(log().count("{file}: loadPlugin: strFileName = " + installed("TestManyB") +
                         ", QObject* plugin loaded successfully {*}"),
             1);
    QVERIFY(!log().contains("{*}TestMany.txt{*}"));

    fs::last_write_time(folder, longAgo);
    QVERIFY(!container->GetPlugin("Z", 0));
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestZebra")));
    fs::last_write_time(folder, longAgo); // as on a system that does not change the folder's time
    QVERIFY(container->GetPlugin("Z", 0));
    QVERIFY(container->UnloadPlugin("Z"));
    QFile::remove(installed("TestZebra"));
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
                container->GetPluginStatus();
                container->IsCustomizationForDevice("Lume");
                container->IsPluginAvailable("B");
                container->IsPluginLoaded("B");
                container->DestroyPlugin("none");
                container->UnloadPlugin("BetaPlugin");
                container->LoadAllStaticOrActivePlugin();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(found.load(), 200);
    QCOMPARE(recorder().calls("TestAlpha.Init").size(), 1);
}

QTEST_GUILESS_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
