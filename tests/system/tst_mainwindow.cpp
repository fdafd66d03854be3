// The whole application in this process, with its main window at hand: languages and skins, status bar and
// messages.
#include "../support/DataTable.h"
#include "../support/TestFiles.h"
#include "Change/Change.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSet>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTextBrowser>
#include <QTextCursor>
#include <QXmlStreamReader>

#include <tuple>

class TestMainWindow : public RunningApplication
{
    Q_OBJECT

public slots:
    /// Stands in for the desktop's browser.
    void openUrl(const QUrl& url) { m_openedUrls.append(url.toString(QUrl::FullyEncoded)); }

private slots:
    void initTestCase();
    void language();
    void compactWindow();
    void statusBar();
    void messageLinks();
    void operatorsEntry();
    void calls();
    void dialling();
    void serviceCodes_data();
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
    void checkReasonsFit();
    void restartFor(const QString& customer);

    void checkTexts(const QSet<QString>& expected, const QSet<QString>& before) const;

    /// The dialog, and what it copies for support, report the damaged file and the plugin that throws.
    void checkFaults() const;

    int m_brokenLine = 0; ///< of the plugin configuration file
    QStringList m_openedUrls;
    QHash<int, int> m_events;
};

namespace {

/// All texts of all plugins in a language, without shortcuts.
QSet<QString> textsOf(const QString& language)
{
    const QRegularExpression shortcut(R"( \((Ctrl|Strg)\+\w\)$)");
    QSet<QString> texts;
    QDirIterator files(QCoreApplication::applicationDirPath() + "/plugins", {"*_" + language + ".lang"},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QXmlStreamReader reader(contentOf(files.next()));
        reader.readNextStartElement();
        while (reader.readNextStartElement())
            texts.insert(reader.readElementText().remove(shortcut));
    }
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

void TestMainWindow::initTestCase()
{
    // Everything before the damage is read nevertheless, and it is at the end.
    const QString folder = QCoreApplication::applicationDirPath();
    const QByteArray content = contentOf(folder + "/../../app/config/PluginsConfig.xml") + '<';
    m_brokenLine = content.count('\n') + 1;
    writeFile(folder + "/config/PluginsConfig.xml", content);
    qApp->installEventFilter(this);
    start();
    QTRY_VERIFY(window() && owner("Ctrl+D")); // the dial pad comes with the modem's customisation
}

void TestMainWindow::language()
{
    const std::tuple<QString, const char*, Qt::LayoutDirection, QString, int, int> rows[] = {
        {"de-de", "Deutsch", Qt::LeftToRight, "&Kopieren", 0, 0}, // the application has started in it
        {"ar-sa", "العربية", Qt::RightToLeft, "ا&نسخ", 1, 1},
        {"he-il", "עברית", Qt::RightToLeft, "הע&תק", 1, 0}, // not mirrored in between
        {"zh-cn", "简体中文", Qt::LeftToRight, "复制(&C)", 1, 1},
        {"fr-fr", "Français", Qt::LeftToRight, "Cop&ier", 1, 0},
    };
    const bool hasQtTexts = QDir(qApp->applicationDirPath()).exists("translations/qtbase_de.qm");
    QString before = "en-us";
    choose(text("IDS_MENU_INSTALLATION"));
    for (const auto& [code, ownName, direction, copy, translations, reversals] : rows) {
        if (before != "en-us")
            choose(ownName);
        QCOMPARE(m_events.take(QEvent::LanguageChange), translations);
        QCOMPARE(m_events.take(QEvent::LayoutDirectionChange), reversals);
        QCOMPARE(QCoreApplication::translate("QWidgetTextControl", "&Copy"), hasQtTexts ? copy : "&Copy");
        QCOMPARE(CommonUtils::GetSettings("language", "active"), '_' + code);
        checkTexts(textsOf(code), textsOf(before));
        checkFaults();
        for (const char* shortcut : {"Ctrl+Q", "Ctrl+M", "Ctrl+D"})
            QVERIFY2(owner(shortcut), shortcut);
        QCOMPARE(window()->layoutDirection(), direction);
        const auto* sideBar = window()->findChild<QListWidget*>();
        const auto* pages = window()->findChild<QStackedWidget*>();
        QTRY_COMPARE(sideBar->x() > pages->x(), direction == Qt::RightToLeft);
        before = code;
    }
    QVERIFY(named<QAbstractButton>(window(), text("IDS_INSTALLATION_COPY"))->window()->close());
}

/// No text of the language before is left.
void TestMainWindow::checkTexts(const QSet<QString>& expected, const QSet<QString>& before) const
{
    const QSet<QString> shown = shownTexts(window());
    const QSet<QString> left = (before - expected) & shown;
    QVERIFY2(left.isEmpty(), qUtf8Printable(left.values().join(" | ")));
    QVERIFY2((shown & expected).size() > 30, qUtf8Printable(shown.values().join(" | ")));
}

void TestMainWindow::checkFaults() const
{
    const QString malformed = text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(m_brokenLine);
    for (const QString& cell :
         {malformed, text("IDS_STATE_FAILED"), text("IDS_FAULT_THREW"), QString("Init() threw: faulty")})
        QTRY_VERIFY2(!cell.isEmpty() && shownTexts(window()).contains(cell), qUtf8Printable(cell));
    named<QAbstractButton>(window(), text("IDS_INSTALLATION_COPY"))->click();
    const QString report = QGuiApplication::clipboard()->text();
    const QString failed = ": " + text("IDS_STATE_FAILED") + ": Init() threw: faulty\n";
    const QString rule = ": " + text("IDS_RULE_COMMON") + "; ";
    for (const QString& line : {malformed, failed, rule, QString("northtel\n")})
        QVERIFY2(report.contains(line), qUtf8Printable(line + " | " + report));
}

namespace {

QString sheet(const QString& name)
{
    const QByteArray content = contentOf(QCoreApplication::applicationDirPath() + "/skin/" + name);
    return QString::fromUtf8(content).remove('\n').remove('\r');
}

} // namespace

void TestMainWindow::compactWindow()
{
    const std::tuple<const char*, QString, QString> rows[] = {
        {"Deutsch", "Graphite.qss", "default.qss"},
        {"עברית", "Graphite/Graphite_Arabic.qss", "default/default_Arabic.qss"},
    };
    for (const auto& [language, skin, usualSkin] : rows) {
        choose(language);
        QCOMPARE(qApp->styleSheet(), sheet(usualSkin));
        const QSize usual = window()->size();
        QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
        QCOMPARE(qApp->styleSheet(), sheet(skin));
        QVERIFY(window()->width() < usual.width());
        QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
        QCOMPARE(qApp->styleSheet(), sheet(usualSkin));
        QCOMPARE(window()->size(), usual);
    }
}

void TestMainWindow::statusBar()
{
    const QByteArray sim = "state=attached\nimsi=262011234567890\n";
    const std::tuple<const char*, QByteArray, QVector<const char*>> rows[] = {
        {"Deutsch",
         sim + "network=26201\nsignal=50\nreceive-rate=1468006\nsend-rate=1024\nsent=0\n",
         {"T-Mobile", "Signal: 50 %", "↓ 1,40 MB/s", "↑ 1024,00 B/s"}},
        {"Deutsch",
         sim + "network=310260\nreceived=1048577\nsent=524288\n",
         {"↓ – B/s", "1,50 MB", "T-Mobile"}},
        {"Français", sim + "network=23205\nsent=2048\n", {"Drei", "2,00 Ko"}},
        {"العربية", sim + "network=23205\nsent=2048\n", {"Drei", "٢٫٠٠ ك.ب"}},
        {"Deutsch", sim + "network=26298\n", {"DE98"}},  // an unlisted network
        {"Deutsch", sim + "network=99901\n", {"99901"}}, // an unlisted country
        {"Deutsch", sim + "network=\n", {"Kein Netz"}},
        {"Deutsch",
         "state=rejected\n",
         {"Modem abgelehnt", "Wartet auf ein anderes",
          "Das zuletzt eingesteckte Modem wurde abgelehnt, vielleicht weil es an einen anderen Betreiber "
          "gebunden ist. Stecken Sie ein anderes ein."}},
        {"Deutsch",
         "state=failed\n",
         {"Modem nicht benutzbar", "Abziehen und wieder einstecken",
          "Das Modem meldet einen Fehler. Ziehen Sie es ab und stecken Sie es wieder ein."}},
        {"Deutsch", sim, {"Angeschlossen"}}, // the failure is over
        {"Deutsch", {}, {"Kein Modem", "Wartet, bis eines eingesteckt wird"}},
    };
    int number = 0;
    for (const auto& [language, values, texts] : rows) {
        choose(language);
        const QByteArray modem = "[modem " + QByteArray::number(++number) + "]\nmodel=M\n" + values;
        simulate(values.isEmpty() ? QByteArray() : modem);
        for (const char* text : texts)
            QTRY_VERIFY2(shownTexts(window()).contains(text), text);
    }
}

/// A message that comes is shown, and a click on an address in it opens exactly that address.
void TestMainWindow::messageLinks()
{
    simulate("[modem M]\nmodel=M\nstate=attached\n");
    QTRY_VERIFY(shownTexts(window()).contains("Es sind keine Nachrichten da."));
    const QString message = R"(<b> &lt; "x" https://a.de/?b=1&c="2" https://a.de/c.html me@a.de )";
    simulate("[modem M]\nmodel=M\nstate=attached\n[message 1]\nmodem=M\nsender=A\ntext=" + message.toUtf8() +
             "\\ud83d\n"); // a message that was cut
    auto* const text = window()->findChild<QTextBrowser*>();
    QTRY_COMPARE(text->toPlainText(), message + QChar(0xd83d));
    QVERIFY(Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"));
    for (const char* scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, this, "openUrl");
    for (const char* word : {"b=1", "c.html", "me@a"}) {
        const QTextCursor place = text->document()->find(word);
        QTest::mouseClick(text->viewport(), Qt::LeftButton, {},
                          text->cursorRect(place).center() - QPoint(3, 0));
    }
    QCOMPARE(m_openedUrls,
             QStringList({"https://a.de/?b=1&c=%222%22", "https://a.de/c.html", "mailto:me@a.de"}));
}

/// The operator's entry in the main menu comes and goes with the operator's modems.
void TestMainWindow::operatorsEntry()
{
    for (const char* modem : {"bluewave", "northtel", "bluewave"}) {
        simulate(QByteArray("[modem M]\nmodel=M\nstate=attached\ncustomize=") + modem + '\n');
        QTRY_COMPARE(shownTexts(window()).contains("northtel besuchen"), qstrcmp(modem, "northtel") == 0);
        QVERIFY(owner("Ctrl+Q")); // the operator moves the entry to the end
    }
}

namespace {

const QByteArray CallModem =
    "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\nrequest-time=20\n";
constexpr int LongCall = 30000; // milliseconds; a call takes much less, on a busy machine too

} // namespace

/// What the dial pad says about numbers and modems, and why calls end.
void TestMainWindow::calls()
{
    simulate(CallModem);
    QTRY_VERIFY(call());
    auto* const number = window()->findChild<QLineEdit*>();
    const auto says = [this](const char* id, const char* plugin = DialPad) {
        return shownTexts(window()).contains(text(id, plugin));
    };
    QVERIFY(!call()->isEnabled());
    number->setText("no number");
    call()->click();
    QVERIFY(says("IDS_DIAL_BAD_NUMBER"));
    number->setText("\u202a+49 (30)\u2013\u0661\u06623\u202c"); // copied from an Arabic document
    QVERIFY(call()->isEnabled());
    call()->click();
    QVERIFY(says("IDS_CALL_DIALLING", "CallUIPlugin"));
    QVERIFY(shownTexts(windows("CallWindow").value(0)).contains("+4930123"));
    call()->click();
    QVERIFY(says("IDS_DIAL_BUSY"));
    QVERIFY(!CommonUtils::MakeCall("*100#", UI_CALL_VOICE));
    windows("CallWindow").value(0)->close();
    const QByteArray busy = CallModem + "calls=busy\n";
    const QByteArray offline = QByteArray(CallModem).replace("26201", "");
    const std::tuple<QByteArray, QByteArray, const char*> rows[] = {
        // the modem before and during the call
        {busy, busy, "IDS_CALL_BUSY"},
        {CallModem, offline, "IDS_CALL_NO_NETWORK"},
        {CallModem, CallModem, "IDS_CALL_HUNG_UP"},
        {CallModem, {}, "IDS_CALL_NO_MODEM"},
    };
    for (const auto& [before, during, reason] : rows) {
        simulate(before);
        QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("0", UI_CALL_VOICE); }, LongCall));
        simulate(during);
        if (before == during && before == CallModem)
            qobject_cast<QAbstractButton*>(owner("Ctrl+H"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(says(reason, "CallUIPlugin"), LongCall);
        delete windows("CallWindow").value(0);
    }
    checkReasonsFit();
    restartFor("bluewave"); // has the dial pad without a modem, too
    for (const auto& [modem, fault] : {std::pair(CallModem + "calls=none\n", "IDS_DIAL_NO_CALLS"),
                                       {offline, "IDS_DIAL_NO_NETWORK"},
                                       {QByteArray(), "IDS_DIAL_NO_MODEM"}}) {
        simulate(modem);
        QTRY_VERIFY_WITH_TIMEOUT(says(fault), LongCall);
        const auto canDial = [this](const QString& dialled) {
            window()->findChild<QLineEdit*>()->setText(dialled);
            return call()->isEnabled();
        };
        QCOMPARE(canDial("*100#"), !modem.isEmpty());
        QVERIFY(!canDial("0") && says(fault));
    }
    restartFor("northtel");
}

void TestMainWindow::restartFor(const QString& customer)
{
    CommonUtils::SetSettings("customize", "operator", customer);
    end();
    start();
}

/// Each end of a call that was answered can be read in each language.
void TestMainWindow::checkReasonsFit()
{
    simulate(CallModem);
    QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("0", UI_CALL_VOICE); }, LongCall));
    QWidget* const window = windows("CallWindow").value(0);
    const auto line = [window](const char* id) -> QLabel* {
        for (QLabel* label : window->findChildren<QLabel*>())
            if (label->text().startsWith(text(id, "CallUIPlugin") + '\n')) // the duration follows
                return label;
        return nullptr;
    };
    QTRY_VERIFY_WITH_TIMEOUT(line("IDS_CALL_TALKING"), LongCall);
    simulate(QByteArray(CallModem).replace("26201", ""));
    QTRY_VERIFY_WITH_TIMEOUT(line("IDS_CALL_NO_NETWORK"), LongCall);
    for (const char* language : {"English", "Français", "简体中文", "العربية", "עברית", "Deutsch"}) {
        choose(language);
        QLabel* const shown = line("IDS_CALL_NO_NETWORK");
        QVERIFY2(shown && shown->wordWrap(), language);
        for (const char* reason : {"IDS_CALL_REFUSED", "IDS_CALL_NO_MODEM", "IDS_CALL_HUNG_UP"}) {
            shown->setText(text(reason, "CallUIPlugin") + "\n00:00:00");
            QVERIFY2(shown->heightForWidth(shown->width()) <= shown->height(), language);
        }
    }
    delete window;
}

