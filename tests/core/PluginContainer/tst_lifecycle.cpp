// Loading, initialising, shutting down and unloading of real plugin libraries, faulty ones included.
#include "CoreTest.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "ProcessInfo.h"
#include "Samples.h"

#include <QPluginLoader>
#include <QSemaphore>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <thread>

class TestLifecycle : public CoreTest
{
    Q_OBJECT

private slots:
    void script_data();
    void script();
    void initTimes();
    void uselessLibraries();
    void findsTheFile();
    void manyThreads();

private:
    static QString libraryFile(const QString& base) { return base + TEST_LIBRARY_SUFFIX; }
    static QString installed(const QString& base) { return CoreTest::installed(libraryFile(base)); }

    QVariant perform(const QString& operation, const QString& argument);
    QString run(const QString& script);
    void expect(const QString& script) { QCOMPARE(run(script), script); }
    QString callsInShort() const;
};

namespace {

const QString G = PluginIds::LateEmbeddedA;
const QString H = PluginIds::LateEmbeddedB;

const QHash<QString, QString> LateIds = {{"G", G}, {"H", H}};

/// X has no base interface, H no library, O is not enabled; M is the main frame. B is there twice; the later one
/// is used.
const QVector<PluginEntry> Entries = {
    {"A", "TestAlpha", true}, {"B", "TestGamma", false, true}, {"B", "TestBeta", false, true},
    {"M", "TestMainFrame"},   {G, "TestGamma", true},          {H, "TestNothing", false, true},
    {"X", "TestBare"},        {"O", "TestOff", true}};

/// Fault, state and error text of a plugin.
QString faultOf(const PluginContainer& host, const QString& clsid)
{
    const QStringList faults = {"none",       "no library",        "other platform",    "no plugin",
                                "unloadable", "constructor threw", "no base interface", "Init threw"};
    const QStringList states = {"removed", "disabled", "enabled", "loaded", "initialised"};
    for (const PluginStatus& status : host.GetPluginStatus())
        if (status.clsid == clsid)
            return QString("%1, %2: %3")
                .arg(faults[int(status.fault)], states[int(status.state)], status.error)
                .trimmed();
    return {};
}

} // namespace

QVariant TestLifecycle::perform(const QString& operation, const QString& argument)
{
    QVariant result;
    const auto on = [&](const char* name, const std::function<QVariant()>& call) {
        if (operation == name)
            result = call();
    };
    on("get", [&] { return bool(qobject_cast<IBasePlugin*>(m_host->GetPlugin(argument, 0))); });
    on("service",
       [&] { return bool(qobject_cast<IMainFrameUIService*>(m_host->GetPlugin(argument, 0x1011))); });
    on("available", [&] { return m_host->IsPluginAvailable(argument); });
    on("loaded", [&] { return m_host->IsPluginLoaded(argument); });
    on("type", [&] { return m_host->GetPluginType(argument); });
    on("name", [&] { return m_host->GetPluginNameByClsid(argument); });
    on("unload", [&] { return m_host->UnloadPlugin(argument); });
    on("destroy", [&] { return m_host->DestroyPlugin(argument); });
    on("unregister", [&] { return m_host->UnRegisterFormPluginContainer(argument); });
    on("unloadAll", [&] { return m_host->UnloadAllPlugins(); });
    on("list", [&] { return m_host->GetLoadedPluginClsids().join(' ').replace(G, "G"); });
    on("fault", [&] { return faultOf(*m_host, argument); });
    on("throw", [&]() -> QVariant { throw std::runtime_error("broken"); });
    on("throwNumber", [&]() -> QVariant { throw 1; });
    on("inMemory", [&] { return isLibraryInMemory(libraryFile(argument)); });
    on("bulk", [&] { return m_host->LoadAllStaticOrActivePlugin(), QVariant(); });
    on("update", [&] { return m_host->UpdateAllStaticOrActivePlugins(), QVariant(); });
    on("apply", [&] { return m_host->ApplyCustomizationForDevice(argument), QVariant(); });
    on("end", [&] { return m_host.reset(), QVariant(); });
    return result;
}

