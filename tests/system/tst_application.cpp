// The application as its user meets it: started, driven with modems that come and go, and closed.
#include "Application.h"

#include "../support/TestFiles.h"

#include <QRegularExpression>
#include <QtTest>

#include <filesystem>
#include <tuple>

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void commandLine();
    void damagedInstallation();
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
        const QString written = exitCode == 0 ? application.output() : application.log();
        for (const QString& text : texts)
            QVERIFY2(written.contains(text), qUtf8Printable(written));
    }
}

/// What standard error says about files that are missing, faulty or damaged, and the exit code.
void TestApplication::damagedInstallation()
{
    namespace fs = std::filesystem;
    const QString usual = Application::usualInstallation();
    const QString library = "Plugin." + QFileInfo(FAULTY_PLUGIN).suffix();
    const QByteArray faulty = contentOf(FAULTY_PLUGIN); // throws in every call
    const QByteArray damaged =
        contentOf(usual + "/config/PluginsConfig.xml").replace("</common>", "</comon>");
    const int line = damaged.left(damaged.indexOf("</comon>")).count('\n') + 1;
    const QString mainFrame = "D754AE84-535F-4c18-85F8-F154CFE34DDF";
    const std::tuple<QStringList, QByteArray, int, QStringList> rows[] = {
        {{"XFrame" + library}, {}, 1, {"cannot be loaded", "pluginslib.xml", mainFrame}},
        {{"config/pluginslib.xml"}, {}, 1, {"pluginslib.xml is missing", "Reason: "}},
        {{"config/PluginsConfig.xml"}, {}, 1, {"PluginsConfig.xml is missing", "pluginslib.xml", mainFrame}},
        {{"XFrame" + library}, faulty, 1, {"did not create a window", mainFrame}},
        {{"DeviceInfo" + library, "StatusBarMgr" + library, "Layout" + library},
         faulty,
         0,
         {"CreateArea: plugin LayoutPlugin threw", "BuildFrame: plugin DeviceInfoPlugin threw",
          "BuildFrame: plugin StatusBarMgrPlugin threw"}},
        // What stands before the damage is in force.
        {{"config/PluginsConfig.xml"},
         damaged,
         0,
         {"PluginsConfig.xml", QString("PluginsConfig.xml is damaged at line %1, column").arg(line),
          "SmsPlugin init: elapsed"}},
    };
    const QTemporaryDir folder;
    const QString installation = folder.filePath("app"); // a folder that is there is refused on Windows
    fs::copy(usual.toStdString(), installation.toStdString(), fs::copy_options::recursive);
    for (const auto& [files, content, exitCode, texts] : rows) {
        for (const QString& file : files) {
            QVERIFY(QFile::remove(installation + '/' + file));
            if (!content.isEmpty())
                writeFile(installation + '/' + file, content);
        }
        Application application(installation);
        application.start({"--no-splash"});
        for (const QString& text : texts)
            QVERIFY2(application.waitFor(text), qUtf8Printable(text));
        QCOMPARE(exitCode == 1 ? application.waitForEnd() : application.close(), exitCode);
        QCOMPARE(application.log().count(texts.first()), 1);
        for (const QString& file : files)
            writeFile(installation + '/' + file, contentOf(usual + '/' + file));
    }
}

/// A second start brings the first window to the front and ends, unless the user wants several.
void TestApplication::secondStart()
{
    const QString started = "SmsPlugin init: elapsed";
    Application application;
    application.start({"--no-splash", "--verbose"});
    QVERIFY(application.waitFor(started));
    for (const char* option : {"--no-splash", "--several"}) {
        Application second(Application::usualInstallation(), Application::SameUser);
        second.start({"--no-splash", "--verbose", option});
        QCOMPARE(second.waitFor(started), qstrcmp(option, "--several") == 0);
        QCOMPARE(second.close(), 0);
    }
    QVERIFY(application.waitFor("Another start brings the window to the front"));
    QCOMPARE(application.close(), 0);
}

