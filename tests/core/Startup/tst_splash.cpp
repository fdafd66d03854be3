// The splash screen: who gets one, its program, its clock.
#include "CoreTest.h"
#include "Startup/SplashDelay.h"
#include "Startup/Startup.h"

#include <QProcess>

struct SplashSteps : Startup
{
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
    row("no file", "common", "", false);
    row("behind", "common", "<function></function><splash>false</splash>", true);
    row("common", "common", no + "<customize name='common'><splash>true</splash></customize>", false);
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
    if (!xml.isEmpty())
        writeFile(file, "<c>" + xml + "</c>");
    service().setSetting("customize", "operator", operatorName);
    for (const bool noSplash : {true, false}) {
        const Startup startup(noSplash);
        const QString missing = log().firstMissingInOrder({"{file}: haveSplashScreen: splash=1",
                                                           "{file}: Startup: showing splash screen...",
                                                           "{file}: PluginContainer: entered{*}"});
        QCOMPARE(missing.isEmpty(), !noSplash && isWanted);
    }
    QCOMPARE(log().contains("{file}: haveSplashScreen: splash=0"), !isWanted);
    QCOMPARE(log().contains("Error: {*} in file " + file + " at line 1, column {n}"), xml.endsWith("'Op'>"));
}

// Whatever the program does, closing ends it and returns. The test's time limit is the check. The real one shows nothing
// while the start is a quick one.
void TestSplash::program()
{
    const QString file = installed("XStartScreen.exe");
    qputenv("QT_LOGGING_RULES", "default.debug=true");
    for (const QString kind : {"missing", "damaged", "runs", "is real"}) {
        QFile::remove(file);
        if (kind == "damaged")
            writeFile(file, "no program");
        if (kind == "runs")
            QVERIFY(QFile::copy(installed("FakeSplash.exe"), file));
        if (kind == "is real")
            QVERIFY(QFile::copy(SPLASH_PROGRAM, file));
        QElapsedTimer sinceStart;
        sinceStart.start();
        SplashSteps::showSplashStartupTime();
        QVERIFY(Startup::GetSplashScreen() < 60000);
        QPointer<QProcess> process = SplashSteps::m_pSplashScreen;
        QCOMPARE(process.isNull(), kind == "missing");
        const QString arguments = installed("plugins/XFramePlugin/splash") + ' ' + installed("plugins") + ' ';
        if (kind == "runs") // and prints them
            QTRY_COMPARE(QString(process->peek(1000)).replace(QRegularExpression("\\s+"), " "), arguments);
        if (kind == "is real") {
            process->setReadChannel(QProcess::StandardError);
            QTRY_VERIFY_WITH_TIMEOUT(process->peek(4000).contains(": showEvent: "), 60000);
            QVERIFY(sinceStart.elapsed() >= SplashDelay);
        }
        Startup::CloseSplashScreen();
        Startup::CloseSplashScreen();
        QVERIFY(!SplashSteps::m_pSplashScreen && !process);
    }
    qunsetenv("QT_LOGGING_RULES");
    QFile::remove(file); // so that other tests show none
    QCOMPARE(log().count("{file}: CloseSplashScreen: closed XStartScreen on Win"), 3);
    for (const int seconds : {3600, 24 * 3600 - 60}) { // the second one began before midnight
        SplashSteps::m_pSplashStartAt = QTime::currentTime().addSecs(-seconds);
        QCOMPARE(Startup::GetSplashScreen() / 600000, seconds / 600); // to ten minutes
    }
}

void TestSplash::dockIcon()
{
    QVERIFY(Startup::hideDockIcon(path("none/list")) && Startup::hideDockIcon(path("list")));
    QFile file(path("list"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString xml = QString(file.readAll()).remove(QRegularExpression(R"(\s*\n\s*)"));
    QCOMPARE(xml.section("?>", 1), QString("<dict><key>LSUIElement</key><string>4</string></dict>"));
}

QTEST_GUILESS_MAIN(TestSplash)
#include "tst_splash.moc"
