// The page "Messages" as its users see it, with simulated modems.
#include "DataTable.h"
#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "MessageLength.h"
#include "MessageText.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "ToolBar/SearchLineEdit.h"
#include "common/CommonUtils.h"
#include "support/Modems.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QtTest>

constexpr int LongestWait = 30000; // milliseconds; any step takes much less, on a busy machine too

class TestMessages : public RunningApplication
{
    Q_OBJECT

private slots:
    void length_data();
    void length();
    void links_data();
    void links();

    void init();
    void cleanup() { end(); }
    void conversations();
    void reading();
    void unread();
    void searching();
    void toolBar_data();
    void toolBar();
    void menu_data();
    void menu();
    void drafts();
    void deleting();
    void failing_data();
    void failing();
    void choosingSender();

private:
    QAbstractItemView* list() const { return window()->findChild<QAbstractItemView*>("messageList"); }
    QTextBrowser* thread() const { return list()->parentWidget()->findChild<QTextBrowser*>(); }
    QWidget* page() const { return part("MessagesPage"); }
    static void show() { Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"); }

    /// What the rows of the list show.
    QStringList rows(int role = Qt::DisplayRole) const;

    void choose(int row) const { list()->setCurrentIndex(list()->model()->index(row, 0)); }
    void click(const char* shortcut) const;

    /// The visible window with a widget of this class; null when there is none.
    template <typename Content>
    ExtendDialog* dialog() const;

    /// Whether a label of the main window or of a dialog shows these words.
    bool says(const QString& words) const;

    /// Answers the question that is shown.
    void answer(const QString& button);

    /// Simulates this modem with the three messages, and waits until another message shows that it is in use.
    void use(const QByteArray& modem);

    /// Waits until the newest message has been delivered: then the simulator no longer changes its file.
    void awaitDelivery() const
    {
        choose(0);
        QTRY_VERIFY_WITH_TIMEOUT(thread()->toPlainText().contains("Delivered"), LongestWait);
    }

    /// Opens the window for writing.
    ExtendDialog* compose(const char* shortcut) const;
    QPlainTextEdit* field() const { return dialog<QPlainTextEdit>()->findChild<QPlainTextEdit*>(); }
    static void press(QWidget* widget, Qt::Key key) { QTest::keyClick(widget, key, Qt::ControlModifier); }

    int m_uses = 0;
};

namespace {

const QByteArray V2 = "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                      "request-time=1\n";
const QByteArray Three =
    "[message 1]\nmodem=M\nsender=+49 30 1\ntime=2024-03-01T09:00:00\ntext=Hello from Berlin\n"
    "[message 2]\nmodem=M\nsender=Bank\ntime=2024-03-02T09:00:00\ntext=Your code\n"
    "[message 3]\nmodem=M\nsender=+49(30)1\ntime=2024-03-03T09:00:00\ntext=And bye\n";

enum Role { TimeRole = Qt::UserRole, TextRole, UnreadRole };

/// Another modem.
const QByteArray X5 = "[modem X]\nmodel=Lume X5\nstate=attached\nimsi=262019999999999\nnetwork=26201\n"
                      "request-time=1\n";

/// One that does not answer while a test runs.
const QByteArray Slow = QByteArray(V2).replace("request-time=1", "request-time=50000");

} // namespace

void TestMessages::length_data()
{
    const auto row = dataTable<QString, QVector<int>>("text", "length"); // characters, parts, left
    row("nothing", "", {0, 0, 160});
    row("one part", QString(160, 'a'), {160, 1, 0});
    row("two parts", QString(161, 'a'), {161, 2, 306 - 161});
    row("three parts", QString(307, 'a'), {307, 3, 152});
    row("basic table", QStringLiteral("Ñàé\n€"), {5, 1, 154});
    row("undivided escape", QStringLiteral("€").repeated(153), {153, 3, 151});
    row("two parts of UCS-2", QStringLiteral("ж").repeated(71), {71, 2, 134 - 71});
    row("mixed", QString(133, 'a') + QStringLiteral("中文"), {135, 3, 66});
    row("emoji", QStringLiteral("😀").repeated(35), {35, 1, 0});
    row("undivided emoji", QStringLiteral("😀").repeated(67), {67, 3, 65});
    row("half an emoji", QString(QChar(0xd83d)), {1, 1, 69});
}

void TestMessages::length()
{
    QFETCH(QString, text);
    const MessageLength length = messageLength(text);
    QTEST(QVector<int>({length.characters, length.parts, length.left}), "length");
}

void TestMessages::links_data()
{
    const auto row = dataTable<QString, QStringList>("text", "targets");
    row("full stop, brackets", "See www.b.de. (www.b.de)", {"http://www.b.de", "http://www.b.de"});
    row("several signs", "\"www.b.de\"?!, me@a.example;", {"http://www.b.de", "mailto:me@a.example"});
    row("typographic", QStringLiteral("«https://b.de/x» „www.b.de“ www.c.de。"),
        {"https://b.de/x", "http://www.b.de", "http://www.c.de"});
    row("own brackets", "https://b.de/A_(b) (https://b.de/A_(b)).",
        {"https://b.de/A_(b)", "https://b.de/A_(b)"});
    row("own quotes", "https://b.de/?a=\"1\"", {"https://b.de/?a=\"1\""});
    row("lines", "www.b.de\r\n\r\n  www.c.de", {"http://www.b.de", "http://www.c.de"});
    row("markup", "<b>&amp;</b> \"a\" 'b' <www.b.de>", {"http://www.b.de"});
    row("signs only", "... (!) \" ", {});
}

void TestMessages::links()
{
    QFETCH(QString, text);
    QTextDocument document;
    document.setHtml(richMessage(text));
    QCOMPARE(document.toPlainText(), QString(text).remove('\r'));
    QStringList targets;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            if (fragment.fragment().charFormat().isAnchor())
                targets.append(fragment.fragment().charFormat().anchorHref());
        }
    }
    QTEST(targets, "targets");
}

