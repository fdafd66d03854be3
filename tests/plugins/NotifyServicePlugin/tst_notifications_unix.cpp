// What the user hears and sees on the desktop when something happens, in the whole application: its modems are
// simulated, its sounds go to a real sound server, its notifications to a stand-in for the desktop.
#include "NotificationDaemon.h"
#include "Part.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "ProcessInfo.h"
#include "RunningApplication.h"
#include "SoundServer.h"
#include "Startup/Startup.h"
#include "TestFiles.h"
#include "common/CommonUtils.h"
#include "support/Modems.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include <tuple>

class TestNotifications : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void settingsPage();
    void messages();
    void click();
    void dataLimit();
    void lostConnections();
    void call();
    void noticesAtOnce();
    void unloading();

private:
    /// Waits until the application has seen this modem, and tells of a message that it receives. What it holds when it
    /// is first seen is not told, so there are more messages until one is.
    static bool isSeen(const QByteArray& modem);

    SoundServer m_sounds;
    NotificationDaemon m_desktop;
};

namespace {

const TestHome Home("[data]\nlimit=true\namount=1\nunit=MB\n");

constexpr double Audible = 0.1; // seconds of a tone

const QString Connection = "227AB861-6F54-4094-857F-40B0663C5817";
const QString DataUse = "C43A8D5E-07B1-4F92-86DA-3E51F9B27A60";
const QByteArray Simulated = "[modem M]\nmodel=M\nstate=attached\nnetwork=26201\n";

QByteArray message(const QByteArray& modem, int identifier, const QByteArray& sender, const QByteArray& text)
{
    return "[message " + QByteArray::number(identifier) + "]\nmodem=" + modem + "\nsender=" + sender +
           "\ntext=" + text + '\n';
}

/// Title and text of every notification so far.
QStringList shownTexts()
{
    QStringList texts;
    for (const QVariantList& arguments : NotificationDaemon::calls("Notify"))
        texts.append(arguments.at(3).toString() + '|' + arguments.at(4).toString());
    return texts;
}

/// Makes a tone the sound of an event.
void chooseSound(const QString& event, int frequency)
{
    CommonUtils::SetSettings("notifications", event, QString("%1 Hz.wav").arg(frequency));
}

} // namespace

bool TestNotifications::isSeen(const QByteArray& modem)
{
    static int number = 100;
    const auto isNextTold = [&modem] {
        const QByteArray text = QByteArray::number(++number);
        simulate(modem + message("M", number, "A", text));
        return QTest::qWaitFor([&] { return shownTexts().join(';').endsWith("A|" + text); }, 1000);
    };
    return QTest::qWaitFor(isNextTold, LongestWait);
}

void TestNotifications::initTestCase()
{
    QVERIFY(m_desktop.start() && m_sounds.start());
    const QString sounds = QCoreApplication::applicationDirPath() + "/sounds";
    for (int frequency = 400; frequency <= 2100; frequency += 100)
        writeFile(sounds + QString("/%1 Hz.wav").arg(frequency), waveFile(frequency, 200));
    simulate(Simulated);
    start();
    QVERIFY(window());
    QTRY_VERIFY(Startup::GetPluginContainer()->IsPluginsConfigInitialized());
}

