// Loading, initialising, shutting down and unloading of real plugin libraries, the faulty ones included.
#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "ProcessInfo.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

class TestLifecycle : public CoreTest
{
    Q_OBJECT

private slots:
    void getPlugin();
    void availableLoadsWithoutInitialising();
    void bulkLoad();
    void unloadOneAndReload();
    void stepwiseTeardown();
    void shutDownOrder();
    void unloadAllWithoutMainFrame();
    void sameClsidTwice();
    void faultyCalls_data();
    void faultyCalls();
    void slowInitIsMeasured();
    void initMayCallBack();
    void uselessLibraries_data();
    void uselessLibraries();
    void firstLoadableFileWins();
    void manyThreads();

private:
    static QString libraryFile(const QString& base) { return base + TEST_LIBRARY_SUFFIX; }
    static QString installed(const QString& base)
    {
        return QCoreApplication::applicationDirPath() + '/' + libraryFile(base);
    }
};

static const QVector<PluginEntry> alphaBetaMain = {
    {"A", "TestAlpha", true}, {"B", "TestBeta", false, true}, {"M", "TestMainFrame"}};

void TestLifecycle::getPlugin()
{
    const auto container = makeContainer(
        pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}, {"N", "TestNothing"}, {"X", "TestBare"}}),
        commonXml({"A", "N", "X"}));
    QVERIFY(!container->GetPlugin("unknown", 0));
    QVERIFY(!container->GetPlugin("", 0));
    QVERIFY(!container->GetPlugin("B", 0));
    QCOMPARE(log().count("{file}: getPlugin: B not enabled"), 1);
    QVERIFY(recorder().names().isEmpty());

    QObject* const root = container->GetPlugin("A", 0);
    QVERIFY(qobject_cast<IBasePlugin*>(root));
    QCOMPARE(log().count("{file}: getPlugin: A plugin loaded,,,"), 1);
    QCOMPARE(container->GetPlugin("AlphaPlugin", 0x1001), root); // by name
    QCOMPARE(log().count("{file}: getPlugin: A already loaded,,,returning cached pointer"), 1);
    QVERIFY(!container->GetPlugin("A", 0x7777)); // a number the plugin does not know
    QCOMPARE(recorder().names({"constructed", "Init"}),
             QStringList({"TestAlpha.constructed", "TestAlpha.Init"}));
    QCOMPARE(log().lines(QtCriticalMsg).size(), 2);
    QCOMPARE(
        log().firstMissingInOrder(
            {"{file}: initPlugin: base IBasePlugin load success, AlphaPlugin init: Start",
             "{file}: initPlugin: base IBasePlugin load success, init=1, AlphaPlugin init: elapsed={n}ms"}),
        QString());

    QObject other;
    recorder().setAnswer("TestAlpha.QueryInterface(0x1001)", QVariant::fromValue(&other));
    QCOMPARE(container->GetPlugin("A", 0x1001), &other);

    QVERIFY(!container->GetPlugin("N", 0)); // no such library
    QVERIFY(!container->GetPlugin("N", 0)); // and it is tried again
    QCOMPARE(log().count("{file}: getPlugin: N plugin NOT LOADED !!!,,,"), 2);
    QVERIFY(!container->GetPlugin("X", 0)); // a plugin without the base interface
    QVERIFY(container->IsPluginLoaded("X"));
}

void TestLifecycle::availableLoadsWithoutInitialising()
{
    const auto container =
        makeContainer(pluginLibraryXml({{"A", "TestAlpha"}, {"B", "TestBeta"}}), commonXml({"A"}));
    QVERIFY(!container->IsPluginAvailable("unknown"));
    QVERIFY(!container->IsPluginAvailable("B"));
    QVERIFY(!container->IsPluginAvailable("AlphaPlugin")); // a name is no clsid here
    QVERIFY(container->IsPluginAvailable("A"));
    QVERIFY(log().contains("{file}: IsPluginAvailable: A is available"));
    QVERIFY(log().contains("{file}: IsPluginAvailable: B is not available"));
    QVERIFY(container->IsPluginLoaded("A"));
    QVERIFY(log().contains("{file}: IsPluginLoaded: entered, strPluginClsid = A, 1"));
    QVERIFY(!container->IsPluginLoaded("unknown"));
    QVERIFY(recorder().names({"Init"}).isEmpty());
    container->GetPlugin("A", 0);
    QCOMPARE(recorder().names({"Init"}), QStringList("TestAlpha.Init"));
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
    QCOMPARE(log().firstMissingInOrder({"{file}: {func}: TestMainFrame to be loaded...",
                                        "{file}: {func}: TestNothing to be loaded...",
                                        "{file}: {func}: MainFramePlugin calling initPlugin",
                                        "{time}: {file}: initPlugin: AlphaPlugin is initialized",
                                        "{file}: {func}: BetaPlugin calling initPlugin",
                                        "{file}: LoadAllStaticOrActivePlugin: plugin count = 5"}),
             QString());
    container->LoadAllStaticOrActivePlugin();
    QCOMPARE(recorder().names({"constructed", "Init"}).size(), 4);
}