void TestMessages::init()
{
    const QByteArray test = QTest::currentTestFunction();
    if (test == "length" || test == "links")
        return;
    CommonUtils::SetSettings("callui", "callvoice", "1");
    simulate(V2 + Three);
    start();
    QTRY_VERIFY_WITH_TIMEOUT(Startup::GetPluginContainer()->IsPluginsConfigInitialized() && owner("Ctrl+D"),
                             LongestWait); // what the modem brings
    QTRY_COMPARE_WITH_TIMEOUT(rows().size(), 2, LongestWait);
}

QStringList TestMessages::rows(int role) const
{
    QStringList texts;
    const QAbstractItemModel* const model = list() ? list()->model() : nullptr;
    for (int row = 0; model && row < model->rowCount(); ++row)
        texts.append(model->index(row, 0).data(role).toString());
    return texts;
}

void TestMessages::click(const char* shortcut) const
{
    QVERIFY(QMetaObject::invokeMethod(owner(shortcut), "click"));
}

template <typename Content>
ExtendDialog* TestMessages::dialog() const
{
    for (ExtendDialog* dialog : window()->findChildren<ExtendDialog*>()) {
        if (dialog->isVisible() && dialog->findChild<Content*>())
            return dialog;
    }
    return nullptr;
}

bool TestMessages::says(const QString& words) const
{
    const auto labels = window()->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
        return label->isVisible() && label->text().contains(words);
    });
}

void TestMessages::answer(const QString& button)
{
    const QPointer<DkMessageBox> question = window()->findChild<DkMessageBox*>();
    QVERIFY(question);
    for (QAbstractButton* choice : question->buttons()) {
        if (choice->text() == button)
            choice->click();
    }
    QTRY_VERIFY_WITH_TIMEOUT(!question, LongestWait);
}