// Choices are stored at once, and can be heard.
void TestNotifications::settingsPage()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    QVERIFY(container->GetSettingsPlugins().contains(PluginIds::NotifyService));
    QObject* const plugin = container->GetPlugin(PluginIds::NotifyService, PluginIds::SettingsPage);
    auto* const builder = qobject_cast<IUIPlugin*>(plugin);
    QVERIFY(builder);
    QWidget* page = builder->BuildFrame(nullptr, {});
    QCOMPARE(page->windowTitle(), QString("Notifications"));
    const auto lists = page->findChildren<QComboBox*>();
    const auto buttons = page->findChildren<QPushButton*>();
    QCOMPARE(lists.size(), 3);
    QCOMPARE(buttons.size(), 3);
    for (QComboBox* list : lists) {
        QCOMPARE(CommonUtils::GetSettings("notifications", list->objectName()),
                 list->currentData().toString());
        QVERIFY(list->findText("No sound") == 0 && list->findText("Chime") > 0 &&
                list->findText("400 Hz") > 0);
    }
    auto* const list = lists.first();
    QCOMPARE(list->currentText(), QString("Chime"));
    list->setCurrentIndex(list->findText("400 Hz"));
    QCOMPARE(CommonUtils::GetUserSettings("notifications", "message"), QString("400 Hz.wav"));
    for (const QString key : {"message-text", "message", "data-limit", "connection-lost"}) {
        auto* const box = page->findChild<QCheckBox*>(key);
        QVERIFY(box->isEnabled() && box->isChecked());
        box->click();
        QCOMPARE(CommonUtils::GetUserSettings("notifications", "show-" + key), QString("false"));
    }
    QVERIFY(!page->findChild<QCheckBox*>("message-text")->isEnabled());
    auto* const mute = page->findChildren<QCheckBox*>().last();
    QVERIFY(!mute->isChecked());
    mute->click();
    QCOMPARE(CommonUtils::GetUserSettings("notifications", "mute"), QString("true"));
    buttons.first()->click(); // is heard nevertheless
    QTRY_VERIFY_WITH_TIMEOUT(m_sounds.heard(400) > Audible, LongestWait);
    list->setCurrentIndex(0);
    QVERIFY(!buttons.first()->isEnabled());
    QCOMPARE(CommonUtils::GetUserSettings("notifications", "message"), QString("none"));
    CommonUtils::SetSettings("notifications", "call", "/elsewhere/My sound.wav"); // a file of the user's
    page = builder->BuildFrame(nullptr, QRect()); // the plugin deletes the first one
    QCOMPARE(page->findChildren<QComboBox*>().at(1)->currentText(), QString("My sound"));
    for (QCheckBox* box : page->findChildren<QCheckBox*>()) {
        QCOMPARE(box->isChecked(), box->objectName().isEmpty()); // that is "mute"
        box->setChecked(!box->isChecked());
    }
    QCOMPARE(CommonUtils::GetUserSettings("notifications", "mute"), QString("false"));
}

// Every message that arrives while the window is hidden is shown and heard, unless the user does not want that.
void TestNotifications::messages()
{
    const QByteArray old = message("M", 1, "A", "<b>1 & 2</b>\\nwww.example.org"),
                     second = message("M", 2, "B", "b");
    const QByteArray other = "[modem N]\nmodel=N\nstate=attached\nconnection=disconnected\n",
                     locked = other + "sim=pin\n";
    const std::tuple<QByteArray, QString, int, QString> steps[] = {
        {Simulated + old, "mute=false", 500,
         "New message from A|&lt;b&gt;1 &amp; 2&lt;/b&gt;\nwww.example.org"},
        {Simulated + old + second, "mute=true", 600, "New message from B|b"},
        // One is deleted, one is changed, one modem is attached with a message; only the last one is new.
        {Simulated + locked + message("M", 1, "A", "changed") + message("N", 3, "C", "c") +
             message("M", 4, "D", "d"),
         "mute=false", 700, "New message from D|d"},
        {Simulated + other + message("N", 3, "C", "c") + message("M", 12, "L", "l"), "mute=false", 400,
         "New message from L|l"},
        {Simulated + other + message("N", 5, "E", "e"), "show-message-text=false", 800,
         "New message from E|"},
        {Simulated + message("M", 11, "J", "j"), "show-message=false", 2100, ""},
        {Simulated + message("M", 6, "F", "f") + message("M", 7, "G", "g") + message("M", 8, "F", "h"),
         "show-message=true", 900, "New messages: 3|F\nG"},
    };
    window()->hide();
    QVERIFY(isSeen(Simulated));
    QStringList expected = shownTexts();
    for (const auto& [modems, setting, tone, shown] : steps) {
        CommonUtils::SetSettings("notifications", setting.section('=', 0, 0), setting.section('=', 1));
        chooseSound("message", tone);
        if (!shown.isEmpty())
            expected += shown;
        simulate(modems);
        QTRY_COMPARE_WITH_TIMEOUT(shownTexts().join("; "), expected.join("; "), LongestWait);
        if (setting != "mute=true")
            QTRY_VERIFY_WITH_TIMEOUT(m_sounds.heard(tone) > Audible, LongestWait);
    }
    QCOMPARE(m_sounds.heard(600), 0.0);
}