void TestLifecycle::unloadOneAndReload()
{
    const auto container = makeContainer(alphaBetaMain, "M");
    const QString file = libraryFile("TestAlpha");
    QVERIFY(!container->UnloadPlugin("A")); // not loaded
    QVERIFY(!container->UnloadPlugin("unknown"));
    for (const char* key : {"A", "AlphaPlugin"}) {
        recorder().reset();
        QVERIFY(container->GetPlugin("A", 0));
        QVERIFY(isLibraryInMemory(file));
        QVERIFY(container->UnloadPlugin(key));
        QVERIFY(!container->IsPluginLoaded("A"));
        QVERIFY(!isLibraryInMemory(file));
        QCOMPARE(recorder().names({"constructed", "Init", "Destroy", "destructed"}),
                 QStringList({"TestAlpha.constructed", "TestAlpha.Init", "TestAlpha.destructed"}));
    }
    QCOMPARE(log().firstMissingInOrder({"{file}: unloadPlugin: try to unload plugin AlphaPlugin",
                                        "{file}: unloadPlugin: plugin AlphaPlugin unloaded"}),
             QString());
}

void TestLifecycle::stepwiseTeardown()
{
    const auto container = makeContainer(alphaBetaMain, "M");
    IPluginContainer& host = *container;
    container->GetPlugin("A", 0);
    container->GetPlugin("M", 0);
    QVERIFY(container->IsPluginAvailable("B")); // loaded, not initialised
    for (const char* clsid : {"unknown", "AlphaPlugin", "B", "M"})
        QVERIFY2(!host.DestroyPlugin(clsid) && !host.UnRegisterFormPluginContainer(clsid), clsid);
    QVERIFY(host.UnRegisterFormPluginContainer("A"));
    QVERIFY(host.DestroyPlugin("A"));
    QCOMPARE(recorder().names({"UnSDKRegisterEvent", "Destroy"}),
             QStringList({"TestAlpha.UnSDKRegisterEvent", "TestAlpha.Destroy"}));
    QVERIFY(host.IsPluginLoaded("A"));
    QCOMPARE(log().firstMissingInOrder({"{file}: UnRegisterFormPluginContainer: entered. Plugin: A",
                                        "UnSDKRegisterEvent Plugin Name: AlphaPlugin, Plugin ClsID: A",
                                        "{file}: DestroyPlugin: entered. Plugin: A",
                                        "Destroying Plugin Name: AlphaPlugin, Plugin ClsID: A",
                                        "{file}: DestroyPlugin: exited."}),
             QString());
}

void TestLifecycle::shutDownOrder()
{
    QVector<PluginEntry> entries = alphaBetaMain;
    entries.prepend({"G", "TestGamma"});
    auto container = makeContainer(entries, "M");
    container->LoadAllStaticOrActivePlugin();
    container->GetPlugin("M", 0);
    QVERIFY(container->IsPluginAvailable("G")); // never initialised, so nothing to shut down but its library
    recorder().reset();
    log().clear();
    container.reset();

    const QStringList names = recorder().names({"UnSDKRegisterEvent", "Destroy", "destructed"});
    QCOMPARE(names.size(), 10);
    const auto group = [&](int from, int count) {
        QStringList part = names.mid(from, count);
        part.sort(); // the plugins other than the main frame go in no stated order
        return part;
    };
    QCOMPARE(group(0, 2), QStringList({"TestAlpha.UnSDKRegisterEvent", "TestBeta.UnSDKRegisterEvent"}));
    QCOMPARE(group(2, 2), QStringList({"TestAlpha.Destroy", "TestBeta.Destroy"}));
    QCOMPARE(names.mid(4, 2), QStringList({"TestMainFrame.UnSDKRegisterEvent", "TestMainFrame.Destroy"}));
    QCOMPARE(group(6, 3),
             QStringList({"TestAlpha.destructed", "TestBeta.destructed", "TestGamma.destructed"}));
    QCOMPARE(names.last(), QString("TestMainFrame.destructed"));
    for (const PluginEntry& entry : qAsConst(entries))
        QVERIFY2(!isLibraryInMemory(libraryFile(entry.url)), qUtf8Printable(entry.url));
    QCOMPARE(log().count("{file}: unloadAllPlugins: bUnloaded 1"), 2);
    QCOMPARE(log().firstMissingInOrder({"{file}: unloadAllPlugins: bUnloaded 1",
                                        "{file}: unloadAllPlugins: bUnloaded 1",
                                        "{file}: unloadPlugin: plugin MainFramePlugin unloaded"}),
             QString());
}