void TestMessages::use(const QByteArray& modem)
{
    const QByteArray sign = "use" + QByteArray::number(++m_uses);
    simulate(modem + Three + "[message " + sign +
             "]\nmodem=M\nsender=Dora\ntime=2024-03-01T08:01:00\ntext=" + sign + '\n');
    QTRY_VERIFY_WITH_TIMEOUT(rows(TextRole).contains(sign), LongestWait);
}

ExtendDialog* TestMessages::compose(const char* shortcut) const
{
    QMetaObject::invokeMethod(owner(shortcut), "click");
    ExtendDialog* const window = dialog<QPlainTextEdit>();
    const auto isActive = [window] { // its shortcuts need that
        return window && QApplication::activeWindow() == window;
    };
    return QTest::qWaitFor(isActive, LongestWait) ? window : nullptr;
}

/// The spellings of a number are one conversation; the newest is first, its newest message at the end.
void TestMessages::conversations()
{
    QCOMPARE(rows(), QStringList({"+49(30)1", "Bank"}));
    QCOMPARE(rows(TextRole), QStringList({"And bye", "Your code"}));
    QTRY_VERIFY_WITH_TIMEOUT(thread()->toPlainText().endsWith("And bye"), LongestWait);
    QVERIFY(thread()->toPlainText().contains("Hello from Berlin"));
    QCOMPARE(rows(TimeRole).last(), QLocale("en-us").toString(QDate(2024, 3, 2), QLocale::ShortFormat));
    QVERIFY(rows(Qt::AccessibleTextRole).first().contains(QRegularExpression("\n.*2024.*\nAnd bye")));
    QTest::keyClick(thread(), Qt::Key_Up);
    click("Ctrl+O");
    const auto opened = [this] {
        return dialog<QTextBrowser>()->findChild<QTextBrowser*>()->toPlainText();
    };
    QCOMPARE(opened(), QString("Hello from Berlin"));
    dialog<QTextBrowser>()->close();
    simulate(V2 + Three + "[message 4]\nmodem=M\nsender=+49 30 1\ntime=2024-03-05T09:00:00\ntext=New\n");
    QTRY_VERIFY_WITH_TIMEOUT(thread()->toPlainText().endsWith("New"), LongestWait);
    click("Ctrl+O"); // the chosen message, although a newer one has arrived
    QCOMPARE(opened(), QString("Hello from Berlin"));
}

/// A message is read once: a text that changes in its place, which no modem does, is not noticed. Deleted ones go, and so do
/// those of a SIM.
void TestMessages::reading()
{
    const QByteArray changed = QByteArray(Three).replace("Your code", "changed");
    const QByteArray fourth = "[message 4]\nmodem=M\nsender=Dora\ntime=2024-03-04T09:00:00\ntext=New\n";
    simulate(V2 + changed + fourth);
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole), QStringList({"New", "And bye", "Your code"}), LongestWait);
    simulate(V2 + Three.left(Three.indexOf("[message 3]")) + fourth);
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole), QStringList({"New", "Your code", "Hello from Berlin"}),
                              LongestWait);
    simulate({});
    QTRY_COMPARE_WITH_TIMEOUT(rows().size(), 0, LongestWait);
    QByteArray many;
    for (int i = 0; i < 300; ++i) {
        const QByteArray name = QByteArray::number(i);
        many += "[message " + name + "]\nmodem=M\nsender=" + name + "\ntext=old\n";
    }
    simulate(V2 + many);
    QTRY_VERIFY_WITH_TIMEOUT(!rows().isEmpty(), LongestWait);
    const QByteArray otherSim = QByteArray(V2).replace("imsi=262011234567890", "imsi=262010000000000");
    simulate(otherSim + many.replace("old", "new"));
    // When the page hears of the other SIM, it has not taken all messages of the first one.
    for (int tries = 0; !attachedModems().value(0).imsi.endsWith("0000"); ++tries) {
        QVERIFY(tries < 20000);
        QTest::qSleep(1);
    }
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole).count("new"), 300, LongestWait);
}

