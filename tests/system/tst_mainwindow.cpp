// The whole application in this process, with its main window at hand: languages and skins, status bar and
// messages.
#include "../support/DataTable.h"
#include "../support/TestFiles.h"
#include "Change/Change.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/RecentLog.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QSystemTrayIcon>
#include <QTextBrowser>

#include <tuple>

class TestMainWindow : public RunningApplication
{
    Q_OBJECT

public slots:
    /// Stands in for the desktop's browser.
    void openUrl(const QUrl& url) { m_openedUrls += url.toString(QUrl::FullyEncoded) + ' '; }

private slots:
    void initTestCase();
    void language();
    void looks();
    void statusBar();
    void messageLinks();
    void operatorsEntry();
    void calls();
    void dialling();
    void serviceCodes();
    void connectingFromMenu();
    void pageOfLostModem();
    void problems();
    void lateWorker();

protected:
    /// Counts what the main window is sent.
    bool eventFilter(QObject* object, QEvent* event) override
    {
        m_events[event->type()] += object->inherits("MainWindow");
        return false;
    }

private:
    QAbstractButton* call() const { return qobject_cast<QAbstractButton*>(owner("Ctrl+D")); }
    void restartFor(const QString& customer);
    bool shows(const QString& start, QWidget* where = nullptr) const;
    void checkReasonsFit(QWidget* callWindow) const;
    void checkFaults() const;

    int m_brokenLine = 0; ///< of the plugin configuration file
    QString m_openedUrls;
    QHash<int, int> m_events;
};

