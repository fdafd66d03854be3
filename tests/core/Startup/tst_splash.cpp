// The splash screen: who gets one, and a program that may be missing or end too early.
#include "CoreTest.h"
#include "Startup/Startup.h"

#include <QDir>
#include <QProcess>
#include <QXmlStreamReader>

class SplashSteps : public Startup
{
public:
    using Startup::haveSplashScreen;
    using Startup::m_pSplashScreen;
    using Startup::m_pSplashStartAt;
    using Startup::showSplashStartupTime;
};

class TestSplash : public CoreTest
{
    Q_OBJECT

private slots:
    void decision_data();
    void decision();
    void program_data();
    void program();
    void start();
    void clock();
    void dockIcon();

private:
    static QString installed(const QString& name)
    {
        return QCoreApplication::applicationDirPath() + '/' + name;
    }
};

void TestSplash::decision_data()
{
    QTest::addColumn<QString>("operatorName"); // null: none is set
    QTest::addColumn<QByteArray>("xml");       // null: there is no file
    QTest::addColumn<bool>("isWanted");

    const QByteArray yes = "<c><function><splash>true</splash></function>";
    const QByteArray no = "<c><function><splash>false</splash></function>";
    const auto customize = [](const QByteArray& attributes, const QByteArray& splash) {
        return "<customize " + attributes + "><splash>" + splash + "</splash></customize>";
    };
    QTest::newRow("no file") << "common" << QByteArray() << false;
    QTest::newRow("empty file") << "common" << QByteArray("") << true;
    QTest::newRow("no function") << "common" << QByteArray("<c><splash>false</splash></c>") << true;
    QTest::newRow("yes") << "common" << yes + "</c>" << true;
    QTest::newRow("no") << "common" << no + "</c>" << false;
    QTest::newRow("capital") << "common" << QByteArray("<c><function><splash>True</splash></function></c>")
                             << false;
    QTest::newRow("first function") << "common" << no + "<function><splash>true</splash></function></c>"
                                    << false;
    QTest::newRow("function without")
        << "common" << QByteArray("<c><function><a/></function><splash>false</splash></c>") << true;
    QTest::newRow("common has no section")
        << "common" << no + customize("name='common'", "true") + "</c>" << false;
    QTest::newRow("operator yes") << "Op" << no + customize("name='Op'", "true") + "</c>" << true;
    QTest::newRow("operator no") << "Op" << yes + customize("name='Op'", "false") + "</c>" << false;
    QTest::newRow("other operator") << "Op" << yes + customize("name='op'", "false") + "</c>" << true;
    QTest::newRow("later section") << "Op"
                                   << no + customize("name='X'", "false") + customize("name='Op'", "true") +
                                          "</c>"
                                   << true;
    QTest::newRow("first section counts")
        << "Op" << yes + customize("name='Op'", "false") + customize("name='Op'", "true") + "</c>" << false;
    QTest::newRow("device") << "Op" << yes + customize("name='Op' device='D'", "true") + "</c>" << false;
    QTest::newRow("empty device") << "Op" << no + customize("name='Op' device=''", "true") + "</c>" << true;
    QTest::newRow("no operator") << QString() << yes + customize("name='Op'", "false") + "</c>" << true;
    QTest::newRow("section of none") << QString() << yes + customize("", "false") + "</c>" << false;
    QTest::newRow("section cut off") << "Op" << yes + "<customize name='Op'>" << true;
}

void TestSplash::decision()
{
    QFETCH(QString, operatorName);
    QFETCH(QByteArray, xml);
    const QString file = installed("plugins/XFramePlugin/Config.xml");
    QFile::remove(file);
    if (!xml.isNull())
        writeFile(file, xml);
    if (!operatorName.isNull())
        service().setSetting("customize", "operator", operatorName);
    const bool isWanted = SplashSteps::haveSplashScreen();
    QTEST(isWanted, "isWanted");
    QCOMPARE(log().count(QString("{file}: haveSplashScreen: splash=%1").arg(isWanted ? 1 : 0)), 1);
}

void TestSplash::program_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isStarted");
    QTest::newRow("missing") << "" << false;
    QTest::newRow("no program") << "garbage" << false;
    QTest::newRow("runs") << "runs" << true;
    QTest::newRow("ends early") << "ends" << true;
}

// Whatever becomes of the program, closing ends it and comes back. The test's time limit is the check.
void TestSplash::program()
{
    QFETCH(QString, kind);
    QFETCH(bool, isStarted);
    const QString file = installed("XStartScreen.exe");
    const QString pictures = installed("plugins/XFramePlugin/splash");
    QFile::remove(file);
    QDir(pictures).removeRecursively();
    if (isStarted)
        QVERIFY(QFile::copy(installed("FakeSplash.exe"), file));
    else if (!kind.isEmpty())
        writeFile(file, kind.toUtf8());
    if (kind == "runs")
        QVERIFY(QDir().mkpath(pictures));

    SplashSteps::showSplashStartupTime();
    QVERIFY(SplashSteps::m_pSplashStartAt.isValid());
    QProcess* const process = SplashSteps::m_pSplashScreen;
    QCOMPARE(process != nullptr, !kind.isEmpty());
    if (isStarted) {
        QTRY_VERIFY(process->bytesAvailable() > pictures.size());
        QCOMPARE(process->readAll().simplified(), (pictures + ' ' + installed("plugins")).toUtf8());
    }
    if (kind == "ends")
        QVERIFY(process->state() == QProcess::NotRunning || process->waitForFinished());
    else
        QVERIFY(!isStarted || process->state() == QProcess::Running);

    bool hasFinished = false;
    if (process)
        connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                [&] { hasFinished = true; });
    Startup::CloseSplashScreen();
    QVERIFY(!SplashSteps::m_pSplashScreen);
    Startup::CloseSplashScreen();
    QCOMPARE(hasFinished, kind == "runs");
    QCOMPARE(log().count("{file}: CloseSplashScreen: closed XStartScreen on Win"), kind.isEmpty() ? 0 : 1);
    QFile::remove(file);
}

void TestSplash::start()
{
    writeFile(installed("plugins/XFramePlugin/Config.xml"), "<c/>");
    service().setSetting("customize", "operator", "common");
    const QString line = "{file}: Startup: showing splash screen...";
    {
        const Startup startup(true);
        QVERIFY(!log().contains("{*}haveSplashScreen{*}") && !log().contains(line));
    }
    const Startup startup(false);
    QCOMPARE(log().firstMissingInOrder(
                 {"{file}: haveSplashScreen: splash=1", line, "{file}: PluginContainer: entered{*}"}),
             QString());
}

// A splash screen that is shown before midnight and closed after it.
void TestSplash::clock()
{
    SplashSteps::m_pSplashStartAt = QTime::currentTime().addSecs(60);
    const int elapsed = Startup::GetSplashScreen();
    const int day = 24 * 60 * 60 * 1000;
    QVERIFY(elapsed >= 0 && elapsed < day);
    SplashSteps::m_pSplashStartAt = QTime();
}

void TestSplash::dockIcon()
{
    QVERIFY(Startup::hideDockIcon(path("no/such/folder")));
    QVERIFY(Startup::hideDockIcon(path("part.plist")));
    QFile file(path("part.plist"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QString texts;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement || reader.isCharacters())
            texts += reader.name() + reader.text();
    QCOMPARE(texts.simplified().remove(' '), QString("dictkeyLSUIElementstring4"));
    QVERIFY(!reader.hasError());
}

QTEST_GUILESS_MAIN(TestSplash)
#include "tst_splash.moc"
