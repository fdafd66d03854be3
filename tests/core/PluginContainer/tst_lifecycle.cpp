// Loading, initialising, shutting down and unloading of real plugin libraries, faulty ones included.
#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"
#include "PluginContainer/PluginIds.h"
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
    void script_data();
    void script();
    void initTimes();
    void sameClsidTwice();
    void faultyCalls_data();
    void faultyCalls();
    void uselessLibraries_data();
    void uselessLibraries();
    void findsTheFile_data();
    void findsTheFile();
    void manyThreads();

private:
    static QString libraryFile(const QString& base) { return base + TEST_LIBRARY_SUFFIX; }
    static QString installed(const QString& base) { return CoreTest::installed(libraryFile(base)); }

    QString perform(const QString& operation, const QString& argument);
    QString run(const QString& script);
    QString callsInShort() const;

    std::unique_ptr<TestContainer> m_host;
};

namespace {

const QString G = PluginIds::LateEmbeddedA;
const QString H = PluginIds::LateEmbeddedB;

/// X has no base interface, H no library, O is not enabled; M is the main frame.
const QVector<PluginEntry> Entries = {{"A", "TestAlpha", true},        {"B", "TestBeta", false, true},
                                      {"M", "TestMainFrame"},          {G, "TestGamma", true},
                                      {H, "TestNothing", false, true}, {"X", "TestBare"},
                                      {"O", "TestOff", true}};

/// Sorts neighbours of one kind: the order among the plugins other than the main frame is not defined when
/// they are shut down.
void sortTeardown(QStringList& calls)
{
    const auto isEqual = [](const QString& a, const QString& b) {
        return a[0] != 'M' && b[0] != 'M' && a[1] == b[1] && QString("ud").contains(a[1]);
    };
    for (auto begin = calls.begin(); begin != calls.end();) {
        const auto end =
            std::find_if(begin, calls.end(), [&](const QString& call) { return !isEqual(call, *begin); });
        std::sort(begin, end);
        begin = std::max(end, begin + 1);
    }
}

} // namespace

/// The result, true as "1" and false as "0".
QString TestLifecycle::perform(const QString& operation, const QString& argument)
{
    TestContainer& host = *m_host;
    const QHash<QString, std::function<QVariant()>> operations = {
        {"get",
         [&] {
             return int(qobject_cast<IBasePlugin*>(host.GetPlugin(argument, 0)) != nullptr);
         }},
        {"ask",
         [&] {
             return int(host.GetPlugin(argument, 0x7777) != nullptr);
         }},
        {"service",
         [&] {
             return int(qobject_cast<IMainFrameUIService*>(host.GetPlugin(argument, 0x1011)) != nullptr);
         }},
        {"available",
         [&] {
             return int(host.IsPluginAvailable(argument));
         }},
        {"loaded",
         [&] {
             return int(host.IsPluginLoaded(argument));
         }},
        {"type",
         [&] {
             return host.GetPluginType(argument);
         }},
        {"name",
         [&] {
             return host.GetPluginNameByClsid(argument);
         }},
        {"unload",
         [&] {
             return int(host.UnloadPlugin(argument));
         }},
        {"destroy",
         [&] {
             return int(host.DestroyPlugin(argument));
         }},
        {"unregister",
         [&] {
             return int(host.UnRegisterFormPluginContainer(argument));
         }},
        {"unloadAll",
         [&] {
             return int(host.UnloadAllPlugins());
         }},
        {"list",
         [&] {
             return host.GetLoadedPluginClsids().join(' ').replace(G, "G");
         }},
        {"inMemory",
         [&] {
             return int(isLibraryInMemory(libraryFile(argument)));
         }},
        {"bulk",
         [&] {
             return host.LoadAllStaticOrActivePlugin(), QVariant();
         }},
        {"update",
         [&] {
             return host.UpdateAllStaticOrActivePlugins(), QVariant();
         }},
        {"apply",
         [&] {
             return host.ApplyCustomizationForDevice(argument), QVariant();
         }},
        {"release",
         [&] {
             return host.Release(), host.GetLastError();
         }},
        {"end", [&] {
             return m_host.reset(), QVariant();
         }}};
    return operations[operation]().toString();
}

/// Performs the operations, which are separated by ";", and returns the script with their actual results.
QString TestLifecycle::run(const QString& script)
{
    QStringList steps = script.split("; ");
    for (QString& step : steps) {
        const QString call = step.section('=', 0, 0);
        const QString result =
            perform(call.section(' ', 0, 0), call.section(' ', 1).replace("G", G).replace("H", H));
        if (step.contains('='))
            step = call + '=' + result;
    }
    return steps.join("; ");
}