/// Messages are unread until they have been on the screen, and that is remembered for their SIM.
void TestMessages::unread()
{
    const QByteArray otherSim = QByteArray(V2).replace("4567890", "0000000");
    simulate(otherSim + QByteArray(Three).replace("Your code", "Of the other SIM"));
    QTRY_VERIFY_WITH_TIMEOUT(rows(TextRole).contains("Of the other SIM"),
                             LongestWait); // although it has the same identifier
    QTRY_COMPARE_WITH_TIMEOUT(page()->windowTitle(), QString("Messages (3)"), LongestWait);
    QCOMPARE(rows(UnreadRole), QStringList({"2", "1"}));
    show();
    QCOMPARE(page()->windowTitle(), QString("Messages (1)"));
    end();
    start();
    QTRY_COMPARE_WITH_TIMEOUT(rows(UnreadRole), QStringList({"0", "1"}), LongestWait);
    show();
    choose(1);
    QCOMPARE(page()->windowTitle(), QString("Messages"));
    simulate(otherSim + Three + "[message 4]\nmodem=M\nsender=Bank\ntime=2024-03-04T09:00:00\ntext=New\n");
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole).first(), QString("New"), LongestWait);
    QCOMPARE(page()->windowTitle(), QString("Messages")); // it is on the screen
}

void TestMessages::searching()
{
    show();
    click("Ctrl+F");
    auto* const edit = page()->findChild<SearchLineEdit*>();
    QVERIFY(edit && edit->isVisible() && edit->hasFocus());
    for (const auto& [search, found] :
         {std::pair("bank", QStringList("Bank")), std::pair("BYE", QStringList("+49(30)1")),
          std::pair("zz", QStringList())}) {
        edit->setText(search);
        QCOMPARE(rows(), found);
    }
    edit->setText("e"); // in all three, one by one from the newest, which is the current one
    choose(0);
    QStringList visited;
    for (int hit = 0; hit < 3; ++hit) {
        press(edit, Qt::Key_N);
        visited.append(list()->currentIndex().data().toString());
    }
    QCOMPARE(visited, QStringList({"+49(30)1", "Bank", "+49(30)1"})); // and around
    QVERIFY(!thread()->extraSelections().isEmpty());
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible() && rows().size() == 2 && thread()->extraSelections().isEmpty());
}

void TestMessages::toolBar_data()
{
    const auto row =
        dataTable<QString, QString, QByteArray, QString>("callvoice", "callvideo", "gid", "buttons");
    row("calls", "1", "1", "", "Call");
    row("switched off", "0", "1", "", "");
    row("no plugin for them", "1", "1", "BW-BIZ", "");
    row("video calls", "0", "1", "NT-GOLD", "Video call");
    row("no video calls", "0", "0", "NT-GOLD", "");
}

void TestMessages::toolBar()
{
    QFETCH(QString, callvoice);
    QFETCH(QString, callvideo);
    QFETCH(QByteArray, gid);
    simulate({});
    QTRY_VERIFY_WITH_TIMEOUT(!owner("Ctrl+D") && rows().isEmpty(), LongestWait);
    CommonUtils::SetSettings("callui", "callvoice", callvoice);
    CommonUtils::SetSettings("callui", "callvideo", callvideo);
    use(V2 + "gid=" + gid + '\n');
    const auto hasButton = [this](const QString& name) {
        const auto buttons = page()->findChildren<QAbstractButton*>();
        return std::any_of(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
            return button->accessibleName() == name && button->isEnabled() && !button->icon().isNull();
        });
    };
    QVERIFY(hasButton("Reply") && hasButton("Search"));
    const auto callButtons = [&] {
        return QString(hasButton("Call") ? "Call" : "") + (hasButton("Video call") ? "Video call" : "");
    };
    QFETCH(QString, buttons);
    QTRY_COMPARE_WITH_TIMEOUT(callButtons(), buttons, LongestWait);
    choose(1); // a name cannot be called
    QVERIFY(!hasButton("Call") && !hasButton("Reply") && hasButton("Delete"));
}