namespace {

/// All texts of all plugins in a language, without shortcuts.
QSet<QString> textsOf(const QString& language)
{
    const QRegularExpression item(R"(<item name="\w+">(.*?)(?: \((?:Ctrl|Strg)\+\w\))?</item>)");
    QSet<QString> texts;
    QDirIterator files(QCoreApplication::applicationDirPath() + "/plugins", {"*_" + language + ".lang"},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        for (auto items = item.globalMatch(contentOf(files.next())); items.hasNext();)
            texts.insert(items.next().captured(1));
    return texts;
}

void addCells(const QAbstractItemModel& model, QSet<QString>& texts)
{
    for (int column = 0; column < model.columnCount(); ++column) {
        texts.insert(model.headerData(column, Qt::Horizontal).toString());
        for (int row = 0; row < model.rowCount(); ++row)
            texts += {model.index(row, column).data().toString(),
                      model.index(row, column).data(Qt::ToolTipRole).toString()};
    }
}

/// Everything that can be read in the window, on pages that are hidden as well.
QSet<QString> shownTexts(QWidget* window)
{
    QSet<QString> texts;
    for (const QObject* object : window->findChildren<QObject*>()) {
        for (const char* property : {"text", "windowTitle", "toolTip", "placeholderText", "accessibleName"})
            texts.insert(object->property(property).toString());
        if (const auto* view = qobject_cast<const QAbstractItemView*>(object))
            addCells(*view->model(), texts);
    }
    return texts;
}

const QByteArray CallModem =
    "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\nrequest-time=20\n";
const QByteArray Offline = QByteArray(CallModem).replace("26201", "");
constexpr int LongCall = 30000; // milliseconds; a call takes much less, on a busy machine too

constexpr const char* CallUi = "CallUIPlugin";
constexpr const char* DialPad = "DialPadPlugin";

QString text(const char* id, const char* plugin = "XFramePlugin")
{
    return Change::tr(id, plugin);
}

/// What has this text or name; null if nothing has.
template <typename Object>
Object* named(const QWidget* parent, const QString& name)
{
    for (Object* object : parent->findChildren<Object*>())
        if (object->property("text") == name || object->property("accessibleName") == name)
            return object;
    return nullptr;
}

} // namespace

/// Whether a line that can be read in a window, by default the main window, begins with this.
bool TestMainWindow::shows(const QString& start, QWidget* where) const
{
    const QStringList texts = shownTexts(where ? where : window()).values();
    return !start.isEmpty() && ('\n' + texts.join('\n')).contains('\n' + start);
}

void TestMainWindow::initTestCase()
{
    // Everything before the damage is read nevertheless, and it is at the end.
    const QString folder = QCoreApplication::applicationDirPath();
    const QByteArray content = contentOf(folder + "/../../app/config/PluginsConfig.xml") + '<';
    m_brokenLine = content.count('\n') + 1;
    writeFile(folder + "/config/PluginsConfig.xml", content);
    qApp->installEventFilter(this);
    simulate(CallModem + "gid=NT-GOLD\n"); // enables the plugin that throws
    start();
    QTRY_VERIFY(window() && owner("Ctrl+D")); // the dial pad comes with the modem's customisation
}

void TestMainWindow::language()
{
    // what Qt calls copying, then the events that the main window is sent
    const std::tuple<QString, const char*, bool, QString, int, int> rows[] = {
        {"de-de", "Deutsch", false, "&Kopieren", 0, 0}, // the application has started in it
        {"ar-sa", "العربية", true, "ا&نسخ", 1, 1},
        {"he-il", "עברית", true, "הע&תק", 1, 0}, // not mirrored in between
        {"zh-cn", "简体中文", false, "复制(&C)", 1, 1},
        {"fr-fr", "Français", false, "Cop&ier", 1, 0},
    };
    const bool hasQtTexts = QDir(qApp->applicationDirPath()).exists("translations/qtbase_de.qm");
    QSet<QString> before = textsOf("en-us");
    RecentLog::start();
    choose(text("IDS_MENU_INSTALLATION"));
    for (const auto& [code, ownName, isMirrored, copy, translations, reversals] : rows) {
        if (translations > 0)
            choose(ownName);
        QCOMPARE(m_events.take(QEvent::LanguageChange), translations);
        QCOMPARE(m_events.take(QEvent::LayoutDirectionChange), reversals);
        QCOMPARE(QCoreApplication::translate("QWidgetTextControl", "&Copy"), hasQtTexts ? copy : "&Copy");
        QCOMPARE(CommonUtils::GetSettings("language", "active"), '_' + code);
        const QSet<QString> expected = textsOf(code);
        const QSet<QString> shown = shownTexts(window());
        const QSet<QString> left = (before - expected) & shown;
        QVERIFY2(left.isEmpty(), qUtf8Printable(left.values().join(" | ")));
        QVERIFY2((shown & expected).size() > 30, qUtf8Printable(shown.values().join(" | ")));
        checkFaults();
        for (const char* shortcut : {"Ctrl+Q", "Ctrl+M", "Ctrl+D"})
            QVERIFY2(owner(shortcut), shortcut);
        QTRY_COMPARE(part("QListWidget")->x() > part("QStackedWidget")->x(), isMirrored);
        before = expected;
    }
    QVERIFY(named<QAbstractButton>(window(), text("IDS_INSTALLATION_COPY"))->window()->close());
}

/// The dialog, and what it copies for support, report the damaged file and the plugin that throws.
void TestMainWindow::checkFaults() const
{
    const QString malformed = text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(m_brokenLine);
    const QString failed = text("IDS_STATE_FAILED");
    const QString thrown = "Init() threw: faulty";
    for (const QString& cell : {malformed, failed, text("IDS_FAULT_THREW"), thrown})
        QTRY_VERIFY2(shows(cell), qUtf8Printable(cell));
    qInfo("SIM 262011234567890");
    named<QAbstractButton>(window(), text("IDS_INSTALLATION_COPY"))->click();
    const QString report = QGuiApplication::clipboard()->text();
    const QString rule = ": " + text("IDS_RULE_COMMON") + "; ";
    const QString masked = "SIM 262011...\n";
    for (const QString& line :
         {malformed, ": " + failed + ": " + thrown, rule, QString("northtel\n"), masked})
        QVERIFY2(report.contains(line), qUtf8Printable(line + " | " + report));
}

/// The looks in the settings, and the way between the usual window and the compact one.
void TestMainWindow::looks()
{
    enum { Usual, Dark, Blue, Graphite, OtherForm };
    const char* const skins[] = {"default", "default", "Blue", "Graphite"};
    // the choice and what is shown then; the first one must have followed the language without being chosen
    const std::pair<int, int> steps[] = {{Usual, Usual},        {Graphite, Graphite}, {Dark, Dark},
                                         {OtherForm, Graphite}, {OtherForm, Dark},    {Usual, Usual}};
    const QPalette desktop = QApplication::palette();
    const QSize usual(700, 500); // not what it has at first
    window()->resize(usual);
    choose(text("IDS_MENU_SETTINGS"));
    auto* const list = part<QListWidget>("LookChooser");
    QVERIFY(list->item(0)->icon().pixmap(99).toImage() != list->item(1)->icon().pixmap(99).toImage());
    for (const auto& [language, file] : {std::pair("Deutsch", "%1.qss"), {"עברית", "%1/%1_Arabic.qss"}}) {
        choose(language);
        QCOMPARE(list->item(Dark)->text(), text("IDS_WINDOW_DARK"));
        for (const auto& [choice, look] : steps) {
            list->setCurrentRow(choice < OtherForm ? choice : list->currentRow());
            QVERIFY(choice < OtherForm || QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
            const QString sheet = qApp->applicationDirPath() + "/skin/" + QString(file).arg(skins[look]);
            QCOMPARE(qApp->styleSheet(), QString(contentOf(sheet)).remove(QRegularExpression("[\r\n]")));
            QCOMPARE(QApplication::palette() == desktop, look != Dark);
            QCOMPARE(window()->size() == usual, look < Blue);
            QCOMPARE(list->currentRow(), look);
        }
    }
    list->window()->close();
}

void TestMainWindow::statusBar()
{
    const QByteArray sim = "state=attached\nimsi=262011234567890\n";
    const QByteArray busy = "network=26201\nsignal=50\nreceive-rate=1468006\nsend-rate=1024\nsent=0\n";
    const std::tuple<const char*, QByteArray, const char*> rows[] = {
        {"Deutsch", sim + busy, "T-Mobile|Signal: 50 %|↓ 1,40 MB/s|↑ 1024,00 B/s"},
        {"Deutsch", sim + "network=310260\nreceived=1048577\nsent=524288\n", "↓ – B/s|1,50 MB|T-Mobile"},
        {"Français", sim + "network=23205\nsent=2048\n", "Drei|2,00 Ko"},
        {"العربية", sim + "network=23205\nsent=2048\n", "Drei|٢٫٠٠ ك.ب"},
        {"Deutsch", sim + "network=26298\n", "DE98"},  // an unlisted network
        {"Deutsch", sim + "network=99901\n", "99901"}, // an unlisted country
        {"Deutsch", sim + "network=\n", "Kein Netz"},
        {"Deutsch", "state=rejected\n", "Modem abgelehnt|Wartet auf ein anderes|Das zuletzt eingesteckte"},
        {"Deutsch", "state=failed\n", "Modem nicht benutzbar|Abziehen und wieder|Das Modem meldet einen"},
        {"Deutsch", sim, "Angeschlossen"}, // the failure is over
        {"Deutsch", {}, "Kein Modem|Wartet, bis eines eingesteckt wird"},
    };
    for (const auto& [language, values, texts] : rows) {
        choose(language);
        const QByteArray modem = "[modem " + QByteArray::number(qHash(values)) + "]\nmodel=M\n" + values;
        simulate(values.isEmpty() ? QByteArray() : modem);
        for (const QString& text : QString(texts).split('|'))
            QTRY_VERIFY2(shows(text), qUtf8Printable(text));
    }
}

/// A message that comes is counted and shown, and a click on an address in it opens exactly that address.
void TestMainWindow::messageLinks()
{
    simulate(CallModem);
    QTRY_VERIFY(shows("Es sind keine Nachrichten da."));
    const QString sent = R"(<b> &lt; "x" https://a.de/?b=1&c="2" https://a.de/c.html me@a.de )";
    // a message that was cut
    simulate(CallModem + "[message 1]\nmodem=M\nsender=A\ntext=" + sent.toUtf8() + "\\ud83d\n");
    auto* const text = window()->findChild<QTextBrowser*>();
    QTRY_COMPARE(text->toPlainText(), sent + QChar(0xd83d));
    const auto* const tray = window()->findChild<QSystemTrayIcon*>();
    QTRY_VERIFY(tray->toolTip().endsWith("\nUngelesene Nachrichten: 1"));
    QVERIFY(Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"));
    if (!text->isVisible()) // the window is too narrow for both
        QTest::keyClick(part("ConversationList"), Qt::Key_Return);
    QTRY_VERIFY(!tray->toolTip().contains("Ungelesen"));
    for (const char* scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, this, "openUrl");
    for (const char* word : {"b=1", "c.html", "me@a"}) {
        const QPoint end = text->cursorRect(text->document()->find(word)).center();
        QTest::mouseClick(text->viewport(), Qt::LeftButton, {}, end - QPoint(3, 0));
    }
    QCOMPARE(m_openedUrls, "https://a.de/?b=1&c=%222%22 https://a.de/c.html mailto:me@a.de ");
}

/// The operator's entry in the main menu comes and goes with the operator's modems.
void TestMainWindow::operatorsEntry()
{
    for (const char* modem : {"bluewave", "northtel", "bluewave"}) {
        simulate(QByteArray("[modem M]\nmodel=M\nstate=attached\ncustomize=") + modem + '\n');
        QTRY_COMPARE(shows("northtel besuchen"), qstrcmp(modem, "northtel") == 0);
        QVERIFY(owner("Ctrl+Q")); // the operator moves the entry to the end
    }
}

/// What the dial pad says about numbers and modems, and why calls end.
void TestMainWindow::calls()
{
    simulate(CallModem);
    QTRY_VERIFY(call());
    const auto canDial = [this](const QString& number) {
        window()->findChild<QLineEdit*>()->setText(number);
        return call()->isEnabled();
    };
    QVERIFY(!call()->isEnabled() && canDial("no number"));
    call()->click();
    QVERIFY(shows(text("IDS_DIAL_BAD_NUMBER", DialPad)));
    QVERIFY(canDial("\u202a+49 (30)\u2013\u0661\u06623\u202c")); // copied from an Arabic document
    call()->click();
    QVERIFY(shows("+4930123", windows("CallWindow").value(0)));
    call()->click();
    QVERIFY(shows(text("IDS_DIAL_BUSY", DialPad)) && !CommonUtils::MakeCall("*100#", UI_CALL_VOICE));
    const QByteArray busy = CallModem + "calls=busy\n";
    const std::tuple<QByteArray, QByteArray, const char*, const char*> rows[] = {
        // the modem before and during the call, and what the call has come to
        {busy, busy, "IDS_CALL_DIALLING", "IDS_CALL_BUSY"},
        {CallModem, Offline, "IDS_CALL_DIALLING", "IDS_CALL_NO_NETWORK"},
        {CallModem, CallModem, "IDS_CALL_DIALLING", "IDS_CALL_HUNG_UP"},
        {CallModem, {}, "IDS_CALL_DIALLING", "IDS_CALL_NO_MODEM"},
        {CallModem, Offline, "IDS_CALL_TALKING", "IDS_CALL_NO_NETWORK"},
    };
    for (const auto& [before, during, state, reason] : rows) {
        delete windows("CallWindow").value(0);
        simulate(before);
        QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("0", UI_CALL_VOICE); }, LongCall));
        QTRY_VERIFY_WITH_TIMEOUT(shows(text(state, CallUi)), LongCall);
        simulate(during);
        if (before == during && before == CallModem)
            qobject_cast<QAbstractButton*>(owner("Ctrl+H"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(shows(text(reason, CallUi)), LongCall);
    }
    checkReasonsFit(windows("CallWindow").value(0));
    restartFor("bluewave"); // has the help page, and the dial pad without a modem, too
    QVERIFY(QMetaObject::invokeMethod(owner("F1"), "trigger"));
    QVERIFY(window()->findChild<QStackedWidget*>()->currentWidget()->inherits("HelpPage"));
    for (const auto& [modem, fault] : {std::pair(CallModem + "calls=none\n", "IDS_DIAL_NO_CALLS"),
                                       {Offline, "IDS_DIAL_NO_NETWORK"},
                                       {QByteArray(), "IDS_DIAL_NO_MODEM"}}) {
        simulate(modem);
        QTRY_VERIFY_WITH_TIMEOUT(shows(text(fault, DialPad)), LongCall);
        QCOMPARE(canDial("*100#"), !modem.isEmpty());
        QVERIFY(!canDial("0") && shows(text(fault, DialPad)));
    }
    restartFor("northtel");
}

void TestMainWindow::restartFor(const QString& customer)
{
    CommonUtils::SetSettings("customize", "operator", customer);
    end();
    start();
}

/// Each end of a call that was answered can be read in each language. The duration is below it.
void TestMainWindow::checkReasonsFit(QWidget* callWindow) const
{
    QLabel* shown = nullptr;
    for (auto* label : callWindow->findChildren<QLabel*>())
        shown = label->wordWrap() ? label : shown;
    for (const char* language : {"American English", "Français", "简体中文", "العربية", "עברית", "Deutsch"}) {
        choose(language);
        QVERIFY2(shown->text().startsWith(text("IDS_CALL_NO_NETWORK", CallUi) + '\n'), language);
        for (const char* reason : {"IDS_CALL_REFUSED", "IDS_CALL_NO_MODEM", "IDS_CALL_HUNG_UP"}) {
            shown->setText(text(reason, CallUi) + "\n00:00:00");
            QVERIFY2(shown->heightForWidth(shown->width()) <= shown->height(), language);
        }
    }
}

/// Keys that are held down, and the numbers that were dialled last.
void TestMainWindow::dialling()
{
    CommonUtils::SetSettings("calls", "recent", "111 222 333 444 555 666 777 888 999 000");
    simulate("[modem S]\nmodel=Lume S1\nstate=attached\n"); // cannot call
    QTRY_VERIFY_WITH_TIMEOUT(!call(), LongCall); // else this could be the dial pad of the modem before
    simulate(CallModem);
    QTRY_VERIFY_WITH_TIMEOUT(call(), LongCall);
    auto* const number = window()->findChild<QLineEdit*>();
    auto* const backspace = named<QAbstractButton>(window(), text("IDS_DIAL_BACKSPACE", DialPad));
    auto* const zero = named<QAbstractButton>(window(), "0");
    for (const auto& [key, held] : {std::pair(zero, "+"), {backspace, ""}}) {
        QTest::mousePress(key, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(number->text(), QString(held), LongCall);
        QTest::mouseRelease(key, Qt::LeftButton);
        for (QAbstractButton* clicked : {zero, named<QAbstractButton>(window(), "2"), backspace})
            QTest::mouseClick(clicked, Qt::LeftButton);
        QCOMPARE(number->text(), held + QString("0"));
    }
    QTest::mouseClick(backspace, Qt::LeftButton);
    QVERIFY(!backspace->isEnabled());

    auto* const recent = named<QListWidget>(window(), text("IDS_DIAL_RECENT", DialPad));
    const char* const kept = "222 111 333 444 555 666 777 888 999 000";
    for (const auto& [dialled, numbers] : {std::pair("222", kept),
                                           {"**04*1234*4321*4321#", kept}, // has a PIN
                                           {"*33*0000#", kept},            // has a password
                                           {"*#33#", "*#33# 222 111 333 444 555 666 777 888 999"}}) {
        number->setText(dialled);
        call()->click();
        QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), numbers);
        const QWidgetList opened = windows("CallWindow") + windows("UssdDialog");
        QTRY_VERIFY(dialled[0] != '*' || shows(text("IDS_USSD_REFUSED", DialPad), opened.value(0)));
        qDeleteAll(opened);
    }
    QTest::keyClick(recent, Qt::Key_Down);
    QTest::keyClick(recent, Qt::Key_Down);
    QCOMPARE(number->text(), "222");
    named<QAbstractButton>(window(), text("IDS_DIAL_REMOVE", DialPad))->click();
    QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), "*#33# 111 333 444 555 666 777 888 999");
    QCOMPARE(recent->currentItem()->text(), "111");
    const auto* const delegate = qobject_cast<QStyledItemDelegate*>(recent->itemDelegate());
    QCOMPARE(delegate->displayText("*#33#", {}), QString("\u2066*#33#\u2069")); // not mirrored in Arabic
}