// A click shows the window and withdraws the notification. While the window is visible there is none.
void TestNotifications::click()
{
    const QVariantList shown = NotificationDaemon::calls("Notify").last();
    QCOMPARE(shown.at(5).toStringList().first(), QString("default"));
    QVERIFY(shown.at(6).value<QDBusArgument>().currentType() == QDBusArgument::MapType);
    NotificationDaemon::click(1, "another");
    NotificationDaemon::click(77);
    QCoreApplication::processEvents();
    QVERIFY(!window()->isVisible());
    NotificationDaemon::click(1);
    QTRY_VERIFY(window()->isVisible());
    QTRY_COMPARE(NotificationDaemon::calls("CloseNotification"), QVector<QVariantList>({{1u}}));
    const int before = shownTexts().size();
    chooseSound("message", 1000);
    simulate(Simulated + message("M", 9, "H", "h"));
    QTRY_VERIFY_WITH_TIMEOUT(m_sounds.heard(1000) > Audible, LongestWait);
    QCOMPARE(shownTexts().size(), before);
    window()->showMinimized();
    simulate(Simulated + message("M", 10, "I", "i"));
    QTRY_COMPARE_WITH_TIMEOUT(shownTexts().size(), before + 1, LongestWait);
    NotificationDaemon::click(2);
    QTRY_VERIFY(!window()->isMinimized());
}

// A notice of another plugin; a click shows that plugin's page.
void TestNotifications::dataLimit()
{
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    QVERIFY(mainFrame->ShowPage(DataUse)); // counts every second from now on
    QObject* const notifier =
        Startup::GetPluginContainer()->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
    QSignalSpy requests(notifier, SIGNAL(noticeRequested(QString, QString, QString, QString)));
    simulate(Simulated + "imsi=262011234567890\nreceived=0\nsent=0\nreceive-rate=900000\n");
    const QString limit = "Data limit used up|";
    QTRY_VERIFY_WITH_TIMEOUT(shownTexts().last().startsWith(limit), LongestWait);
    QVERIFY2(shownTexts().last().contains(" MB of 1 MB ("), qUtf8Printable(shownTexts().last()));
    QVERIFY(mainFrame->ShowPage(Connection));
    window()->hide();
    NotificationDaemon::click(3);
    QTRY_VERIFY(Part{"DataPage"}.widget());
    QVERIFY(mainFrame->ShowPage(Connection));
    QCOMPARE(requests.last().at(3), "data-limit"); // see lostConnections()
    QCOMPARE(shownTexts().filter(limit).size(), 1);
}