void TestMessages::menu_data()
{
    const auto row = dataTable<QByteArray, QString, QString>("modem", "separator", "entries");
    row("plain", "northtel", "true", "Search - Open Reply Copy Delete");
    row("customised", "bluewave", "true", "Search - Reply Copy Delete");
    row("without the separator", "northtel", "false", "Search Open Reply Copy Delete");
}

void TestMessages::menu()
{
    QFETCH(QByteArray, modem);
    QFETCH(QString, separator);
    CommonUtils::SetSettings("messages", "searchseparator", separator);
    use(V2 + "customize=" + modem + '\n');
    const auto choose = [this](const QString& entry) {
        emit list()->customContextMenuRequested(QPoint());
        QStringList entries;
        for (const QMenu* menu : page()->findChildren<QMenu*>()) {
            for (QAction* action : menu->actions()) {
                entries.append(action->isSeparator() ? "-" : action->text().section(' ', 0, 0));
                if (action->text() == entry)
                    action->trigger();
            }
        }
        return entries.join(' ');
    };
    const QString shown = choose("Copy");
    QTEST(shown, "entries");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("And bye"));
    choose("Search");
    QVERIFY(page()->findChild<SearchLineEdit*>()->isEnabled());
}

/// What was not sent can be kept: for its recipient, and for the next new message. The window asks before it closes.
void TestMessages::drafts()
{
    CommonUtils::SetSettings("messages", "drafts",
                             R"([{"to":"+49 30 1","text":"as earlier versions kept it"}])");
    QPointer<ExtendDialog> dialog = compose("Ctrl+E");
    QVERIFY(dialog);
    QCOMPARE(field()->toPlainText(), QString("as earlier versions kept it"));
    field()->setPlainText("not yet");
    dialog->reject();
    answer("Cancel");
    QVERIFY(dialog && dialog->isVisible());
    dialog->close();
    answer("Keep draft");
    QTRY_VERIFY_WITH_TIMEOUT(!dialog, LongestWait);
    const QString kept = CommonUtils::GetUserSettings("messages", "drafts");
    QVERIFY2(QRegularExpression("^[0-9A-F]+$").match(kept).hasMatch(), qUtf8Printable(kept)); // encrypted
    for (const char* shortcut : {"Ctrl+R", "Ctrl+E"}) {
        dialog = compose(shortcut);
        QVERIFY(dialog);
        QCOMPARE(dialog->findChild<QLineEdit*>()->text(), QString("+49 30 1"));
        QCOMPARE(field()->toPlainText(), QString("not yet"));
        dialog->close();
        answer("Keep draft");
        QTRY_VERIFY_WITH_TIMEOUT(!dialog, LongestWait);
    }
    dialog = compose("Ctrl+R");
    compose("Ctrl+E"); // the same draft, so the same window
    window()->close(); // asks as well
    answer("Cancel");
    QVERIFY(window()->isVisible());
    dialog->close();
    answer("Discard");
    QTRY_VERIFY_WITH_TIMEOUT(!dialog && !this->dialog<QPlainTextEdit>(), LongestWait);
    dialog = compose("Ctrl+E");
    QCOMPARE(field()->toPlainText(), QString());
    dialog->close(); // without a question
    QTRY_VERIFY_WITH_TIMEOUT(!dialog, LongestWait);
}

void TestMessages::deleting()
{
    click("Del");
    answer("Cancel");
    click("Del");
    answer("Delete");
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole), QStringList({"Your code", "Hello from Berlin"}), LongestWait);
}

