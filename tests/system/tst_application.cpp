// The application as its user meets it: started, driven with modems that come and go, and closed.
#include "Application.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QtTest>

#include <tuple>
class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void commandLine();
    void damagedInstallation();
    void brokenConfiguration();
    void secondStart();
    void splashProgram();
    void pluginsFollowTheModem();
    void workersEndFirst();
};

void TestApplication::commandLine()
{
    const std::tuple<QString, int, QStringList> rows[] = {
        {"--version", 0, {"skylume 0."}},
        {"--help", 0, {"--background", "--no-splash", "--several", "--verbose", "--version"}},
        {"--nonsense", 1, {"nonsense"}},
        {"nonsense", 1, {"nonsense"}},
    };
    for (const auto& [argument, exitCode, texts] : rows) {
        Application application;
        application.start({argument});
        QCOMPARE(application.waitForEnd(), exitCode);
        const QString written = exitCode == 0 ? application.output() : application.lines().join('\n');
        for (const QString& text : texts)
            QVERIFY2(written.contains(text), qUtf8Printable(written));
    }
}

namespace {

/// Copies the installation. Files whose path begins with `missing` are left out, and the libraries of the
/// faulty plugins are replaced by one that throws an exception in every call.
bool copyInstallation(const QString& target, const QString& missing, const QStringList& faulty)
{
    const QDir source(Application::usualInstallation());
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    bool isCopied = files.hasNext();
    while (files.hasNext()) {
        const QString name = source.relativeFilePath(files.next());
        if (name.startsWith(missing))
            continue;
        const QString copy = target + '/' + name;
        const bool isFaulty = faulty.contains(QFileInfo(name).path() + '/' + QFileInfo(name).baseName());
        QDir().mkpath(QFileInfo(copy).path());
        isCopied = QFile::copy(isFaulty ? FAULTY_PLUGIN : files.filePath(), copy) && isCopied;
    }
    return isCopied;
}

} // namespace

/// What standard error says about files that are missing or faulty, and the exit code.
void TestApplication::damagedInstallation()
{
    const QString mainFrame = "D754AE84-535F-4c18-85F8-F154CFE34DDF";
    const std::tuple<QString, QStringList, int, QStringList> rows[] = {
        {"XFramePlugin", {}, 1, {"pluginslib.xml", mainFrame, "cannot be loaded"}},
        {"config/pluginslib.xml", {}, 1, {"pluginslib.xml is missing", "Reason: "}},
        {"config/PluginsConfig.xml", {}, 1, {"PluginsConfig.xml is missing", "pluginslib.xml", mainFrame}},
        {"none", {"./XFramePlugin"}, 1, {mainFrame, "did not create a window"}},
        {"none",
         {"./DeviceInfoPlugin", "./StatusBarMgrPlugin", "./LayoutPlugin"},
         0,
         {"CreateArea: plugin LayoutPlugin threw", "BuildFrame: plugin DeviceInfoPlugin threw",
          "BuildFrame: plugin StatusBarMgrPlugin threw"}},
    };
    for (const auto& [missing, faulty, exitCode, texts] : rows) {
        const QTemporaryDir installation;
        QVERIFY(copyInstallation(installation.path(), missing, faulty));
        Application application(installation.path());
        application.start({"--no-splash"});
        for (const QString& text : texts)
            QVERIFY2(exitCode == 1 || application.waitFor(text), qUtf8Printable(text));
        QCOMPARE(exitCode == 1 ? application.waitForEnd() : application.close(), exitCode);
        for (const QString& text : texts)
            QVERIFY2(application.hasWritten(text), qUtf8Printable(text));
    }
}

