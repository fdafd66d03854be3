// The whole application in this process, with its main window at hand: languages and skins, status bar and
// messages.
#include "Change/Change.h"
#include "Part.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "TestFiles.h"
#include "common/CommonUtils.h"
#include "common/RecentLog.h"

#include <QAction>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>
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
    bool shows(const QString& start) const;
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

const QByteArray Modem =
    "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\nrequest-time=20\n";

QString text(const char* id)
{
    return Change::tr(id, "XFramePlugin");
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

/// Whether a line that can be read in the window begins with this.
bool TestMainWindow::shows(const QString& start) const
{
    const QStringList texts = shownTexts(window()).values();
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
    simulate(Modem + "gid=NT-GOLD\n"); // enables the plugin that throws
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
        {"Deutsch", "state=rejected\n", "Abgelehnt|Anderes Modem einstecken|Das zuletzt eingesteckte"},
        {"Deutsch", "state=failed\n", "Modemfehler|Bitte neu einstecken|Das Modem meldet einen"},
        {"Deutsch", sim, "Angeschlossen"}, // the failure is over
        {"Deutsch", {}, "Kein Modem|Wartet auf ein Modem"},
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
    simulate(Modem);
    QTRY_VERIFY(shows("Es gibt keine Nachrichten."));
    const QString sent = R"(<b> &lt; "x" https://a.de/?b=1&c="2" https://a.de/c.html me@a.de )";
    // a message that was cut
    simulate(Modem + "[message 1]\nmodem=M\nsender=A\ntext=" + sent.toUtf8() + "\\ud83d\n");
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

/// Of the entries "Connect" and "Disconnect", the one that can be used is shown, and does it.
void TestMainWindow::connectingFromMenu()
{
    const auto entry = [this](const char* id) {
        return named<QAction>(window(), text(id));
    };
    const char* const on = "IDS_MENU_CONNECT";
    const char* const off = "IDS_MENU_DISCONNECT";
    simulate({});
    QTRY_VERIFY(!entry(on)->isEnabled());
    simulate(Modem + "connection=disconnected\n");
    for (const auto& [shown, hidden] : {std::pair(on, off), {off, on}, {on, off}, {off, on}}) {
        AWAIT(entry(shown)->isVisible() && entry(shown)->isEnabled() && !entry(hidden)->isVisible());
        // The simulator keeps its state there. What was written before that would be lost.
        const auto isDone = [isOn = shown == on] {
            return contentOf(homeFile("simulator.ini")).contains("connection=connected") == isOn;
        };
        // The request before, which has taken effect, may not have ended yet; then this one is refused.
        const auto isRepeated = [&, id = shown] {
            entry(id)->trigger();
            return QTest::qWaitFor(isDone, 2000);
        };
        QVERIFY(QTest::qWaitFor(isRepeated, LongestWait));
    }
}

/// Any plugin can show a page. The first page takes the place of one that goes with its modem; that one comes back with
/// it, unless the user has chosen another one meanwhile.
void TestMainWindow::pageOfLostModem()
{
    const auto* const pages = window()->findChild<QStackedWidget*>();
    IMainFrameUIService* const mainFrame = Startup::GetMainFrameService();
    QVERIFY(!mainFrame->ShowPage("unknown"));
    for (const bool choosesAnother : {false, true}) {
        simulate(Modem);
        window()->showMinimized();
        QTRY_VERIFY(mainFrame->ShowPage("70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14"));
        QVERIFY(!window()->isMinimized() && pages->currentWidget()->inherits("DialPadPage"));
        pages->currentWidget()->setFocus();
        int turns = 0; // a page that is shown for a moment would mark messages as read
        const auto note = connect(pages, &QStackedWidget::currentChanged, this, [&turns] { ++turns; });
        simulate({});
        AWAIT(pages->currentWidget()->inherits("ConnectionPage"));
        QCOMPARE(turns, 1);
        disconnect(note);
        QCOMPARE(window()->focusWidget(), window()->findChild<QListWidget*>());
        QVERIFY(!choosesAnother || mainFrame->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
        const QWidget* const before = pages->currentWidget();
        simulate(Modem);
        QTRY_VERIFY(owner("Ctrl+D"));
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
    AWAIT(line->text().contains(text("IDS_NOTICE_SETTINGS")));
    QVERIFY(QDir().rmdir(file));
    AWAIT_EQUAL(line->text(), damage);
}

/// A worker that goes on when the application has waited long enough is named in the log.
void TestMainWindow::lateWorker()
{
    simulate("[modem M]\nmodel=M\nstate=attached\nanswer-time=3000\n[message 1]\nmodem=M\ntext=x\n");
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