/// What a service code is answered with, and what failures are called.
void TestMainWindow::serviceCodes()
{
    const QByteArray menu =
        CallModem + "[ussd *100#]\nanswer=menu\nasks=true\n[ussd *100# 1]\nanswer=5 EUR\n";
    const QByteArray slow = CallModem + "request-time=50000\n";
    const char* const support = "PluginSupport";
    const std::tuple<QByteArray, QString, QString, QString> rows[] = {
        // the modem, the code, the reply and what is shown in the end
        {menu, "*1 00#", "", "menu"}, // cancels the dialogue, so that the next one begins with the menu
        {menu, "*100#", "1\r", "5 EUR"},
        {menu, "*100#", "9\r", text("IDS_USSD_REFUSED", DialPad)},
        {menu, "#9#", "", text("IDS_USSD_REFUSED", DialPad)},
        {CallModem + "failure=no-coverage\n", "*100#", "", text("IDS_RESULT_NO_COVERAGE", support)},
        {slow, "*100#", "", text("IDS_RESULT_NO_DEVICE", support)}, // another modem replaces it
    };
    for (const auto& [modem, code, reply, end] : rows) {
        simulate(modem);
        QTRY_VERIFY_WITH_TIMEOUT(call() && shows("T-Mobile"), LongCall);
        window()->findChild<QLineEdit*>()->setText(code);
        QVERIFY(text("IDS_DIAL_SEND", DialPad).startsWith(call()->text()));
        call()->click();
        QWidget* const dialog = windows("UssdDialog").value(0);
        QVERIFY(dialog);
        if (modem == slow)
            simulate(QByteArray(CallModem).replace("[modem M]", "[modem N]"));
        auto* const field = dialog->findChild<QLineEdit*>();
        QTRY_VERIFY_WITH_TIMEOUT(reply.isEmpty() || field->isVisible(), LongCall);
        QTest::keyClicks(field, reply);
        QVERIFY2(QTest::qWaitFor([&] { return shows(end, dialog); }, LongCall),
                 qUtf8Printable(code + ' ' + end));
        QCOMPARE(field->isVisible(), end == "menu");
        delete dialog;
    }
}

