// The application as its user meets it: started, driven with modems that come and go, and closed.
#include "Application.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void commandLine_data();
    void commandLine();
    void noMainWindow_data();
    void noMainWindow();
    void splashScreen();
    void splashProgram_data();
    void splashProgram();
    void startAndEnd();
    void pluginsFollowTheModem_data();
    void pluginsFollowTheModem();
    void workersEndFirst_data();
    void workersEndFirst();
};

/// The first group of every match of a pattern, line by line.
static QStringList extract(const QStringList& lines, const QString& pattern)
{
    const QRegularExpression expression(pattern);
    QStringList found;
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = expression.match(line);
        if (match.hasMatch())
            found.append(match.captured(1));
    }
    return found;
}

void TestApplication::commandLine_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("texts"); // on standard output, or on standard error for an error
    QTest::newRow("version") << "--version" << 0 << QStringList({"skylume 0."});
    QTest::newRow("help") << "--help" << 0 << QStringList({"--no-splash", "--verbose", "--version"});
    QTest::newRow("unknown") << "--nonsense" << 1 << QStringList("nonsense");
}

void TestApplication::commandLine()
{
    QFETCH(QString, argument);
    QFETCH(int, exitCode);
    QFETCH(QStringList, texts);
    Application application;
    application.start({argument});
    QCOMPARE(application.waitForEnd(), exitCode);
    const QString written = exitCode == 0 ? application.output() : application.lines().join('\n');
    for (const QString& text : qAsConst(texts))
        QVERIFY2(written.contains(text), qUtf8Printable(written));
}

void TestApplication::noMainWindow_data()
{
    QTest::addColumn<QString>("missing"); // what is not in the installation
    QTest::addColumn<QStringList>("texts");
    const QString mainFrame = "D754AE84-535F-4c18-85F8-F154CFE34DDF";
    QTest::newRow("library") << "XFramePlugin" << QStringList({"pluginslib.xml", mainFrame});
    QTest::newRow("plugin library file") << "config/pluginslib.xml" << QStringList("pluginslib.xml");
    QTest::newRow("plugin configuration file")
        << "config/PluginsConfig.xml" << QStringList({"pluginslib.xml", mainFrame});
}

/// Copies the installation but for the files whose path begins with `missing`.
static bool copyInstallation(const QString& target, const QString& missing)
{
    const QDir source(Application::builtInstallation());
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    bool isCopied = files.hasNext();
    while (files.hasNext()) {
        const QString name = source.relativeFilePath(files.next());
        if (name.startsWith(missing))
            continue;
        const QString copy = target + '/' + name;
        QDir().mkpath(QFileInfo(copy).path());
        isCopied = QFile::copy(files.filePath(), copy) && isCopied;
    }
    return isCopied;
}

void TestApplication::noMainWindow()
{
    QFETCH(QString, missing);
    QFETCH(QStringList, texts);
    const QTemporaryDir installation;
    QVERIFY(copyInstallation(installation.path(), missing));
    Application application(installation.path());
    application.start({"--no-splash"});
    QCOMPARE(application.waitForEnd(), 1);
    for (const QString& text : qAsConst(texts))
        QVERIFY2(application.hasWritten(text), qUtf8Printable(application.lines().join('\n')));
}

void TestApplication::splashScreen()
{
    Application application;
    application.start({"--verbose"});
    QVERIFY(application.waitFor("showing splash screen..."));
    QVERIFY(application.waitFor(": Startup: exit"));
    QVERIFY(application.waitFor("closed XStartScreen on Win"));
    QCOMPARE(application.close(), 0);

    QFile settings(application.userFile("settings.ini"));
    QVERIFY(settings.open(QIODevice::Append) && settings.write("\n[customize]\noperator=bluewave\n") > 0);
    settings.close();
    application.mark();
    application.start({"--verbose"});
    QVERIFY(application.waitFor(": Startup: exit"));
    QVERIFY(!application.hasWritten("showing splash screen..."));
    QCOMPARE(application.close(), 0);
}

void TestApplication::splashProgram_data()
{
    QTest::addColumn<QString>("pictures");
    QTest::addColumn<QByteArray>("scale");
    QTest::addColumn<QByteArray>("shown");
    const QString pictures = Application::builtInstallation() + "/plugins/XFramePlugin/splash";
    QTest::newRow("usual screen") << pictures << QByteArray("1") << QByteArray("560x320, 1.00 pixels");
    QTest::newRow("dense screen") << pictures << QByteArray("2.5") << QByteArray(", 2.50 pixels");
    QTest::newRow("no pictures") << QString("none") << QByteArray("1") << QByteArray("480x270, 1.00 pixels");
}

/// It stands until its standard input ends, which it does when the application is gone, however that came.
void TestApplication::splashProgram()
{
    QFETCH(QString, pictures);
    QFETCH(QByteArray, scale);
    QFETCH(QByteArray, shown);
    QProcess splash;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_LOGGING_RULES", "default.debug=true");
    environment.insert("QT_LOGGING_TO_CONSOLE", "1");
    environment.insert("QT_SCALE_FACTOR", scale);
    environment.insert("QT_FONT_DPI", "96"); // else the virtual screen's
    splash.setProcessEnvironment(environment);
    splash.setProcessChannelMode(QProcess::MergedChannels);
    splash.start(Application::builtInstallation() + "/XStartScreen.exe",
                 {pictures, Application::builtInstallation() + "/plugins"});
    QByteArray output;
    while (!output.contains("pixels each") && splash.waitForReadyRead())
        output += splash.readAll();
    QVERIFY2(output.contains(shown), output);
    QCOMPARE(splash.state(), QProcess::Running);
    splash.closeWriteChannel();
    QVERIFY(splash.waitForFinished());
    QCOMPARE(splash.exitStatus(), QProcess::NormalExit);
    QCOMPARE(splash.exitCode(), 0);
}