/// Keys that are held down, and the numbers that were dialled last.
void TestMainWindow::dialling()
{
    CommonUtils::SetSettings("calls", "recent", "111 222 333 444 555 666 777 888 999 000");
    simulate({});
    QTRY_VERIFY(!call()); // else this could be the dial pad of the modem before
    simulate(CallModem);
    QTRY_VERIFY(call());
    auto* const number = window()->findChild<QLineEdit*>();
    auto* const backspace = named<QAbstractButton>(window(), text("IDS_DIAL_BACKSPACE", DialPad));
    auto* const zero = named<QAbstractButton>(window(), "0");
    const auto hold = [number](QAbstractButton* key, const QString& shown) {
        QTest::mousePress(key, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(number->text(), shown, LongCall);
        QTest::mouseRelease(key, Qt::LeftButton);
        QCOMPARE(number->text(), shown);
    };
    hold(zero, "+");
    for (QAbstractButton* key : {zero, named<QAbstractButton>(window(), "2"), backspace})
        QTest::mouseClick(key, Qt::LeftButton);
    QCOMPARE(number->text(), "+0");
    hold(backspace, {});
    QVERIFY(!backspace->isEnabled());

    auto* const recent = named<QListWidget>(window(), text("IDS_DIAL_RECENT", DialPad));
    for (const auto& [dialled, kept] :
         {std::pair("222", "222 111 333 444 555 666 777 888 999 000"),
          std::pair("**04*1234*4321*4321#", "222 111 333 444 555 666 777 888 999 000"), // has a PIN
          std::pair("*33*0000#", "222 111 333 444 555 666 777 888 999 000"),            // has a password
          std::pair("*#33#", "*#33# 222 111 333 444 555 666 777 888 999")}) {
        number->setText(dialled);
        call()->click();
        QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), kept);
        QCOMPARE(recent->count(), 10);
        delete windows("CallWindow").value(0);
        QWidget* const dialog = windows("UssdDialog").value(0);
        QTRY_VERIFY(!dialog || shownTexts(dialog).contains(text("IDS_USSD_REFUSED", DialPad)));
        delete dialog;
    }
    number->clear();
    QTest::keyClick(recent, Qt::Key_Down);
    QTest::keyClick(recent, Qt::Key_Down);
    QCOMPARE(number->text(), "222");
    named<QAbstractButton>(window(), text("IDS_DIAL_REMOVE", DialPad))->click();
    QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), "*#33# 111 333 444 555 666 777 888 999");
    QCOMPARE(recent->currentItem()->text(), "111");
    const auto* const delegate = qobject_cast<QStyledItemDelegate*>(recent->itemDelegate());
    QCOMPARE(delegate->displayText("*#33#", {}), QString("\u2066*#33#\u2069")); // not mirrored in Arabic
}