/// Of the entries "Connect" and "Disconnect", the one that can be used is shown, and does it.
void TestMainWindow::connectingFromMenu()
{
    auto* const on = named<QAction>(window(), text("IDS_MENU_CONNECT"));
    auto* const off = named<QAction>(window(), text("IDS_MENU_DISCONNECT"));
    simulate({});
    QTRY_VERIFY(!on->isEnabled());
    simulate(CallModem + "connection=disconnected\n");
    for (const auto& [shown, hidden] : {std::pair(on, off), {off, on}, {on, off}, {off, on}}) {
        QTRY_VERIFY_WITH_TIMEOUT(shown->isVisible() && shown->isEnabled() && !hidden->isVisible(), LongCall);
        // The modem keeps its state there.
        QTRY_COMPARE(contentOf(homeFile("simulator.ini")).contains("connection=connected"), shown == off);
        shown->trigger();
    }
    // Otherwise the simulator could still write its file while the next test does.
    QTRY_VERIFY_WITH_TIMEOUT(!contentOf(homeFile("simulator.ini")).contains("connection=connected"),
                             LongCall);
}

/// Any plugin can show a page. The first page takes the place of one that goes with its modem; that one comes back with
/// it, unless the user has chosen another one meanwhile.
void TestMainWindow::pageOfLostModem()
{
    const auto* const pages = window()->findChild<QStackedWidget*>();
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    QVERIFY(!mainFrame->ShowPage("unknown"));
    for (const bool choosesAnother : {false, true}) {
        simulate(CallModem);
        window()->showMinimized();
        QTRY_VERIFY(mainFrame->ShowPage("70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14"));
        QVERIFY(!window()->isMinimized() && pages->currentWidget()->inherits("DialPadPage"));
        pages->currentWidget()->setFocus();
        int turns = 0; // a page that is shown for a moment would mark messages as read
        const auto note = connect(pages, &QStackedWidget::currentChanged, this, [&turns] { ++turns; });
        simulate({});
        QTRY_VERIFY_WITH_TIMEOUT(pages->currentWidget()->inherits("ConnectionPage"), LongCall);
        QCOMPARE(turns, 1);
        disconnect(note);
        QCOMPARE(window()->focusWidget(), window()->findChild<QListWidget*>());
        QVERIFY(!choosesAnother || mainFrame->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
        const QWidget* const before = pages->currentWidget();
        simulate(CallModem);
        QTRY_VERIFY(call());
        QVERIFY(choosesAnother ? pages->currentWidget() == before : part("DialPadPage")->isVisible());
        QCOMPARE(window()->focusWidget()->inherits("QLineEdit"), !choosesAnother);
    }
}

/// The window says so while settings cannot be saved, and that the configuration is damaged.
void TestMainWindow::problems()
{
    const auto* const line = part("ProblemLine")->findChild<QLabel*>();
    const QString damage = text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(m_brokenLine);
    QVERIFY(line->isVisible() && line->text() == damage);
    const QString file = homeFile("settings.ini");
    QVERIFY(QTest::qWaitFor([&file] { return QFile::remove(file) && QDir().mkdir(file); }));
    CommonUtils::SetSettings("test", "key", "value");
    QTRY_VERIFY_WITH_TIMEOUT(line->text().contains(text("IDS_NOTICE_SETTINGS")), LongCall);
    QVERIFY(QDir().rmdir(file));
    QTRY_COMPARE_WITH_TIMEOUT(line->text(), damage, LongCall);
}

/// A worker that goes on when the application has waited long enough is named in the log.
void TestMainWindow::lateWorker()
{
    simulate("[modem M]\nmodel=M\nstate=attached\nanswer-time=1500\n[message 1]\nmodem=M\ntext=x\n");
    const auto* const worker = part<QThread>("MessageReader");
    QTRY_VERIFY(worker && worker->isRunning());
    // Two workers read the SIM; the first one to be waited for is named.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("worker Message(Reader|Watch): .+ in time"));
    end();
}

int main(int argc, char** argv)
{
    return runTest<TestMainWindow>(argc, argv, "[language]\nactive=_de-de\n[MiniSkin]\nName=Graphite\n");
}
#include "tst_mainwindow.moc"