void TestMessages::failing_data()
{
    const auto row =
        dataTable<QByteArray, QByteArray, QByteArray, QString>("task", "modem", "next", "reason");
    const QByteArray offline = V2 + "failure=no-coverage\n";
    const QByteArray refused = V2 + "failure=refused\n";
    const QByteArray withoutMessages =
        "[modem S]\nmodel=Lume S1\nstate=attached\n"; // its rules unload the plugin
    row("no network", "send", offline, offline, "Not sent: No network");
    row("refused", "send", refused, refused, "Not sent: The network has refused");
    row("no modem to write with", "write", V2, {}, "There is no modem. What you write is kept");
    row("other modem", "write", V2, X5, "Choose the one to send it with");
    row("modem gone while sending", "send", Slow, {}, "The message may have been sent");
    row("no modem to delete from", "ask", V2, {}, "There is no modem. Plug one in");
    row("modem gone while deleting", "delete", Slow, {}, "Not deleted: The modem is gone");
    row("page gone while writing", "write", V2, withoutMessages, {});
    row("page gone while sending", "send", Slow, withoutMessages, {});
    row("page gone while asking", "ask", V2, withoutMessages, {});
    row("page gone while deleting", "delete", Slow, withoutMessages, {});
}

/// Failures are explained; nothing is sent or deleted. Text and page are there again with the modem.
void TestMessages::failing()
{
    QFETCH(const QByteArray, task);
    QFETCH(const QByteArray, modem);
    QFETCH(const QByteArray, next);
    QFETCH(const QString, reason);
    show();
    use(modem);
    const bool isWritten = task == "write" || task == "send";
    const QPointer<ExtendDialog> dialog = isWritten ? compose("Ctrl+R") : nullptr;
    if (isWritten) {
        dialog->findChild<QLineEdit*>()->setText("+49 30/1");
        field()->setPlainText("On my way");
        QVERIFY(says("Characters: 9 · Left: 151 · Parts: 1"));
        QVERIFY(!dialog->findChild<QComboBox*>()->isVisible()); // there is only one modem
    } else {
        click("Del");
    }
    if (task == "send")
        press(field(), Qt::Key_Return);
    QCOMPARE(says("Sending"), task == "send");
    if (task == "delete")
        answer("Delete");
    if (next != modem) // else the modem keeps its messages
        simulate(next);
    QTRY_VERIFY_WITH_TIMEOUT(reason.isEmpty() ? !owner("Ctrl+E") : says(reason), LongestWait);
    QVERIFY(!this->dialog<DkMessageBox>());
    QCOMPARE(bool(dialog), isWritten && !reason.isEmpty());
    if (task == "write" && dialog)
        press(field(), Qt::Key_Return); // in vain
    QVERIFY(!says("Sending"));
    use(V2);
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole).mid(0, 2).join("|"), QString("And bye|Your code"), LongestWait);
    QVERIFY(page()->isVisible());
    QVERIFY(task == "send" || reason.isEmpty() || !says(reason));
    if (!isWritten)
        return;
    if (!dialog)
        QVERIFY(compose("Ctrl+E"));
    QCOMPARE(field()->toPlainText(), QString("On my way"));
    press(field(), Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole).value(0), QString("You: On my way"), LongestWait);
    awaitDelivery();
    QTRY_COMPARE_WITH_TIMEOUT(CommonUtils::GetUserSettings("messages", "drafts"), QString(), LongestWait);
}

/// A reply goes out through the modem that received the message, or one that the user chooses.
void TestMessages::choosingSender()
{
    simulate(V2 + X5 + Three);
    const QPointer<ExtendDialog> dialog = compose("Ctrl+R");
    QVERIFY(dialog);
    auto* const box = dialog->findChild<QComboBox*>();
    QTRY_VERIFY_WITH_TIMEOUT(box->isVisible() && box->currentText().startsWith("Lume V2"), LongestWait);
    field()->setPlainText("On my way");
    simulate(X5);
    QTRY_COMPARE_WITH_TIMEOUT(box->currentIndex(), -1, LongestWait);
    QTest::keyClick(box, Qt::Key_Down);
    simulate(V2 + X5 + Three);
    QTRY_COMPARE_WITH_TIMEOUT(box->count(), 2, LongestWait);
    press(field(), Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(rows(TextRole).value(0), QString("You: On my way"), LongestWait);
    awaitDelivery();
    for (const Modem& modem : attachedModems())
        QCOMPARE(modemValue(modem.id, "sent-messages").isEmpty(), modem.name == "Lume V2");
}

int main(int argc, char** argv)
{
    return runTest<TestMessages>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_messages.moc"