void TestMainWindow::serviceCodes_data()
{
    const QByteArray menu = "[ussd *100#]\nanswer=menu\nasks=true\n[ussd *100# 1]\nanswer=balance\n";
    const auto row = dataTable<QByteArray, QString, QString, QString>("modem", "code", "reply", "end");
    const QString refused = text("IDS_USSD_REFUSED", DialPad);
    const char* const support = "PluginSupport";
    row("answer", CallModem + menu, "*100#", "1", "balance");
    row("answer after a dialogue that was cancelled", CallModem + menu, "*1 00#", "", "menu");
    row("another one", CallModem + menu, "*100#", "1", "balance");
    row("wrong reply", CallModem + menu, "*100#", "9", refused);
    row("unknown code", CallModem + menu, "#9#", "", refused);
    row("no network", CallModem + "failure=no-coverage\n", "*100#", "",
        text("IDS_RESULT_NO_COVERAGE", support));
    row("another modem replaces it", CallModem + "request-time=50000\n", "*100#", "",
        text("IDS_RESULT_NO_DEVICE", support));
}

/// What a service code is answered with, and what failures are called.
void TestMainWindow::serviceCodes()
{
    QFETCH(QByteArray, modem);
    QFETCH(QString, code);
    QFETCH(QString, reply);
    QFETCH(QString, end);
    simulate(modem);
    QTRY_VERIFY(call());
    QTRY_VERIFY(shownTexts(window()).contains("T-Mobile"));
    window()->findChild<QLineEdit*>()->setText(code);
    QVERIFY(text("IDS_DIAL_SEND", DialPad).startsWith(call()->text()));
    call()->click();
    const QPointer<QWidget> dialog = windows("UssdDialog").value(0);
    QVERIFY(dialog);
    if (modem.endsWith("50000\n"))
        simulate(QByteArray(CallModem).replace("[modem M]", "[modem N]"));
    auto* const field = dialog->findChild<QLineEdit*>();
    if (!reply.isEmpty()) {
        QTRY_VERIFY(field->isVisible());
        QTest::keyClicks(field, reply);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QTRY_VERIFY2(shownTexts(dialog).contains(end), qUtf8Printable(shownTexts(dialog).values().join(" | ")));
    QCOMPARE(field->isVisible(), end == "menu");
    delete dialog;
}

/// Of the entries "Connect" and "Disconnect", the one that can be used is shown, and does it.
void TestMainWindow::connectingFromMenu()
{
    auto* const connectEntry = named<QAction>(window(), text("IDS_MENU_CONNECT"));
    auto* const disconnectEntry = named<QAction>(window(), text("IDS_MENU_DISCONNECT"));
    simulate({});
    QTRY_VERIFY(!connectEntry->isEnabled());
    simulate(CallModem + "connection=disconnected\n");
    for (int round = 0; round < 2; ++round) {
        QTRY_VERIFY(connectEntry->isVisible() && connectEntry->isEnabled());
        QVERIFY(!disconnectEntry->isVisible());
        connectEntry->trigger();
        QTRY_VERIFY(disconnectEntry->isVisible() && !connectEntry->isVisible());
        // The modem keeps its state there.
        QTRY_VERIFY(contentOf(homeFile("simulator.ini")).contains("connection=connected"));
        disconnectEntry->trigger();
    }
}

/// Any plugin can show a page. The first page takes the place of one that goes with its modem; that one comes back with
/// it, unless the user has chosen another one meanwhile.
void TestMainWindow::pageOfLostModem()
{
    auto* const pages = window()->findChild<QStackedWidget*>();
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    const auto shown = [pages] {
        return QString(pages->currentWidget()->metaObject()->className());
    };
    QVERIFY(!mainFrame->ShowPage("unknown"));
    for (const bool choosesAnother : {false, true}) {
        simulate(CallModem);
        window()->showMinimized();
        QTRY_VERIFY(mainFrame->ShowPage("70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14"));
        QVERIFY(!window()->isMinimized());
        QCOMPARE(shown(), "DialPadPage");
        pages->currentWidget()->setFocus();
        QStringList
            turns; // no other page may be shown, not even for a moment: that would mark messages as read
        const auto note = connect(pages, &QStackedWidget::currentChanged, this, [&] { turns += shown(); });
        simulate({});
        QTRY_COMPARE_WITH_TIMEOUT(turns, QStringList("ConnectionPage"), LongCall);
        disconnect(note);
        QCOMPARE(window()->focusWidget(), window()->findChild<QListWidget*>());
        QVERIFY(!choosesAnother || mainFrame->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
        const QString before = shown();
        simulate(CallModem);
        QTRY_VERIFY(call());
        QCOMPARE(shown(), choosesAnother ? before : "DialPadPage");
        QCOMPARE(window()->focusWidget()->inherits("QLineEdit"), !choosesAnother);
    }
}

/// The window says so while settings cannot be saved, and that the configuration is damaged.
void TestMainWindow::problems()
{
    const auto isTold = [label = part("ProblemLine")->findChild<QLabel*>()](const QString& problem) {
        return label->isVisible() && label->text().contains(problem);
    };
    QVERIFY(isTold(text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(m_brokenLine)));
    const QString notSaved = text("IDS_NOTICE_SETTINGS");
    QVERIFY(!isTold(notSaved));
    const QString file = homeFile("settings.ini");
    QVERIFY(QTest::qWaitFor([&file] { return QFile::remove(file) && QDir().mkdir(file); }));
    CommonUtils::SetSettings("test", "key", "value");
    QTRY_VERIFY_WITH_TIMEOUT(isTold(notSaved), LongCall);
    QVERIFY(QDir().rmdir(file));
    QTRY_VERIFY_WITH_TIMEOUT(!isTold(notSaved), LongCall);
}

/// A worker that goes on when the application has waited long enough is named in the log.
void TestMainWindow::lateWorker()
{
    simulate("[modem M]\nmodel=M\nstate=attached\nanswer-time=1500\n[message 1]\nmodem=M\ntext=x\n");
    const auto* const worker = part<QThread>("MessageReader");
    QTRY_VERIFY(worker && worker->isRunning());
    // Two workers read the SIM; the first one to be waited for is named.
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("worker Message(Reader|Watch): [a-z ]+ has not ended in time"));
    end();
}

int main(int argc, char** argv)
{
    return runTest<TestMainWindow>(argc, argv, "[language]\nactive=_de-de\n[MiniSkin]\nName=Graphite\n");
}
#include "tst_mainwindow.moc"
