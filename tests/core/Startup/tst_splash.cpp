// The splash screen: who gets one, and a program that may be missing or end too early.
#include "CoreTest.h"
#include "Startup/Startup.h"

#include <QProcess>

#include <tuple>

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
};

void TestSplash::decision()
{
    const QByteArray yes = "<c><function><splash>true</splash></function>";
    const QByteArray no = "<c><function><splash>True</splash></function>";
    const QByteArray yesForOp = "<customize name='Op'><splash>true</splash></customize>";
    const QByteArray noForOp = "<customize name='Op'><splash>false</splash></customize>";
    const std::tuple<const char*, QByteArray, bool> cases[] = {
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
    for (const auto& [operatorName, xml, isWanted] : cases) {
        writeFile(file, xml);
        service().setSetting("customize", "operator", operatorName);
        QVERIFY2(SplashSteps::haveSplashScreen() == isWanted, operatorName + xml);
    }
    QCOMPARE(log().count("{file}: haveSplashScreen: splash=0"), 4);
    QCOMPARE(log().count("Error: {*} in file " + file + " at line 1, column {n}"), 2); // the last two files
}

void TestSplash::program_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"missing", "damaged", "runs"})
        QTest::newRow(kind) << kind;
}

// Whatever becomes of the program, closing ends it and comes back. The test's time limit is the check.
void TestSplash::program()
{
    QFETCH(QString, kind);
    const QString file = installed("XStartScreen.exe");
    QFile::remove(file);
    if (kind == "damaged")
        writeFile(file, "no program");
    else if (kind == "runs")
        QVERIFY(QFile::copy(installed("FakeSplash.exe"), file));
    SplashSteps::showSplashStartupTime();
    QProcess* const process = SplashSteps::m_pSplashScreen;
    QCOMPARE(process != nullptr, kind != "missing");
    bool hasFinished = false;
    if (kind == "runs") { // and prints its arguments
        const QString arguments = installed("plugins/XFramePlugin/splash") + ' ' + installed("plugins");
        QTRY_VERIFY(process->bytesAvailable() > arguments.toUtf8().size());
        QCOMPARE(process->readAll().simplified(), arguments.toUtf8());
        connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                [&] { hasFinished = true; });
    }
    Startup::CloseSplashScreen();
    QVERIFY(!SplashSteps::m_pSplashScreen);
    Startup::CloseSplashScreen();
    QCOMPARE(hasFinished, kind == "runs");
    QCOMPARE(log().count("{file}: CloseSplashScreen: closed XStartScreen on Win"), process ? 1 : 0);
    QVERIFY(Startup::GetSplashScreen() >= 0);
    QVERIFY(!process || QFile::remove(file));
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