/// Performs the operations, which are separated by ";", and returns the script with their actual results; true
/// is "1", false is "0".
QString TestLifecycle::run(const QString& script)
{
    QStringList steps = script.split("; ");
    for (QString& step : steps) {
        const QString call = step.section('=', 0, 0);
        const QString argument = call.section(' ', 1);
        const QVariant result = perform(call.section(' ', 0, 0), LateIds.value(argument, argument));
        if (step.contains('='))
            step = call + '=' +
                   (result.type() == QVariant::Bool ? QString::number(result.toInt()) : result.toString());
    }
    return steps.join("; ");
}

/// "A+" constructed, "Ai" Init, "Au" UnSDKRegisterEvent, "Ad" Destroy, "A-" destructed; A for TestAlpha. The
/// order of A and B within a step of the shut-down is not defined.
QString TestLifecycle::callsInShort() const
{
    const QStringList operations = {"constructed", "Init", "UnSDKRegisterEvent", "Destroy", "destructed"};
    QStringList calls = recorder().names(operations);
    for (QString& call : calls)
        call = call.mid(4, 1) + QString("+iud-").mid(operations.indexOf(call.section('.', 1)), 1);
    return calls.join(' ').replace("Bu Au", "Au Bu").replace("Bd Ad", "Ad Bd");
}

/// hook: a script that a plugin runs within a call; log: lines in this order, "{file}: " added
void TestLifecycle::script_data()
{
    const auto row = dataTable<QString, QStringList, QString, QStringList>("script", "hooks", "calls", "log");
    for (const Sample& sample : samplesIn(SCRIPTS))
        row(sample.name, sample.marked("> ").join("; "), sample.marked("hook: "),
            sample.marked("calls: ").join(""), sample.marked("log: "));
}

void TestLifecycle::script()
{
    QFETCH(QString, script);
    QFETCH(QStringList, hooks);
    QFETCH(QStringList, log);
    const QStringList all = {"A", "B", "M", G, H, "X"};
    m_host = makeContainer(pluginLibraryXml(Entries, "M"),
                           commonXml(all) + ruleXml("device", "Lume", {}, {"A", "M"}) +
                               ruleXml("device", "Back", {}, {G}) + ruleXml("device", "None", {}, all));
    for (const QString& hook : qAsConst(hooks)) {
        const QString inner = hook.section(": ", 1);
        recorder().setHook(hook.section(": ", 0, 0), [=] { QCOMPARE(run(inner), inner); });
    }
    this->log().allow("{*}: plugin {*} threw{*}");
    expect(script);
    QTEST(callsInShort(), "calls");
    log.replaceInStrings(QRegularExpression("^(?!\\{)"), "{file}: ");
    QCOMPARE(this->log().firstMissingInOrder(log), QString());
}

void TestLifecycle::initTimes()
{
    m_host = makeContainer(QVector<PluginEntry>{{"A", "TestAlpha"}, {"B", "TestBeta"}});
    recorder().setAnswer("TestAlpha.Init", -7);
    recorder().setHook("TestAlpha.Init", [] { QTest::qSleep(50); });
    expect("get A=1");
    const QString start = "{file}: initPlugin: base IBasePlugin load success, ";
    VERIFY_LOGGED_IN_ORDER(start + "AlphaPlugin init: Start",
                           start + "init=-7, AlphaPlugin init: elapsed={n}ms");
    QVERIFY(log().lines(QtCriticalMsg).value(1).section('=', -1).chopped(2).toInt() >= 50);
    // What another loader holds stays as it is, and stops no other.
    QPluginLoader other(installed("TestAlpha"));
    other.setLoadHints({});
    QVERIFY(other.load());
    expect("get B=1; unloadAll=0; list=A; fault A=none, initialised:; end");
    VERIFY_LOGGED_IN_ORDER("{file}: unloadPlugin: plugin AlphaPlugin NOT UNLOADED; {*}",
                           "{file}: unloadAllPlugins: bUnloaded 0");
    QVERIFY(other.unload());
}