/// The damage is reported once, and what stands before it is in force.
void TestApplication::brokenConfiguration()
{
    const QTemporaryDir installation;
    QVERIFY(copyInstallation(installation.path(), "config/PluginsConfig.xml", {}));
    QFile config(Application::usualInstallation() + "/config/PluginsConfig.xml");
    QVERIFY(config.open(QIODevice::ReadOnly));
    const QByteArray content = config.readAll().replace("</common>", "</comon>");
    QFile broken(installation.filePath("config/PluginsConfig.xml"));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write(content) > 0);
    broken.close();
    Application application(installation.path());
    application.start({"--no-splash"});
    const int line = content.left(content.indexOf("</comon>")).count('\n') + 1;
    QVERIFY(application.waitFor(QString("PluginsConfig.xml is damaged at line %1, column").arg(line)));
    QVERIFY(application.waitFor("SmsPlugin init: elapsed"));
    QCOMPARE(application.close(), 0);
    QCOMPARE(application.lines().filter("PluginsConfig.xml").size(), 1);
}

/// A second start brings the first window to the front and ends, unless the user wants several.
void TestApplication::secondStart()
{
    const QString started = "SmsPlugin init: elapsed";
    Application application;
    application.start({"--no-splash", "--verbose"});
    QVERIFY(application.waitFor(started));
    QVERIFY(!application.startAgain({"--no-splash", "--verbose"}, started));
    QVERIFY(application.waitFor("Another start brings the window to the front"));
    QVERIFY(application.startAgain({"--no-splash", "--verbose", "--several"}, started));
    QCOMPARE(application.close(), 0);
}

/// It stands until its standard input ends, which it does when the application is gone, however that came.
void TestApplication::splashProgram()
{
    const QString installation = Application::usualInstallation();
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"/plugins/XFramePlugin/splash", "1", "560x320, 1.00 pixels"},
        {"/plugins/XFramePlugin/splash", "2.5", ", 2.50 pixels"},
        {"/none", "1", "480x270, 1.00 pixels"},
    };
    for (const auto& [pictures, scale, shown] : rows) {
        QProcess splash;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_LOGGING_RULES", "default.debug=true");
        environment.insert("QT_LOGGING_TO_CONSOLE", "1");
        environment.insert("QT_SCALE_FACTOR", scale);
        environment.insert("QT_FONT_DPI", "96"); // else the virtual screen's
        splash.setProcessEnvironment(environment);
        splash.setProcessChannelMode(QProcess::MergedChannels);
        splash.start(installation + "/XStartScreen.exe",
                     {installation + pictures, installation + "/plugins"});
        QByteArray output;
        while (!output.contains("pixels each") && splash.waitForReadyRead())
            output += splash.readAll();
        QVERIFY2(output.contains(shown), output);
        QCOMPARE(splash.state(), QProcess::Running);
        splash.closeWriteChannel();
        QVERIFY(splash.waitForFinished() && splash.exitStatus() == QProcess::NormalExit);
        QCOMPARE(splash.exitCode(), 0);
    }
}

namespace {

/// The first group of every match of a pattern, line by line.
QStringList extract(const QStringList& lines, const QString& pattern)
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

/// Every plugin that was loaded has been initialised and unloaded, the main frame last, and nobody complains.
void checkLives(const QStringList& log)
{
    QStringList loaded = extract(log, "QObject\\* plugin loaded successfully (\\w+)");
    QStringList initialised = extract(log, "init=-?\\d+, (\\w+) init: elapsed=");
    QStringList unloaded = extract(log, ": unloadPlugin: plugin (\\w+) unloaded");
    QCOMPARE(loaded.mid(0, 2), QStringList({"DeviceMgrPlugin", "XFramePlugin"}));
    QCOMPARE(unloaded.last(), QString("XFramePlugin"));
    for (QStringList* names : {&loaded, &initialised, &unloaded})
        names->sort();
    QCOMPARE(initialised, loaded);
    QCOMPARE(unloaded, loaded);
    for (const char* complaint :
         {"NOT UNLOADED", "QObject::", "QThread", "QWidget::", "QTimer", "QSocketNotifier", "threw"})
        QVERIFY2(log.filter(complaint).isEmpty(), complaint);
}

} // namespace