void TestApplication::startAndEnd()
{
    Application application;
    application.start({"--verbose", "--no-splash"});
    QVERIFY(application.waitFor(": Startup: exit") &&
            application.waitFor("plugin loaded successfully DialPadPlugin"));
    QCOMPARE(application.close(), 0);

    const QStringList lines = application.lines();
    const QStringList loaded = extract(lines, "QObject\\* plugin loaded successfully (\\w+)");
    const QStringList initialised = extract(lines, "init=-?\\d+, (\\w+) init: elapsed=");
    QStringList unloaded = extract(lines, ": unloadPlugin: plugin (\\w+) unloaded");
    QCOMPARE(loaded.mid(0, 2), QStringList({"DeviceMgrPlugin", "XFramePlugin"}));
    QVERIFY(loaded.size() > 4);
    QCOMPARE(unloaded.last(), QString("XFramePlugin"));
    const auto sorted = [](QStringList names) {
        names.sort();
        return names;
    };
    QCOMPARE(sorted(initialised), sorted(loaded));
    QCOMPARE(sorted(unloaded), sorted(loaded));
    for (const char* complaint :
         {"NOT UNLOADED", "QObject::", "QThread", "QWidget::", "QTimer", "QSocketNotifier", "threw"})
        QVERIFY2(!application.hasWritten(complaint), complaint);
}

namespace {

/// What the user does with the modems, and what comes and goes then.
struct Step
{
    QStringList modem;
    QStringList loaded;
    QStringList unloaded;
};

} // namespace

Q_DECLARE_METATYPE(QVector<Step>)

void TestApplication::pluginsFollowTheModem_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QVector<Step>>("steps");
    const QString sim = "SimInfoPlugin";
    const QString dial = "DialPadPlugin";
    QTest::newRow("northtel") << QByteArray()
                              << QVector<Step>{{{}, {sim, dial}, {}},
                                               {{"detach"}, {}, {sim, dial}},
                                               {{"attach", "Lume S1"}, {sim}, {}},
                                               {{"detach"}, {}, {sim}},
                                               {{"attach", "Lume X5"}, {dial}, {}},
                                               {{"reject"}, {}, {dial}},
                                               {{"attach", "Lume V2"}, {sim, dial}, {}}};
    QTest::newRow("bluewave") << QByteArray("[customize]\noperator=bluewave\n")
                              << QVector<Step>{{{"detach"}, {}, {}},
                                               {{"attach", "Lume S1"}, {}, {dial}},
                                               {{"detach"}, {dial}, {}}};
}

void TestApplication::pluginsFollowTheModem()
{
    QFETCH(QByteArray, settings);
    QFETCH(QVector<Step>, steps);
    Application application;
    QFile file(application.userFile("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(settings) == settings.size());
    file.close();

    application.start({"--verbose", "--no-splash"});
    QVERIFY(application.waitFor(": Startup: exit"));
    for (const Step& step : qAsConst(steps)) {
        const QByteArray name = step.modem.join(' ').toUtf8();
        if (!step.modem.isEmpty()) {
            application.mark();
            QVERIFY2(application.modem(step.modem), name.constData());
        }
        QStringList texts;
        for (const QString& plugin : step.loaded)
            texts.append("plugin loaded successfully " + plugin);
        for (const QString& plugin : step.unloaded)
            texts.append("Unload plugin " + plugin + " bUnloaded 1");
        for (const QString& text : qAsConst(texts))
            QVERIFY2(application.waitFor(text), name + ": " + text.toUtf8());
    }
    QCOMPARE(application.close(), 0);
}

/// A modem with a SIM that takes a minute to read.
static bool writeSlowModem(const Application& application, const QByteArray& model)
{
    QFile file(application.userFile("simulator.ini"));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("[modem Slow]\nstate=attached\nanswer-time=400\nmodel=" + model + '\n');
    for (int i = 0; i < 50; ++i)
        file.write(QString("[message %1]\nmodem=Slow\ntext=%1\n").arg(i).toUtf8());
    return file.flush();
}

void TestApplication::workersEndFirst_data()
{
    QTest::addColumn<bool>("closes");
    QTest::addColumn<QStringList>("texts");
    const QString end = "threadCount is 0; thread: MessageReader: messages";
    QTest::newRow("application closes")
        << true
        << QStringList({"WaitThreadsStop: stop thread called", "start ThreadFinished.wait", end,
                        "end ThreadFinished.wait", "plugin SmsPlugin unloaded"});
    QTest::newRow("modem without messages")
        << false << QStringList({end, "Unload plugin SmsPlugin bUnloaded 1"});
}

/// A reader of messages is told to stop, and waited for before its library goes.
void TestApplication::workersEndFirst()
{
    QFETCH(const bool, closes);
    QFETCH(const QStringList, texts);
    Application application;
    QVERIFY(writeSlowModem(application, "Slow"));
    application.start({"--verbose", "--no-splash"});
    QVERIFY(application.waitFor("; thread: MessageReader: messages"));
    QVERIFY(application.waitFor(": Startup: exit"));
    application.mark();
    if (!closes)
        QVERIFY(writeSlowModem(application, "Lume S1") && application.waitFor(texts.last()));
    QCOMPARE(application.close(), 0);
    const QString log = application.lines().join('\n');
    int place = 0;
    for (const QString& text : texts) {
        place = log.indexOf(text, place);
        QVERIFY2(place >= 0, qUtf8Printable(text));
    }
}

QTEST_GUILESS_MAIN(TestApplication)
#include "tst_application.moc"