void TestLifecycle::uselessLibraries()
{
    const QByteArray dosHeader = QByteArray("MZ").leftJustified(60, '\0'),
                     foreignPe = dosHeader + QByteArray("\x40\0\0\0PE\0\0\x64\xAA", 10);
    const std::pair<QByteArray, QString> rows[] = {
        {"", "no plugin"},
        {QByteArray("\x7F\x45LF\x01\x02\x01").leftJustified(4096, '\0'), "other platform"},
        {foreignPe, "other platform"},
        {dosHeader + QByteArray(2, '\0'), "no plugin"},              // cut in its header
        {dosHeader + QByteArray("\xFF").repeated(100), "no plugin"}, // the header would be far behind
        {contentOf(installed("TestAlpha")).left(9000), "no plugin"},
        {contentOf(installed("TestUndefined")), "unloadable"}, // a symbol is missing; not on every system
    };
    const QString file = installed("TestUseless");
    for (const auto& [content, fault] : rows) {
        if (content.isEmpty() && fault == "unloadable")
            continue;
        log().clear();
        writeFile(file, content);
        m_host = makeContainer(QVector<PluginEntry>{{"U", "TestUseless", true}, {"B", "TestBeta", true}});
        expect("bulk; get U=0; loaded U=0; loaded B=1");
        const PluginStatus status = m_host->GetPluginStatus().constFirst();
        QVERIFY2(faultOf(*m_host, "U").startsWith(fault + ", enabled: "), qPrintable(faultOf(*m_host, "U")));
        QVERIFY(!status.error.isEmpty() && status.url == "TestUseless");
        QCOMPARE(log().count("{time}: {file}: loadPlugin: error : " + status.error), 2);
        QCOMPARE(log().count("{file}: {func}: U plugin NOT LOADED !!!,,,"), 1); // not in the bulk
        writeFile(file, contentOf(installed("TestAlpha")));                     // repaired
        expect("get U=1; fault U=none, initialised:; end");
        QFile::remove(file);
    }
}

/// The first loadable file wins: one is no library by its name, one by its content, one is good.
void TestLifecycle::findsTheFile()
{
    namespace fs = std::filesystem;
    const fs::path folder = QCoreApplication::applicationDirPath().toStdString();
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    QFile::remove(installed("TestManyB"));
    QFile::remove(installed("TestZebra"));
    writeFile(CoreTest::installed("TestMany.txt"), "text");
    QVERIFY(QDir().mkpath(installed("TestMany")));
    writeFile(installed("TestManyA"), "text");
    std::error_code ignored; // not every system lets a folder's time be set
    fs::last_write_time(folder, longAgo, ignored);
    m_host = makeContainer(QVector<PluginEntry>{{"beginning", "TestMany"},
                                                {"case", "testMANY"},
                                                {"wildcards", "TestM?n[x-z]"},
                                                {"zebra", "TestZebra"}});
    expect("get beginning=0; get case=0; get wildcards=0");
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestManyB"))); // the folder's time changes
    expect("get beginning=1; unload beginning=1; get case=1; unload case=1; get wildcards=1");
    QCOMPARE(log().count("{file}: loadPlugin: strFileName = " + installed("TestManyB") +
                         ", QObject* plugin loaded successfully {*}"),
             3);
    QVERIFY(!log().contains("{*}TestMany.{*}")); // neither the text nor the folder

    fs::last_write_time(folder, longAgo, ignored);
    expect("get zebra=0");
    QVERIFY(QFile::copy(installed("TestAlpha"), installed("TestZebra")));
    fs::last_write_time(folder, longAgo, ignored); // as on a system that does not change the folder's time
    expect("get zebra=1; end");
}

void TestLifecycle::manyThreads()
{
    QSemaphore begun; // all threads begin before the first call returns
    recorder().setHook("TestAlpha.Init", [&] { QVERIFY(begun.tryAcquire(4, 30000)); });
    m_host = makeContainer(Entries, "M");
    const QString script = "get A=1; apply Lume; update; list; fault A; available B; loaded B; destroy Z; "
                           "unload BetaPlugin; bulk";
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads)
        thread = std::thread([&] {
            begun.release();
            for (int round = 0; round < 50; ++round) {
                m_host->IsCustomizationForDevice("Lume");
                expect(script);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(recorder().calls("TestAlpha.Init").size(), 1);
}

QTEST_GUILESS_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