/// It stands until its standard input ends, which it does when the application is gone, however that came.
void TestApplication::splashProgram()
{
    const QString installation = Application::usualInstallation();
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"/plugins/XFramePlugin/splash", "2.5", ", 2.50 pixels"},
        {"/plugins/XFramePlugin/splash", "1", "560x320, 1.00 pixels"},
        {"/none", "1", "480x270, 1.00 pixels"},
    };
    qputenv("QT_LOGGING_RULES", "default.debug=true");
    qputenv("QT_FONT_DPI", "96"); // else the virtual screen's
    for (const auto& [pictures, scale, shown] : rows) {
        qputenv("QT_SCALE_FACTOR", scale);
        Application splash;
        splash.start({installation + pictures, installation + "/plugins"}, "XStartScreen.exe");
        QVERIFY2(splash.waitFor(shown), shown);
        splash.closeInput();
        QCOMPARE(splash.waitForEnd(), 0);
    }
    for (const char* name : {"QT_LOGGING_RULES", "QT_FONT_DPI", "QT_SCALE_FACTOR"})
        qunsetenv(name);
}

namespace {

/// The first group of every match of a pattern.
QStringList extract(const QString& log, const char* pattern)
{
    QStringList found;
    for (auto matches = QRegularExpression(pattern).globalMatch(log); matches.hasNext();)
        found.append(matches.next().captured(1));
    return found;
}

/// Every plugin that was loaded has been initialised and unloaded, the main frame last, and nobody complains.
void checkLives(const QString& log)
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
        QVERIFY2(!log.contains(complaint), complaint);
}

} // namespace

void TestApplication::pluginsFollowTheModem()
{
    // arguments of the modem tool, and the plugins that are loaded (+) and unloaded (-)
    using Steps = QVector<std::pair<QString, QString>>;
    const std::tuple<QByteArray, bool, Steps> rows[] = {
        {{},
         true,
         {{"", "+SimInfo +DialPad"},
          {"detach", "-SimInfo -DialPad"},
          {"attach, Lume S1", "+SimInfo"},
          {"detach", "-SimInfo"},
          {"attach, Lume X5", "+DialPad"},
          {"reject", "-DialPad"},
          {"attach, Lume V2", "+SimInfo +DialPad"}}},
        {"[customize]\noperator=bluewave\n",
         false,
         {{"detach", ""}, {"attach, Lume S1", "-DialPad"}, {"detach", "+DialPad"}}},
    };
    for (const auto& [settings, hasSplash, steps] : rows) {
        Application application;
        QVERIFY(application.write("settings.ini", settings));
        application.start({"--verbose"});
        QVERIFY(application.waitFor(": Startup: exit"));
        QCOMPARE(application.hasWritten("showing splash screen..."), hasSplash);
        QVERIFY(!hasSplash || application.waitFor("closed XStartScreen on Win"));
        for (const auto& [modem, plugins] : steps) {
            if (!modem.isEmpty())
                application.mark();
            QVERIFY2(modem.isEmpty() || application.modem(modem.split(", ")), qPrintable(modem));
            for (const QString& plugin : plugins.split(' ', Qt::SkipEmptyParts)) {
                const QString line = plugin.startsWith('+') ? "plugin loaded successfully %1Plugin"
                                                            : "Unload plugin %1Plugin bUnloaded 1";
                QVERIFY2(application.waitFor(line.arg(plugin.mid(1))), qPrintable(modem + plugin));
            }
        }
        QCOMPARE(application.close(), 0);
        checkLives(application.log());
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
        const QRegularExpression inOrder(texts.join(".*?"), QRegularExpression::DotMatchesEverythingOption);
        QVERIFY(inOrder.match(application.log()).hasMatch());
    }
}

QTEST_GUILESS_MAIN(TestApplication)
#include "tst_application.moc"