void TestLifecycle::unloadAllWithoutMainFrame()
{
    const auto container = makeContainer(alphaBetaMain); // none is named
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->UnloadAllPlugins());
    QVERIFY(container->GetLoadedPluginClsids().isEmpty());
    QCOMPARE(recorder().names({"Destroy"}).size(), 2);
    QVERIFY(container->GetPlugin("A", 0)); // the records live on
    QVERIFY(container->UnloadAllPlugins());
    QVERIFY(container->UnloadAllPlugins());
}

void TestLifecycle::sameClsidTwice()
{
    auto container = makeContainer(QVector<PluginEntry>{{"A", "TestAlpha", true}, {"A", "TestBeta", true}});
    container->LoadAllStaticOrActivePlugin();
    QVERIFY(container->GetLoadedPluginClsids().contains("A"));
    QVERIFY(container->GetPlugin("A", 0));
    QCOMPARE(container->GetPluginNameByClsid("A"), QString("BetaPlugin"));
    container.reset();
    QVERIFY(!isLibraryInMemory(libraryFile("TestAlpha")) && !isLibraryInMemory(libraryFile("TestBeta")));
}

void TestLifecycle::faultyCalls_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<bool>("isUsable"); // whether GetPlugin still gives the plugin
    QTest::newRow("constructor") << "constructed" << false;
    QTest::newRow("Init") << "Init" << true;
    QTest::newRow("QueryInterface") << "QueryInterface(0x0)" << false;
    QTest::newRow("UnSDKRegisterEvent") << "UnSDKRegisterEvent" << true;
    QTest::newRow("Destroy") << "Destroy" << true;
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
        auto container = makeContainer(alphaBetaMain, "M");
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

void TestLifecycle::slowInitIsMeasured()
{
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(300); });
    recorder().setAnswer("TestAlpha.Init", -7);
    const auto container = makeContainer(alphaBetaMain, "M");
    container->GetPlugin("A", 0);
    const QStringList lines = log().lines(QtCriticalMsg, "{*} init=-7, AlphaPlugin init: elapsed={n}ms");
    QCOMPARE(lines.size(), 1);
    const int elapsed = lines.first().section('=', -1).chopped(2).toInt();
    QVERIFY2(elapsed >= 295 && elapsed < 5000, qUtf8Printable(lines.first()));
}

void TestLifecycle::initMayCallBack()
{
    auto container = makeContainer(alphaBetaMain, "M");
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
    QTest::addColumn<int>("bytes"); // how much of a real library; -1: none of it
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << -1 << QByteArray("not a library at all\n");
    QTest::newRow("empty") << -1 << QByteArray();
    QTest::newRow("foreign ELF") << -1
                                 << QByteArray("\x7F"
                                               "ELF\x01\x02\x01")
                                        .leftJustified(4096, '\0');
    QTest::newRow("foreign PE") << -1
                                << QByteArray("MZ").leftJustified(60, '\0') +
                                       QByteArray("\x40\0\0\0PE\0\0\x64\xAA", 10);
    QTest::newRow("cut after the header") << 64 << QByteArray();
    QTest::newRow("cut in the middle") << 9000 << QByteArray();
}

void TestLifecycle::uselessLibraries()
{
    QFETCH(int, bytes);
    QFETCH(QByteArray, content);
    if (bytes >= 0) {
        QFile real(installed("TestAlpha"));
        QVERIFY(real.open(QIODevice::ReadOnly));
        content = real.read(bytes);
    }
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
    writeFile(QCoreApplication::applicationDirPath() + "/TestMany.txt", "text");
    writeFile(installed("TestManyA"), "text");
    QFile::remove(installed("TestManyB"));
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestManyB")));
    const auto container = makeContainer(QVector<PluginEntry>{{"Y", "TestMany"}});
    QVERIFY(container->GetPlugin("Y", 0));
    QCOMPARE(log().count("{file}: loadPlugin: strFileName = " + installed("TestManyB") +
                         ", QObject* plugin loaded successfully {*}"),
             1);
    QVERIFY(!log().contains("{*}TestMany.txt{*}"));
    QVERIFY(container->UnloadAllPlugins());
    for (const char* base : {"TestManyA", "TestManyB"})
        QFile::remove(installed(base));
}

void TestLifecycle::manyThreads()
{
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(20); });
    const auto container = makeContainer(alphaBetaMain, "M");
    std::atomic<int> found{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
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
