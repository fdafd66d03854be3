// The whole application in this process, with its main window at hand: languages and skins, status bar and
// messages.
#include "../support/DataTable.h"
#include "Change/Change.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "TitleBar/TitleBar.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTextBrowser>
#include <QTextCursor>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>
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
    void menus();
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
    void checkReasonsFit();
    void restartFor(const QString& customer);
    void checkTexts(const QSet<QString>& expected, const QSet<QString>& before) const;

    /// Opens "About this installation".
    void openInstallation() const;

    /// The dialog, and what it copies for support, report the damaged file and the plugin that throws.
    void checkFaults() const;

    QStringList m_openedUrls;
    QHash<int, int> m_events;
};

namespace {

int brokenLine = 0; ///< of the plugin configuration file

/// All texts of all plugins in a language, without shortcuts.
QSet<QString> textsOf(const QString& language)
{
    const QRegularExpression shortcut(R"( \((Ctrl|Strg)\+\w\)$)");
    QSet<QString> texts;
    QDirIterator files(QCoreApplication::applicationDirPath() + "/plugins", {"*_" + language + ".lang"},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QXmlStreamReader reader(&file);
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

QString text(const char* id)
{
    return Change::tr(id, "XFramePlugin");
}

template <typename Object>
Object* withText(QWidget* window, const char* id)
{
    const auto objects = window->findChildren<Object*>();
    const auto hasText = [shown = text(id)](const Object* object) {
        return object->text() == shown;
    };
    const auto found = std::find_if(objects.begin(), objects.end(), hasText);
    return found == objects.end() ? nullptr : *found;
}

} // namespace

void TestMainWindow::initTestCase()
{
    qApp->installEventFilter(this);
    start();
    QVERIFY(window());
    QTRY_VERIFY(owner("Ctrl+D")); // the dial pad comes with the modem's customisation
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
    const bool hasQtTexts =
        QFile::exists(QCoreApplication::applicationDirPath() + "/translations/qtbase_de.qm");
    QString before = "en-us";
    openInstallation();
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
    QVERIFY(withText<QPushButton>(window(), "IDS_INSTALLATION_COPY")->window()->close());
}

/// No text of the language before is left.
void TestMainWindow::checkTexts(const QSet<QString>& expected, const QSet<QString>& before) const
{
    const QSet<QString> shown = shownTexts(window());
    const QSet<QString> left = (before - expected) & shown;
    QVERIFY2(left.isEmpty(), qUtf8Printable(left.values().join(" | ")));
    QVERIFY2((shown & expected).size() > 30, qUtf8Printable(shown.values().join(" | ")));
}

void TestMainWindow::openInstallation() const
{
    auto* const action = withText<QAction>(window(), "IDS_MENU_INSTALLATION");
    QVERIFY(action);
    action->trigger();
}

void TestMainWindow::checkFaults() const
{
    const QString malformed = text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(brokenLine);
    for (const QString& cell :
         {malformed, text("IDS_STATE_FAILED"), text("IDS_FAULT_THREW"), QString("Init() threw: faulty")})
        QTRY_VERIFY2(!cell.isEmpty() && shownTexts(window()).contains(cell), qUtf8Printable(cell));
    auto* const copy = withText<QPushButton>(window(), "IDS_INSTALLATION_COPY");
    QVERIFY(copy);
    copy->click();
    const QString report = QGuiApplication::clipboard()->text();
    const QString failed = ": " + text("IDS_STATE_FAILED") + ": Init() threw: faulty\n";
    const QString rule = ": " + text("IDS_RULE_COMMON") + "; ";
    for (const QString& line : {malformed, failed, rule, QString("northtel\n")})
        QVERIFY2(report.contains(line), qUtf8Printable(line + " | " + report));
}

namespace {

QString sheet(const QString& name)
{
    QFile file(QCoreApplication::applicationDirPath() + "/skin/" + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).remove('\n').remove('\r')
                                          : "missing";
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
        QVERIFY(CommonUtils::IsMiniMode());
        QCOMPARE(qApp->styleSheet(), sheet(skin));
        QVERIFY(window()->width() < usual.width());
        QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
        QVERIFY(!CommonUtils::IsMiniMode());
        QCOMPARE(qApp->styleSheet(), sheet(usualSkin));
        QCOMPARE(window()->size(), usual);
    }
}

void TestMainWindow::statusBar()
{
    const QByteArray german = "state=attached\nimsi=262011234567890\n";
    const std::tuple<const char*, QByteArray, QVector<const char*>> rows[] = {
        {"Deutsch", german + "network=26201\nsignal=50\n", {"T-Mobile", "Signal: 50 %", "↓ – B/s"}},
        {"Deutsch",
         german + "network=20801\nreceive-rate=1468006\nsend-rate=1024\nsent=0\n",
         {"Orange", "↓ 1,40 MB/s", "↑ 1024,00 B/s"}},
        {"Deutsch", german + "network=310260\nreceived=1048577\nsent=524288\n", {"T-Mobile", "1,50 MB"}},
        {"Français", german + "network=23205\nsent=2048\n", {"Drei", "2,00 Ko"}},
        {"العربية", german + "network=23205\nsent=2048\n", {"Drei", "٢٫٠٠ ك.ب"}},
        {"Deutsch", german + "network=26298\n", {"DE98"}},  // an unlisted network
        {"Deutsch", german + "network=99901\n", {"99901"}}, // an unlisted country
        {"Deutsch", german + "network=\n", {"Kein Netz"}},
        {"Deutsch",
         "state=rejected\n",
         {"Modem abgelehnt", "Wartet auf ein anderes",
          "Das zuletzt eingesteckte Modem wurde abgelehnt, vielleicht weil es an einen anderen Betreiber "
          "gebunden ist. Stecken Sie ein anderes ein."}},
        {"Deutsch", german, {"Angeschlossen"}}, // the refusal is over
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
    simulate("[modem M]\nmodel=M\nstate=attached\n[message 1]\nmodem=M\nsender=A\n"
             "text=<b>\\n&lt; \"x\" https://a.example/?b=1&c=\"2\" https://a.example/c.html me@a.example "
             "\\ud83d\n");
    auto* const text = window()->findChild<QTextBrowser*>();
    QTRY_COMPARE(
        text->toPlainText().simplified(),
        QString(R"(<b> &lt; "x" https://a.example/?b=1&c="2" https://a.example/c.html me@a.example )") +
            QChar(0xd83d)); // of a message that was cut
    auto* const pages = window()->findChild<QStackedWidget*>();
    for (int page = 0; page < pages->count() && !text->isVisible(); ++page)
        pages->setCurrentIndex(page);
    QVERIFY(text->isVisible());
    for (const char* scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, this, "openUrl");
    for (const char* word : {"b=1", "c.html", "me@a"}) {
        const QTextCursor place = text->document()->find(word);
        QTest::mouseClick(text->viewport(), Qt::LeftButton, {},
                          text->cursorRect(place).center() - QPoint(3, 0));
    }
    for (const char* scheme : {"https", "mailto"})
        QDesktopServices::unsetUrlHandler(scheme);
    QCOMPARE(m_openedUrls, QStringList({"https://a.example/?b=1&c=%222%22", "https://a.example/c.html",
                                        "mailto:me@a.example"}));
}

/// The operator's entry in the main menu comes and goes with the operator's modems; any plugin can show a page.
void TestMainWindow::menus()
{
    const auto hasEntry = [this] {
        return shownTexts(window()).contains("northtel besuchen");
    };
    for (const auto& [modem, expected] :
         {std::pair("bluewave", false), std::pair("northtel", true), std::pair("bluewave", false)}) {
        simulate(QByteArray("[modem M]\nmodel=M\nstate=attached\ncustomize=") + modem + '\n');
        QTRY_COMPARE(hasEntry(), expected);
        QVERIFY(owner("Ctrl+Q")); // the operator moves the entry to the end
    }
    auto* const pages = window()->findChild<QStackedWidget*>();
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    pages->setCurrentIndex(0);
    window()->showMinimized();
    QVERIFY(mainFrame->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"));
    QCOMPARE(pages->currentWidget()->windowTitle(), "Nachrichten");
    QVERIFY(!window()->isMinimized());
    QVERIFY(!mainFrame->ShowPage("unknown"));
}

namespace {

const QByteArray CallModem =
    "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\nrequest-time=20\n";
constexpr int LongCall = 30000; // milliseconds; a call takes much less, on a busy machine too

/// The visible window of a class; null if there is none.
QWidget* topLevel(const char* className)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits(className) && widget->isVisible())
            return widget;
    return nullptr;
}

QAbstractButton* named(const QWidget* parent, const QString& name)
{
    for (QAbstractButton* button : parent->findChildren<QAbstractButton*>())
        if (button->accessibleName() == name || button->text() == name)
            return button;
    return nullptr;
}

QString dialText(const char* id)
{
    return Change::tr(id, "DialPadPlugin");
}

} // namespace

/// What the dial pad says about numbers and modems, and why calls end.
void TestMainWindow::calls()
{
    simulate(CallModem);
    QTRY_VERIFY(owner("Ctrl+D"));
    auto* const number = window()->findChild<QLineEdit*>();
    auto* const call = qobject_cast<QAbstractButton*>(owner("Ctrl+D"));
    const auto says = [this](const char* id, const char* plugin = "DialPadPlugin") {
        return shownTexts(window()).contains(Change::tr(id, plugin));
    };
    QVERIFY(!call->isEnabled());
    number->setText("no number");
    call->click();
    QVERIFY(says("IDS_DIAL_BAD_NUMBER"));
    number->setText("\u202a+49 (30)\u2013\u0661\u06623\u202c"); // copied from an Arabic document
    QVERIFY(call->isEnabled());
    call->click();
    QVERIFY(says("IDS_CALL_DIALLING", "CallUIPlugin"));
    QWidget* const callWindow = topLevel("CallWindow");
    QVERIFY(shownTexts(callWindow).contains("+4930123"));
    const QRect place = callWindow->geometry();
    QTest::mouseDClick(callWindow->findChild<TitleBar*>(), Qt::LeftButton); // does not maximise it
    QCOMPARE(callWindow->geometry(), place);
    call->click();
    QVERIFY(says("IDS_DIAL_BUSY"));
    QVERIFY(!CommonUtils::MakeCall("*100#", UI_CALL_VOICE));
    topLevel("CallWindow")->close();
    const QByteArray busy = CallModem + "calls=busy\n";
    const QByteArray offline = QByteArray(CallModem).replace("26201", "");
    for (const auto& [before, during, reason] : {std::tuple(busy, busy, "IDS_CALL_BUSY"),
                                                 {CallModem, offline, "IDS_CALL_NO_NETWORK"},
                                                 {CallModem, CallModem, "IDS_CALL_HUNG_UP"},
                                                 {CallModem, {}, "IDS_CALL_NO_MODEM"}}) {
        simulate(before);
        QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("0", UI_CALL_VOICE); }, LongCall));
        simulate(during);
        if (during == CallModem)
            qobject_cast<QAbstractButton*>(owner("Ctrl+H"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(says(reason, "CallUIPlugin"), LongCall);
        delete topLevel("CallWindow");
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
            return qobject_cast<QAbstractButton*>(owner("Ctrl+D"))->isEnabled();
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
    QWidget* const call = topLevel("CallWindow");
    const auto line = [call](const char* id) {
        const QString start = Change::tr(id, "CallUIPlugin") + '\n'; // the duration follows
        const auto labels = call->findChildren<QLabel*>();
        const auto isIt = [&](const QLabel* label) {
            return label->text().startsWith(start);
        };
        const auto found = std::find_if(labels.begin(), labels.end(), isIt);
        return found == labels.end() ? nullptr : *found;
    };
    QTRY_VERIFY_WITH_TIMEOUT(line("IDS_CALL_TALKING"), LongCall);
    simulate(QByteArray(CallModem).replace("26201", ""));
    QTRY_VERIFY_WITH_TIMEOUT(line("IDS_CALL_NO_NETWORK"), LongCall);
    for (const char* language : {"English", "Français", "简体中文", "العربية", "עברית", "Deutsch"}) {
        choose(language);
        QLabel* const shown = line("IDS_CALL_NO_NETWORK");
        QVERIFY2(shown && shown->wordWrap(), language);
        for (const char* reason : {"IDS_CALL_REFUSED", "IDS_CALL_NO_MODEM", "IDS_CALL_HUNG_UP"}) {
            shown->setText(Change::tr(reason, "CallUIPlugin") + "\n00:00:00");
            QVERIFY2(shown->heightForWidth(shown->width()) <= shown->height(), language);
        }
    }
    delete call;
}

/// Keys that are held down, and the numbers that were dialled last.
void TestMainWindow::dialling()
{
    CommonUtils::SetSettings("calls", "recent", "111 222 333 444 555 666 777 888 999 000");
    simulate({});
    QTRY_VERIFY(!owner("Ctrl+D")); // else this could be the dial pad of the modem before
    simulate(CallModem);
    QTRY_VERIFY(owner("Ctrl+D"));
    auto* const number = window()->findChild<QLineEdit*>();
    number->clear();
    auto* const backspace = named(window(), dialText("IDS_DIAL_BACKSPACE"));
    auto* const zero = named(window(), "0");
    const auto hold = [](QAbstractButton* key, const QString& shown, const QLineEdit* field) {
        QTest::mousePress(key, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(field->text(), shown, LongCall);
        QTest::mouseRelease(key, Qt::LeftButton);
        QCOMPARE(field->text(), shown);
    };
    hold(zero, "+", number);
    QTest::mouseClick(zero, Qt::LeftButton);
    QTest::mouseClick(named(window(), "2"), Qt::LeftButton);
    QCOMPARE(number->text(), "+02");
    QTest::mouseClick(backspace, Qt::LeftButton);
    QCOMPARE(number->text(), "+0");
    hold(backspace, {}, number);
    QVERIFY(!backspace->isEnabled());

    QListWidget* recent = nullptr;
    for (auto* list : window()->findChildren<QListWidget*>())
        recent = list->accessibleName() == dialText("IDS_DIAL_RECENT") ? list : recent;
    const auto numbers = [] {
        return CommonUtils::GetUserSettings("calls", "recent");
    };
    for (const auto& [dialled, kept] :
         {std::pair("222", "222 111 333 444 555 666 777 888 999 000"),
          std::pair("**04*1234*4321*4321#", "222 111 333 444 555 666 777 888 999 000"), // has a PIN
          std::pair("*33*0000#", "222 111 333 444 555 666 777 888 999 000"),            // has a password
          std::pair("*#33#", "*#33# 222 111 333 444 555 666 777 888 999")}) {
        number->setText(dialled);
        qobject_cast<QAbstractButton*>(owner("Ctrl+D"))->click();
        QCOMPARE(numbers(), kept);
        QCOMPARE(recent->count(), 10);
        delete topLevel("CallWindow");
        QWidget* const dialog = topLevel("UssdDialog");
        QTRY_VERIFY(!dialog || shownTexts(dialog).contains(dialText("IDS_USSD_REFUSED")));
        delete dialog;
    }
    number->clear();
    QTest::keyClick(recent, Qt::Key_Down);
    QTest::keyClick(recent, Qt::Key_Down);
    QCOMPARE(number->text(), "222");
    QVERIFY(QMetaObject::invokeMethod(named(window(), dialText("IDS_DIAL_REMOVE")), "click"));
    QCOMPARE(numbers(), "*#33# 111 333 444 555 666 777 888 999");
    QCOMPARE(recent->currentItem()->text(), "111");
    const auto* const delegate = qobject_cast<QStyledItemDelegate*>(recent->itemDelegate());
    QCOMPARE(delegate->displayText("*#33#", {}), QString("\u2066*#33#\u2069")); // not mirrored in Arabic
}

void TestMainWindow::serviceCodes_data()
{
    const QByteArray menu = "[ussd *100#]\nanswer=menu\nasks=true\n[ussd *100# 1]\nanswer=balance\n";
    const auto row = dataTable<QByteArray, QByteArray, QString, QString, QString>("modem", "later", "code",
                                                                                  "reply", "end");
    const QString refused = "IDS_USSD_REFUSED";
    row("dialogue that is cancelled", CallModem + menu, {}, "*1 00#", "", "menu");
    row("answer after that", CallModem + menu, {}, "*100#", "1", "balance");
    row("wrong reply", CallModem + menu, {}, "*100#", "9", refused);
    row("unknown code", CallModem + menu, {}, "#9#", "", refused);
    row("no network", CallModem + "failure=no-coverage\n", {}, "*100#", "", "IDS_RESULT_NO_COVERAGE");
    row("another modem replaces it", CallModem + "request-time=50000\n",
        QByteArray(CallModem).replace("[modem M]", "[modem N]"), "*100#", "", "IDS_RESULT_NO_DEVICE");
}

/// What a service code is answered with, and what failures are called.
void TestMainWindow::serviceCodes()
{
    QFETCH(QByteArray, modem);
    QFETCH(QByteArray, later);
    QFETCH(QString, code);
    QFETCH(QString, reply);
    QFETCH(QString, end);
    simulate(modem);
    QTRY_VERIFY(owner("Ctrl+D"));
    QTRY_VERIFY(shownTexts(window()).contains("T-Mobile"));
    window()->findChild<QLineEdit*>()->setText(code);
    auto* const send = qobject_cast<QAbstractButton*>(owner("Ctrl+D"));
    QVERIFY(dialText("IDS_DIAL_SEND").startsWith(send->text()));
    send->click();
    const QPointer<QWidget> dialog = topLevel("UssdDialog");
    QVERIFY(dialog);
    const auto says = [dialog](const QString& words) {
        for (const char* plugin : {"DialPadPlugin", "PluginSupport"})
            if (const QString text = Change::tr(words, plugin); !text.isEmpty())
                return shownTexts(dialog).contains(text);
        return shownTexts(dialog).contains(words);
    };
    if (!later.isEmpty())
        simulate(later);
    auto* const field = dialog->findChild<QLineEdit*>();
    if (!reply.isEmpty()) {
        QTRY_VERIFY(field->isVisible());
        QTest::keyClicks(field, reply);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QTRY_VERIFY2(says(end), qUtf8Printable(shownTexts(dialog).values().join(" | ")));
    QCOMPARE(field->isVisible(), end == "menu");
    delete dialog;
}

/// Of the entries "Connect" and "Disconnect", the one that can be used is shown, and does it.
void TestMainWindow::connectingFromMenu()
{
    const auto entry = [this](const char* id) {
        const auto actions = window()->findChildren<QAction*>();
        return *std::find_if(actions.begin(), actions.end(), [id](const QAction* action) {
            return action->text() == Change::tr(id, "XFramePlugin");
        });
    };
    const auto simulated = [] { // the modem keeps its state there
        QFile file(QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + "/simulator.ini");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QAction* const connectEntry = entry("IDS_MENU_CONNECT");
    QAction* const disconnectEntry = entry("IDS_MENU_DISCONNECT");
    simulate({});
    QTRY_VERIFY(!connectEntry->isEnabled());
    simulate(CallModem + "connection=disconnected\n");
    for (int round = 0; round < 2; ++round) {
        QTRY_VERIFY(connectEntry->isVisible() && connectEntry->isEnabled());
        QVERIFY(!disconnectEntry->isVisible());
        connectEntry->trigger();
        QTRY_VERIFY(disconnectEntry->isVisible() && !connectEntry->isVisible());
        QTRY_VERIFY(simulated().contains("connection=connected"));
        disconnectEntry->trigger();
    }
}

/// The first page takes the place of a page that goes with its modem; that one comes back with it, unless the user has
/// chosen another one meanwhile.
void TestMainWindow::pageOfLostModem()
{
    auto* const pages = window()->findChild<QStackedWidget*>();
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    const auto shown = [pages] {
        return QString(pages->currentWidget()->metaObject()->className());
    };
    for (const bool choosesAnother : {false, true}) {
        simulate(CallModem);
        QTRY_VERIFY(mainFrame->ShowPage("70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14"));
        QCOMPARE(shown(), "DialPadPage");
        simulate({});
        QTRY_COMPARE_WITH_TIMEOUT(shown(), "ConnectionPage", LongCall);
        QVERIFY(!choosesAnother || mainFrame->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
        const QString before = shown();
        simulate(CallModem);
        QTRY_VERIFY(owner("Ctrl+D"));
        QCOMPARE(shown(), choosesAnother ? before : "DialPadPage");
    }
}

/// The window says so while settings cannot be saved, and that the configuration is damaged.
void TestMainWindow::problems()
{
    const auto isTold = [this](const QString& problem) {
        const auto labels = window()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text().contains(problem);
        });
    };
    QVERIFY(isTold(text("IDS_CONFIG_MALFORMED").arg("config/PluginsConfig.xml").arg(brokenLine)));
    const QString notSaved = text("IDS_NOTICE_SETTINGS");
    QVERIFY(!isTold(notSaved));
    const QString file = QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + "/settings.ini";
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
    const auto workers = window()->findChildren<QThread*>();
    const auto found = std::find_if(workers.begin(), workers.end(),
                                    [](const QThread* thread) { return thread->inherits("MessageReader"); });
    QVERIFY(found != workers.end());
    const QThread* const worker = *found;
    QTRY_VERIFY(worker->isRunning());
    CommonUtils::SetShutDownFlag();
    // Two workers read the SIM; the first one to be waited for is named.
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("worker Message(Reader|Watch): [a-z ]+ has not ended in time"));
    end();
}

namespace {

/// Damages the end of the plugin configuration file: everything in it is read nevertheless.
bool breakConfiguration()
{
    const QString folder = QCoreApplication::applicationDirPath();
    QFile source(folder + "/../../app/config/PluginsConfig.xml");
    QFile copy(folder + "/config/PluginsConfig.xml");
    if (!source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly))
        return false;
    const QByteArray content = source.readAll() + "<";
    brokenLine = content.count('\n') + 1;
    return copy.write(content) == content.size();
}

} // namespace

int main(int argc, char** argv)
{
    const TestHome home("[language]\nactive=_de-de\n[MiniSkin]\nName=Graphite\n");
    QApplication application(argc, argv);
    if (!breakConfiguration())
        return EXIT_FAILURE;
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mainwindow.moc"