/// "A+" constructed, "Ai" Init, "Au" UnSDKRegisterEvent, "Ad" Destroy, "A-" destructed; A for TestAlpha.
QString TestLifecycle::callsInShort() const
{
    const QHash<QString, QString> signs = {{"constructed", "+"},
                                           {"Init", "i"},
                                           {"UnSDKRegisterEvent", "u"},
                                           {"Destroy", "d"},
                                           {"destructed", "-"}};
    QStringList calls = recorder().names(signs.keys());
    for (QString& call : calls)
        call = call[4] + signs[call.section('.', 1)];
    sortTeardown(calls);
    return calls.join(' ');
}

void TestLifecycle::script_data()
{
    // hooks: scripts that a plugin runs within a call; log: lines in this order
    const auto row = dataTable<QString, QStringList, QString, QStringList>("script", "hooks", "calls", "log");
    row("unknown",
        "get Z=0; available Z=0; loaded Z=0; type Z=-1; name Z=; unload Z=0; destroy Z=0; unregister Z=0", {},
        "",
        {"{file}: GetPlugin: entered", "{file}: getPlugin: entered",
         "{file}: IsPluginAvailable: Z is not available",
         "{file}: IsPluginLoaded: entered, strPluginClsid = Z",
         "{file}: GetPluginType: entered, strPluginClsid = Z", "{file}: GetPluginNameByClsid: entered",
         "{file}: getPluginNameByClsid: entered"});
    row("a name is no clsid", "available AlphaPlugin=0; loaded AlphaPlugin=0; destroy AlphaPlugin=0", {}, "",
        {});
    row("not enabled", "get O=0; available O=0; loaded O=0; type O=0; name O=OffPlugin", {}, "",
        {"{file}: getPlugin: O not enabled", "{file}: IsPluginAvailable: O is not available",
         "{file}: GetPluginType: entered, strPluginClsid = O, 0"});
    row("loaded first, initialised later", "available A=1; loaded A=1; get A=1; get A=1", {}, "A+ Ai",
        {"{file}: loadPlugin: entered, m_dirPlugins = {*}", "{file}: getPlugin: A plugin loaded,,,",
         "{file}: IsPluginAvailable: A is available",
         "{file}: IsPluginLoaded: entered, strPluginClsid = A, 1",
         "{file}: getPlugin: A already loaded,,,returning cached pointer",
         "{time}: {file}: initPlugin: called"});
    row("by name, by interface", "get AlphaPlugin=1; service A=1; ask A=0", {}, "A+ Ai", {});
    row("without library it is tried again", "get H=0; get H=0; loaded H=0", {}, "",
        {"{file}: getPlugin: " + H + " plugin NOT LOADED !!!,,,",
         "{file}: getPlugin: " + H + " plugin NOT LOADED !!!,,,"});
    row("no base interface", "get X=0; loaded X=1; destroy X=0; unload X=1", {}, "", {});
    row("bulk load", "get M=1; bulk; bulk; list=A B M", {}, "M+ Mi A+ B+ Ai Bi",
        {"{file}: loadAllStaticOrActivePlugin: TestAlpha to be loaded...",
         "{file}: loadAllStaticOrActivePlugin: TestGamma is not going to be loaded at first...",
         "{file}: loadAllStaticOrActivePlugin: TestNothing is not going to be loaded at first...",
         "{file}: loadAllStaticOrActivePlugin: AlphaPlugin calling initPlugin",
         "{file}: loadAllStaticOrActivePlugin: MainFramePlugin calling initPlugin",
         "{time}: {file}: initPlugin: MainFramePlugin is initialized",
         "{file}: LoadAllStaticOrActivePlugin: plugin count = 7", "{file}: GetLoadedPluginClsids: A loaded"});
    row("unloaded and loaded again",
        "unload A=0; get A=1; inMemory TestAlpha=1; unload AlphaPlugin=1; loaded A=0; inMemory TestAlpha=0; "
        "get A=1; "
        "unload A=1",
        {}, "A+ Ai A- A+ Ai A-",
        {"{file}: unloadPlugin: try to unload plugin AlphaPlugin",
         "{file}: unloadPlugin: plugin AlphaPlugin unloaded"});
    row("all unloaded, the records stay", "bulk; unloadAll=1; list=; get A=1; unloadAll=1", {},
        "A+ B+ Ai Bi Au Bu Ad Bd M+ Mi Mu Md A- B- M- A+ Ai Au Ad M+ Mi Mu Md A- M-", {});
    row("step by step",
        "get A=1; get M=1; available B=1; unregister B=0; destroy B=0; unregister M=0; destroy M=0; "
        "unregister A=1; "
        "destroy A=1; loaded A=1; release=0",
        {}, "A+ Ai M+ Mi B+ Au Ad",
        {"{file}: UnRegisterFormPluginContainer: entered. Plugin: A",
         "UnSDKRegisterEvent Plugin Name: AlphaPlugin, Plugin ClsID: A",
         "{file}: UnRegisterFormPluginContainer: exited.", "{file}: DestroyPlugin: entered. Plugin: A",
         "Destroying Plugin Name: AlphaPlugin, Plugin ClsID: A", "{file}: DestroyPlugin: exited."});
    row("shut down; G is not initialised",
        "bulk; get M=1; available G=1; end; inMemory TestAlpha=0; inMemory TestGamma=0; inMemory "
        "TestMainFrame=0",
        {}, "A+ B+ Ai Bi M+ Mi G+ Au Bu Ad Bd Mu Md A- B- G- M-",
        {"{file}: unloadAllPlugins: bUnloaded 1", "{file}: unloadAllPlugins: bUnloaded 1",
         "{file}: unloadPlugin: plugin MainFramePlugin unloaded"});
    row("another is loaded while stopping", "get A=1; unloadAll=1", {"TestAlpha.UnSDKRegisterEvent: get B=1"},
        "A+ Ai Au B+ Bi Bu Ad Bd M+ Mi Mu Md A- B- M-", {});
    row("all are disabled while stopping", "get A=1; unloadAll=1",
        {"TestAlpha.UnSDKRegisterEvent: apply None"}, "A+ Ai Au Ad A-", {});
    row("calls back from Init", "get A=1; list=A B; unloadAll=1",
        {"TestAlpha.Init: get A=1; get BetaPlugin=1; bulk", "TestBeta.Init: get A=1",
         "TestBeta.Destroy: get A=1"},
        "A+ Ai B+ Bi Au Bu Ad Bd M+ Mi Mu Md A- B- M-", {});
    row("update: out and in",
        "bulk; get M=1; available A=1; apply Lume; update; list=B M G; apply Back; update; update", {},
        "A+ B+ Ai Bi M+ Mi Ad A- G+ Gi A+ Gd G- Ai", // in one pass, so A is loaded before G is unloaded
        {"{file}: UpdateAllStaticOrActivePlugins: Unload plugin AlphaPlugin bUnloaded 1",
         "{file}: UpdateAllStaticOrActivePlugins: TestBeta to be loaded...",
         "{file}: UpdateAllStaticOrActivePlugins: TestGamma to be loaded...",
         "{file}: UpdateAllStaticOrActivePlugins: Loaded plugin: GammaPlugin.",
         "{file}: UpdateAllStaticOrActivePlugins: Loaded plugin: NothingPlugin.",
         "{file}: UpdateAllStaticOrActivePlugins: GammaPlugin calling initPlugin"});
    row("update: loaded only is not destroyed", "available A=1; apply Lume; update", {}, "A+ A- B+ G+ Bi Gi",
        {});
}