void TestApplication::pluginsFollowTheModem()
{
    const QString sim = "SimInfoPlugin";
    const QString dial = "DialPadPlugin";
    struct Step
    {
        QStringList modem; // arguments of the modem tool
        QStringList loaded;
        QStringList unloaded;
    };
    const std::tuple<QByteArray, bool, QVector<Step>> rows[] = {
        {{},
         true,
         {{{}, {sim, dial}, {}},
          {{"detach"}, {}, {sim, dial}},
          {{"attach", "Lume S1"}, {sim}, {}},
          {{"detach"}, {}, {sim}},
          {{"attach", "Lume X5"}, {dial}, {}},
          {{"reject"}, {}, {dial}},
          {{"attach", "Lume V2"}, {sim, dial}, {}}}},
        {"[customize]\noperator=bluewave\n",
         false,
         {{{"detach"}, {}, {}}, {{"attach", "Lume S1"}, {}, {dial}}, {{"detach"}, {dial}, {}}}},
    };
    for (const auto& [settings, hasSplash, steps] : rows) {
        Application application;
        QVERIFY(application.write("settings.ini", settings));
        application.start({"--verbose"});
        QVERIFY(application.waitFor(": Startup: exit"));
        QCOMPARE(application.hasWritten("showing splash screen..."), hasSplash);
        QVERIFY(!hasSplash || application.waitFor("closed XStartScreen on Win"));
        for (const Step& step : steps) {
            const QByteArray name = step.modem.join(' ').toUtf8();
            if (!step.modem.isEmpty()) {
                application.mark();
                QVERIFY2(application.modem(step.modem), name.constData());
            }
            for (const QString& plugin : step.loaded)
                QVERIFY2(application.waitFor("plugin loaded successfully " + plugin), name);
            for (const QString& plugin : step.unloaded)
                QVERIFY2(application.waitFor("Unload plugin " + plugin + " bUnloaded 1"), name);
        }
        QCOMPARE(application.close(), 0);
        checkLives(application.lines());
    }
}

namespace {

/// A modem with a SIM that takes a minute to read.
QByteArray slowModem(const QByteArray& model)
{
    QByteArray file = "[modem Slow]\nstate=attached\nanswer-time=400\nmodel=" + model + '\n';
    for (int i = 0; i < 50; ++i)
        file += QString("[message %1]\nmodem=Slow\ntext=%1\n").arg(i).toUtf8();
    return file;
}

} // namespace

/// A reader of messages is told to stop, and waited for before its library goes.
void TestApplication::workersEndFirst()
{
    // The notification service has a worker, too, which may run at the same time.
    const QString end = "ThreadCountDec: threadCount is \\d; thread: MessageReader: messages";
    const QStringList closing = {"WaitThreadsStop: stop thread called", "start ThreadFinished.wait", end,
                                 "end ThreadFinished.wait", "plugin SmsPlugin unloaded"};
    const QStringList modemWithoutMessages = {end, "Unload plugin SmsPlugin bUnloaded 1"};
    for (const QStringList& texts : {closing, modemWithoutMessages}) {
        Application application;
        QVERIFY(application.write("simulator.ini", slowModem("Slow")));
        application.start({"--verbose", "--no-splash"});
        QVERIFY(application.waitFor("; thread: MessageReader: messages"));
        QVERIFY(application.waitFor(": Startup: exit"));
        application.mark();
        if (texts == modemWithoutMessages)
            QVERIFY(application.write("simulator.ini", slowModem("Lume S1")) &&
                    application.waitFor(texts.last()));
        QCOMPARE(application.close(), 0);
        const QString log = application.lines().join('\n');
        int place = 0;
        for (const QString& text : texts) {
            place = log.indexOf(QRegularExpression(text), place);
            QVERIFY2(place >= 0, qUtf8Printable(text));
        }
    }
}

QTEST_GUILESS_MAIN(TestApplication)
#include "tst_application.moc"
