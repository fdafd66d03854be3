// The splash screen: who gets one, its program, its clock.
#include "CoreTest.h"
#include "DataTable.h"
#include "Startup/Startup.h"

#include <QProcess>

struct SplashSteps : Startup
{
    using Startup::haveSplashScreen;
    using Startup::m_pSplashScreen;
    using Startup::m_pSplashStartAt;
    using Startup::showSplashStartupTime;
};

class TestSplash : public CoreTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QFile::remove(installed("XStartScreen.exe")); } // of an earlier run
    void decision_data();
    void decision();
    void program_data();
    void program();
    void dockIcon();
};

void TestSplash::decision_data()
{
    const auto row = dataTable<QString, QByteArray, bool>("operatorName", "xml", "isWanted");
    const QByteArray yes = "<function><x/><splash>true</splash></function>";
    const QByteArray no = "<function><splash>True</splash></function>";
    const QByteArray yesForOp = "<customize name='Op'><x/><splash>true</splash></customize>";
    const QByteArray noForOp = "<customize name='Op'><splash>false</splash></customize>";
    row("outside", "common", "<splash>false</splash>", true);
    row("behind", "common", "<function></function><splash>false</splash>", true);
    row("default", "common", yes, true);
    row("common", "common", no + "<customize name='common'><splash>true</splash></customize>", false);
    row("first section", "Op", yes + yesForOp + noForOp, true);
    row("exact case", "Op", no + "<customize name='op'><splash>false</splash></customize>" + yesForOp, true);
    row("operator's no", "Op", yes + noForOp + yesForOp, false);
    row("modem", "Op", yes + "<customize name='Op' device='D'><splash>true</splash></customize>", false);
    row("empty modem", "Op", no + "<customize name='Op' device=''><splash>true</splash></customize>", true);
    row("cut off", "Op", yes + "<customize name='Op'>", true);
    row("no operator", "", yes + noForOp, true);
}

void TestSplash::decision()
{
    QFETCH(QString, operatorName);
    QFETCH(QByteArray, xml);
    QFETCH(bool, isWanted);
    const QString file = installed("plugins/XFramePlugin/Config.xml");
    QFile::remove(file);
    service().setSetting("customize", "operator", operatorName);
    QVERIFY(!SplashSteps::haveSplashScreen());
    writeFile(file, "<c>" + xml + "</c>");
    QCOMPARE(SplashSteps::haveSplashScreen(), isWanted);
    QCOMPARE(log().count("{file}: haveSplashScreen: splash=0"), isWanted ? 1 : 2);
    QCOMPARE(log().contains("Error: {*} in file " + file + " at line 1, column {n}"), xml.endsWith("'Op'>"));
    for (const bool noSplash : {true, false}) {
        const Startup startup(noSplash);
        const bool isShown = log()
                                 .firstMissingInOrder({"{file}: Startup: showing splash screen...",
                                                       "{file}: PluginContainer: entered{*}"})
                                 .isEmpty();
        QCOMPARE(isShown, !noSplash && isWanted);
    }
}

void TestSplash::program_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"missing", "damaged", "runs"})
        QTest::newRow(kind) << kind;
}

// Whatever the program does, closing ends it and returns. The test's time limit is the check.
void TestSplash::program()
{
    QFETCH(QString, kind);
    const bool runs = kind == "runs";
    const QString file = installed("XStartScreen.exe");
    QFile::remove(file);
    if (kind == "damaged")
        writeFile(file, "no program");
    QVERIFY(!runs || QFile::copy(installed("FakeSplash.exe"), file));
    SplashSteps::m_pSplashStartAt = {};
    SplashSteps::showSplashStartupTime();
    QVERIFY(SplashSteps::m_pSplashStartAt.isValid());
    QProcess* const process = SplashSteps::m_pSplashScreen;
    QCOMPARE(process != nullptr, kind != "missing");
    bool hasFinished = false;
    if (runs) { // and prints its arguments
        const QString arguments = installed("plugins/XFramePlugin/splash") + ' ' + installed("plugins");
        QTRY_VERIFY(process->bytesAvailable() > arguments.toUtf8().size());
        QCOMPARE(process->readAll().simplified(), arguments.toUtf8());
        connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                [&] { hasFinished = true; });
    }
    Startup::CloseSplashScreen();
    Startup::CloseSplashScreen();
    QVERIFY(!SplashSteps::m_pSplashScreen);
    QCOMPARE(hasFinished, runs);
    QCOMPARE(log().count("{file}: CloseSplashScreen: closed XStartScreen on Win"), process ? 1 : 0);
    for (const int seconds : {3600, 24 * 3600 - 60}) { // the second one began before midnight
        SplashSteps::m_pSplashStartAt = QTime::currentTime().addSecs(-seconds);
        QCOMPARE(Startup::GetSplashScreen() / 600000, seconds / 600); // to ten minutes
    }
}

void TestSplash::dockIcon()
{
    QVERIFY(Startup::hideDockIcon(path("none/list.plist")));
    QVERIFY(Startup::hideDockIcon(path("list.plist")));
    QFile file(path("list.plist"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString(file.readAll()).remove(QRegularExpression(R"(\s*\n\s*)")),
             QString("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                     "<dict><key>LSUIElement</key><string>4</string></dict>"));
}

QTEST_GUILESS_MAIN(TestSplash)
#include "tst_splash.moc"