void TestLifecycle::script()
{
    QFETCH(QString, script);
    QFETCH(QStringList, hooks);
    QFETCH(QStringList, log);
    m_host.reset(); // of a row that failed
    recorder().reset();
    const QStringList all = {"A", "B", "M", G, H, "X"};
    m_host = makeContainer(pluginLibraryXml(Entries, "M"),
                           commonXml(all) + ruleXml("device", "Lume", {}, {"A", "M"}) +
                               ruleXml("device", "Back", {}, {G}) + ruleXml("device", "None", {}, all));
    for (const QString& hook : qAsConst(hooks)) {
        const QString inner = hook.section(": ", 1);
        recorder().setHook(hook.section(": ", 0, 0), [=] { QCOMPARE(run(inner), inner); });
    }
    QCOMPARE(run(script), script);
    QTEST(callsInShort(), "calls");
    QCOMPARE(this->log().firstMissingInOrder(log), QString());
    recorder().reset();
    m_host.reset();
}

void TestLifecycle::initTimes()
{
    auto container = makeContainer({{"A", "TestAlpha"}});
    recorder().setAnswer("TestAlpha.Init", -7);
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(50); });
    QVERIFY(container->GetPlugin("A", 0));
    const QString start = "{file}: initPlugin: base IBasePlugin load success, ";
    const QStringList critical = log().lines(QtCriticalMsg);
    QCOMPARE(critical.size(), 2);
    QVERIFY(critical[1].section('=', -1).chopped(2).toInt() >= 50);
    VERIFY_LOGGED_IN_ORDER(start + "AlphaPlugin init: Start",
                           start + "init=-7, AlphaPlugin init: elapsed={n}ms");

    // What another loader holds stays as it is, and stops no other.
    QPluginLoader other(installed("TestAlpha"));
    other.setLoadHints({});
    QVERIFY(other.load());
    QVERIFY(!container->UnloadAllPlugins());
    QVERIFY(container->IsPluginLoaded("A"));
    QCOMPARE(log().count("{file}: unloadPlugin: plugin AlphaPlugin NOT UNLOADED; {*}"), 1);
    QCOMPARE(log().count("{file}: unloadAllPlugins: bUnloaded 0"), 1);
    container.reset();
    QVERIFY(other.unload());
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
        auto container = makeContainer(Entries, "M");
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
    const auto container = makeContainer(Entries, "M");
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
