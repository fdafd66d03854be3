// The splash screen: who gets one, and a program that may be missing or end too early.
#include "CoreTest.h"
#include "Startup/Startup.h"

#include <QDir>
#include <QProcess>

class SplashSteps : public Startup
{
public:
    using Startup::haveSplashScreen;
    using Startup::m_pSplashScreen;
    using Startup::showSplashStartupTime;
};

class TestSplash : public CoreTest
{
    Q_OBJECT

private slots:
    void decision();
    void program_data();
    void program();
    void start();

private:
    static QString programFile() { return installed("XStartScreen.exe"); }
    static QString pictures() { return installed("plugins/XFramePlugin/splash"); }

    static void installProgram(const QString& kind);
    static void checkOutput(QProcess& process, bool runs);
};

void TestSplash::decision()
{
    const QByteArray yes = "<c><function><splash>true</splash></function>";
    const QByteArray no = "<c><function><splash>True</splash></function>";
    const QByteArray yesForOp = "<customize name='Op'><splash>true</splash></customize>";
    const QByteArray noForOp = "<customize name='Op'><splash>false</splash></customize>";
    const struct
    {
        const char* operatorName;
        QByteArray xml;
        bool isWanted;
    } cases[] = {
        {"common", "<c><splash>false</splash></c>", true}, // outside "function"
        {"common", "<c><function></function><splash>false</splash></c>", true},
        {"common", yes, true},
        {"common", no + "<customize name='common'><splash>true</splash></customize>", false},
        {"Op", yes + yesForOp + noForOp, true},
        {"Op", no + "<customize name='op'><splash>false</splash></customize>" + yesForOp, true},
        {"Op", yes + noForOp + yesForOp, false},
        {"Op", yes + "<customize name='Op' device='D'><splash>true</splash></customize>", false},
        {"Op", yes + "<customize name='Op'>", true}, // cut off
        {"", yes + noForOp, true},
    };
    const QString file = installed("plugins/XFramePlugin/Config.xml");
    QFile::remove(file);
    QVERIFY(!SplashSteps::haveSplashScreen());
    for (const auto& row : cases) {
        writeFile(file, row.xml);
        service().setSetting("customize", "operator", row.operatorName);
        QVERIFY2(SplashSteps::haveSplashScreen() == row.isWanted, row.operatorName + row.xml);
    }
    QCOMPARE(log().count("{file}: haveSplashScreen: splash=0"), 4);
    QCOMPARE(log().count("Error: {*} in file " + file + " at line 1, column {n}"), 2); // the last two files
}

void TestSplash::program_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"missing", "damaged", "runs", "ends early"})
        QTest::newRow(kind) << kind;
}

/// A program that "runs" finds the pictures, all others do not.
void TestSplash::installProgram(const QString& kind)
{
    QFile::remove(programFile());
    QVERIFY(kind == "runs" ? QDir().mkpath(pictures()) : QDir(pictures()).removeRecursively());
    if (kind == "damaged")
        writeFile(programFile(), "no program");
    else if (kind != "missing")
        QVERIFY(QFile::copy(installed("FakeSplash.exe"), programFile()));
}

/// It prints its arguments; then it goes on or ends.
void TestSplash::checkOutput(QProcess& process, bool runs)
{
    const QByteArray arguments = (pictures() + ' ' + installed("plugins")).toUtf8();
    QTRY_VERIFY(process.bytesAvailable() > arguments.size());
    QCOMPARE(process.readAll().simplified(), arguments);
    QVERIFY(runs || process.state() == QProcess::NotRunning || process.waitForFinished());
}

// Whatever becomes of the program, closing ends it and comes back. The test's time limit is the check.
void TestSplash::program()
{
    QFETCH(QString, kind);
    const bool runs = kind == "runs";
    installProgram(kind);
    SplashSteps::showSplashStartupTime();
    QProcess* const process = SplashSteps::m_pSplashScreen;
    QCOMPARE(process != nullptr, kind != "missing");
    bool hasFinished = false;
    if (runs || kind == "ends early") {
        checkOutput(*process, runs);
        connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                [&] { hasFinished = true; });
    }
    Startup::CloseSplashScreen();
    QVERIFY(!SplashSteps::m_pSplashScreen);
    Startup::CloseSplashScreen();
    QCOMPARE(hasFinished, runs);
    QCOMPARE(log().count("{file}: CloseSplashScreen: closed XStartScreen on Win"), process ? 1 : 0);
    QVERIFY(Startup::GetSplashScreen() >= 0);
    QVERIFY(!process || QFile::remove(programFile()));
}

void TestSplash::start()
{
    writeFile(installed("plugins/XFramePlugin/Config.xml"), "<c/>");
    service().setSetting("customize", "operator", "common");
    const QStringList lines{"{file}: haveSplashScreen: splash=1", "{file}: Startup: showing splash screen...",
                            "{file}: PluginContainer: entered{*}"};
    for (const bool noSplash : {true, false}) {
        const Startup startup(noSplash);
        QCOMPARE(log().firstMissingInOrder(lines).isEmpty(), !noSplash);
    }
}

QTEST_GUILESS_MAIN(TestSplash)
#include "tst_splash.moc"