// Once for each loss. Other changes, modems that come, and connections that the user ends are not heard. What breaks a
// connection is shown while the user is not at the application. Columns: before, a change that is no loss, the loss.
void TestNotifications::lostConnections()
{
    const QByteArray bare = "[modem M]\nmodel=M\nstate=attached\n",
                     ended = Simulated + "connection=disconnected\n";
    const std::tuple<QByteArray, QByteArray, QByteArray, QString> rows[] = {
        {Simulated, Simulated, "", "shown"},
        {bare, bare, "", "not online"},
        {Simulated, Simulated, "[modem M]\nmodel=M\nstate=detached\n", "unwanted"},
        {Simulated, Simulated, "[modem M]\nmodel=M\nstate=rejected\n", "shown"},
        {Simulated, Simulated, bare, "shown"}, // no network
        {Simulated, ended, "", "not online"},
        {Simulated, ended + "connection.error=16\n", "", "not online"}, // in another program
        {Simulated, Simulated, "", "visible"},
        {Simulated, Simulated, ended + "connection.error=11\n", "shown"}};
    chooseSound("message", 400);
    CommonUtils::SetSettings("notifications", "show-message-text", "true");
    const QString lost = "Connection lost|M is no longer connected to the Internet.";
    int losses = 0, tone = 1000;
    for (const auto& [before, quiet, loss, shown] : rows) {
        chooseSound("connection-lost", tone += 100);
        CommonUtils::SetSettings("notifications", "show-connection-lost",
                                 shown == "unwanted" ? "false" : "true");
        window()->hide();
        simulate(before + "signal=10\n");
        QTRY_COMPARE_WITH_TIMEOUT(attachedModems().size(), 1, LongestWait);
        for (const QByteArray& modem : {before + "signal=90\n", quiet})
            QVERIFY(isSeen(modem));
        QCOMPARE(m_sounds.heard(tone), 0.0);
        window()->setVisible(shown == "visible");
        QTRY_VERIFY(shown != "visible" || QGuiApplication::applicationState() == Qt::ApplicationActive);
        simulate(loss);
        losses += shown == "shown";
        QTRY_VERIFY_WITH_TIMEOUT(m_sounds.heard(tone) > Audible, LongestWait);
        QTRY_COMPARE_WITH_TIMEOUT(shownTexts().filter(lost).size(), losses, LongestWait);
    }
}

void TestNotifications::call()
{
    chooseSound("call", 2000);
    simulate(Simulated);
    QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("123", UI_CALL_VOICE); }, LongestWait));
    QTRY_VERIFY_WITH_TIMEOUT(m_sounds.heard(2000) > Audible, LongestWait);
}

// A notice replaces the one before, also while the desktop has not answered yet.
void TestNotifications::noticesAtOnce()
{
    QObject* const notifier =
        Startup::GetPluginContainer()->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
    const int before = shownTexts().size();
    for (const QStringList& titles : {QStringList{"first", "second"}, QStringList{"third"}}) {
        for (const QString& title : titles)
            QMetaObject::invokeMethod(notifier, "showNotice", Q_ARG(QString, title), Q_ARG(QString, {}),
                                      Q_ARG(QString, Connection));
        QTRY_COMPARE_WITH_TIMEOUT(shownTexts().last(), titles.last() + '|', LongestWait);
    }
    QCOMPARE(shownTexts().size(), before + 2);
    QVERIFY(NotificationDaemon::calls("Notify").last().at(1).toUInt() > 0);
    QString literal = "an event"; // of a plugin that is unloaded after its notice
    for (const QString& event : {QString::fromRawData(literal.constData(), literal.size()), literal + ""}) {
        const int shown = shownTexts().size();
        QMetaObject::invokeMethod(notifier, "showNotice", Q_ARG(QString, "title"), Q_ARG(QString, {}),
                                  Q_ARG(QString, Connection), Q_ARG(QString, event));
        literal.fill('-');
        QTRY_COMPARE_WITH_TIMEOUT(shownTexts().size(), shown + 1, LongestWait);
    }
    QVERIFY(NotificationDaemon::calls("Notify").last().at(1).toUInt() > 0);
}

// What the desktop reports after that meets nobody.
void TestNotifications::unloading()
{
    QVERIFY(isLibraryInMemory("NotifyServicePlugin.so"));
    end();
    QVERIFY(!isLibraryInMemory("NotifyServicePlugin.so"));
    NotificationDaemon::click(1);
    NotificationDaemon::click(2);
    QCoreApplication::processEvents();
}

QTEST_MAIN(TestNotifications)
#include "tst_notifications_unix.moc"
