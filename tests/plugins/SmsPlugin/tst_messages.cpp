// The page "Messages" as its users see it, with simulated modems.
#include "ConversationModel.h"
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

#include <QtTest>
#include <QtWidgets>

constexpr int LongestWait = 30000; // milliseconds; any step takes much less, on a busy machine too
#define AWAIT(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, LongestWait)
#define AWAIT_EQUAL(value, expected) QTRY_COMPARE_WITH_TIMEOUT(value, expected, LongestWait)

namespace {

const QByteArray V2 = "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                      "request-time=1\n";
const QByteArray OtherSim = QByteArray(V2).replace("4567890", "0000000");
const QByteArray Slow = QByteArray(V2).replace("time=1", "time=50000"); ///< does not answer during a test
const QByteArray X5 = QByteArray(OtherSim).replace("modem M", "modem X").replace("V2", "X5");

/// A message with its time.
QByteArray message(const QByteArray& id, const QByteArray& sender, const QByteArray& time,
                   const QByteArray& text)
{
    return "[message " + id + "]\nmodem=M\nsender=" + sender + "\ntime=2024-03-0" + time +
           ":00\ntext=" + text + '\n';
}

const QByteArray First = message("1", "+49 30 1", "1T09:00", "Hello from Berlin");
const QByteArray Second = message("2", "Bank", "2T09:00", "Your code");
const QByteArray Three = First + Second + message("3", "+49(30)1", "3T09:00", "And bye");

enum Role { TimeRole = Qt::UserRole, TextRole, UnreadRole };

} // namespace

class TestMessages : public RunningApplication
{
    Q_OBJECT

private slots:
    void length_data();
    void length();
    void links_data();
    void links();
    void movedMessage();

    void init();
    void cleanup() { end(); }
    void conversations();
    void reading();
    void unread();
    void searching();
    void narrow_data();
    void narrow();
    void customising_data();
    void customising();
    void drafts();
    void failing_data();
    void failing();
    void choosingSender();

private:
    QAbstractItemView* list() const { return window()->findChild<QAbstractItemView*>("messageList"); }
    QTextBrowser* thread() const { return list()->parentWidget()->findChild<QTextBrowser*>(); }
    QAbstractScrollArea* page() const { return part<QAbstractScrollArea>("MessagesPage"); }
    static void show() { Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"); }

    /// What the rows of the list show, separated by "|".
    QString rows(int role = Qt::DisplayRole) const
    {
        QStringList texts;
        const QAbstractItemModel* const model = list() ? list()->model() : nullptr;
        for (int row = 0; model && row < model->rowCount(); ++row)
            texts.append(model->index(row, 0).data(role).toString());
        return texts.join('|');
    }

    void choose(int row) const { list()->setCurrentIndex(list()->model()->index(row, 0)); }
    void click(const char* shortcut) const { QMetaObject::invokeMethod(owner(shortcut), "click"); }

    /// The widget of this class in a dialog; null when none is visible.
    template <typename Widget>
    Widget* inDialog() const
    {
        for (Widget* widget : window()->findChildren<Widget*>())
            if (widget->isVisible() && widget->window() != window())
                return widget;
        return nullptr;
    }

    /// Whether a label of the main window or of a dialog shows these words.
    bool says(const QString& words) const
    {
        for (const auto* label : window()->findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(words))
                return true;
        return false;
    }

    /// Answers the question that is shown.
    void answer(const QString& button)
    {
        const QPointer<DkMessageBox> question = window()->findChild<DkMessageBox*>();
        QVERIFY(question);
        for (QAbstractButton* choice : question->buttons())
            if (choice->text() == button)
                choice->click();
        AWAIT(!question);
    }

    /// Simulates this modem with the three messages, and waits until another message shows that it is in use.
    void use(const QByteArray& modem)
    {
        const QByteArray sign = QByteArray::number(++m_uses);
        simulate(modem + Three + message(sign, "Dora", "1T08:" + sign, sign));
        AWAIT(rows(TextRole).endsWith(sign));
    }

    /// Sends what is written and waits until it has been delivered: then the simulator no longer changes its file.
    void send()
    {
        press(field(), Qt::Key_Return);
        AWAIT(rows(TextRole).startsWith("You: On my way|"));
        choose(0);
        AWAIT(thread()->toPlainText().contains("Delivered"));
    }

    /// Opens the window for writing and returns it when it is active for Qt, as its shortcuts need that. On Windows,
    /// isActiveWindow() is true before.
    QWidget* compose(const char* shortcut) const
    {
        click(shortcut);
        const auto isReady = [this] {
            return field() && QApplication::activeWindow() == field()->window();
        };
        return QTest::qWaitFor(isReady, LongestWait) ? field()->window() : nullptr;
    }
    QPlainTextEdit* field() const { return inDialog<QPlainTextEdit>(); }
    static void press(QWidget* widget, Qt::Key key) { QTest::keyClick(widget, key, Qt::ControlModifier); }

    int m_uses = 10;
    QString m_early; ///< the rows when some messages had been read
};

void TestMessages::length_data()
{
    const auto row = dataTable<QString, QVector<int>>("text", "length"); // characters, parts, left
    row("nothing", "", {0, 0, 160});
    row("one part", QString(160, 'a'), {160, 1, 0});
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
    row("many brackets", "www.b.de" + QString(200000, ')'),
        {"http://www.b.de"}); // as long as several messages
}

void TestMessages::links()
{
    QFETCH(QString, text);
    QTextDocument document;
    document.setHtml(richMessage(text));
    QCOMPARE(document.toPlainText(), QString(text).remove('\r'));
    QStringList targets;
    QTextCursor cursor(&document);
    while (cursor.movePosition(QTextCursor::NextCharacter))
        if (const QString target = cursor.charFormat().anchorHref();
            targets.isEmpty() || targets.last() != target)
            targets.append(target);
    targets.removeAll(QString());
    QTEST(targets, "targets");
}

/// Another message has taken the place of a known one.
void TestMessages::movedMessage()
{
    ConversationModel model;
    Message message;
    for (const char* address : {"Dora", "Bank"}) {
        message.address = address;
        model.put(Messages{message});
    }
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.rowOf("Bank"), 0);
}

void TestMessages::init()
{
    const QByteArray test = QTest::currentTestFunction();
    if (test == "length" || test == "links" || test == "movedMessage")
        return;
    CommonUtils::SetSettings("callui", "callvoice", "1");
    simulate(V2 + Three);
    start();
    AWAIT(Startup::GetPluginContainer()->IsPluginsConfigInitialized() &&
          owner("Ctrl+D"));                        // what the modem brings
    AWAIT_EQUAL(rows(), QString("+49(30)1|Bank")); // spellings of a number are one conversation
}

/// The newest conversation is first, its newest message at the end. Commands are for the message that was chosen.
void TestMessages::conversations()
{
    QCOMPARE(rows(TextRole), QString("And bye|Your code"));
    AWAIT(thread()->toPlainText().endsWith("And bye"));
    QVERIFY(rows(TimeRole).endsWith(QLocale("en-us").toString(QDate(2024, 3, 2), QLocale::ShortFormat)));
    QVERIFY(rows(Qt::AccessibleTextRole).contains(QRegularExpression("\n.*2024.*\nAnd bye")));
    press(list(), Qt::Key_C);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("And bye"));
    QTest::keyClick(thread(), Qt::Key_Up);
    simulate(V2 + Three + message("4", "+49 30 1", "5T09:00", "New"));
    AWAIT(thread()->toPlainText().endsWith("New"));
    press(thread(), Qt::Key_C);
    click("Ctrl+O");
    QCOMPARE(inDialog<QTextBrowser>()->toPlainText(), QString("Hello from Berlin"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("Hello from Berlin"));
    for (const char* choice : {"Cancel", "Delete"}) {
        click("Del");
        answer(choice);
        QTest::keyClick(thread(), Qt::Key_Down);
    }
    AWAIT(!thread()->toPlainText().contains("And bye"));
    QVERIFY(thread()->toPlainText().contains("Hello from Berlin"));
}

/// A message is read once: a text that changes in its place, which no modem does, is not noticed. Many appear little by
/// little, the newest first. Deleted ones go, and so do those of a SIM. Confirmations of delivery are noticed.
void TestMessages::reading()
{
    const QByteArray fourth = message("4", "Dora", "4T09:00", "New");
    simulate(V2 + QByteArray(Three).replace("Your code", "changed") + fourth);
    AWAIT_EQUAL(rows(TextRole), QString("New|And bye|Your code"));
    simulate(V2 + First + Second + fourth);
    AWAIT_EQUAL(rows(TextRole), QString("New|Your code|Hello from Berlin"));
    const QByteArray now = QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8();
    const QByteArray sent = "]\nmodem=M\nrecipient=Dora\ntime=" + now + "\ntext=Sent before\n[message b" +
                            "]\nmodem=M\nrecipient=Dora\ntime=" + now + "\ntext=Sent last\n";
    simulate(V2 + "[message a" + sent);
    AWAIT_EQUAL(rows(TextRole), QString("You: Sent last"));
    choose(0);
    AWAIT_EQUAL(thread()->toPlainText().count("Sent\n"), 2);
    simulate(V2 + "[message a" + QByteArray(sent).replace(0, 1, "]\nstate=delivered"));
    AWAIT(thread()->toPlainText().contains("Delivered\nSent before"));
    simulate({});
    AWAIT(rows().isEmpty());
    QByteArray many;
    for (int i = 100; i < 400; ++i)
        many += "[message " + QByteArray::number(i) + "]\nmodem=M\nsender=" + QByteArray::number(i) +
                "\ntext=old\n";
    show();
    connect(list()->model(), &QAbstractItemModel::rowsInserted, this,
            [this] { m_early = m_early.isEmpty() && says(" of 300 read") ? rows() : m_early; });
    simulate(V2 + many);
    AWAIT(m_early.startsWith("399|398"));
    simulate(OtherSim + many.replace("old", "new"));
    // When the page hears of the other SIM, it has not taken all messages of the first one.
    for (QDeadlineTimer end(LongestWait);
         !attachedModems().value(0).imsi.endsWith("0000") && !end.hasExpired();)
        QTest::qSleep(1);
    AWAIT_EQUAL(rows(TextRole).count("new"), 300);
}

/// Messages are unread until they have been on the screen, and that is remembered for their SIM.
void TestMessages::unread()
{
    simulate(OtherSim + QByteArray(Three).replace("Your code", "Of the other SIM"));
    AWAIT(rows(TextRole).contains("Of the other SIM")); // although it has the same identifier
    AWAIT_EQUAL(page()->windowTitle(), QString("Messages (3)"));
    QCOMPARE(rows(UnreadRole), QString("2|1"));
    show();
    QCOMPARE(page()->windowTitle(), QString("Messages (1)"));
    end();
    start();
    AWAIT_EQUAL(rows(UnreadRole), QString("0|1"));
    show();
    choose(1);
    QCOMPARE(page()->windowTitle(), QString("Messages"));
    simulate(OtherSim + Three + message("4", "Bank", "4T09:00", "New"));
    AWAIT(rows(TextRole).startsWith("New|"));
    QCOMPARE(page()->windowTitle(), QString("Messages")); // it is on the screen
}

void TestMessages::searching()
{
    show();
    click("Ctrl+F");
    auto* const edit = page()->findChild<SearchLineEdit*>();
    QVERIFY(edit && edit->isVisible() && edit->hasFocus());
    for (const auto& [search, found] :
         {std::pair("bank", "Bank"), std::pair("BYE", "+49(30)1"), std::pair("zz", "")}) {
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
    QCOMPARE(visited.join('|'), QString("+49(30)1|Bank|+49(30)1")); // and around
    QVERIFY(!thread()->extraSelections().isEmpty());
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible() && rows().contains('|') && thread()->extraSelections().isEmpty());
}

void TestMessages::narrow_data()
{
    const auto row = dataTable<QByteArray>("skin");
    row("usual window", "");
    row("compact window", "Graphite");
}

/// In the smallest window there is the list or the conversation, and the page does not scroll.
void TestMessages::narrow()
{
    QFETCH(QByteArray, skin);
    useSkin(skin);
    show();
    const auto resize = [this](const QSize& size) { // there may be events about earlier sizes
        AWAIT((window()->resize(size), QCoreApplication::processEvents(), window()->size() == size));
    };
    const auto shown = [this] {
        return QString(list()->isVisible() ? "list" : "") + (thread()->isVisible() ? "thread" : "");
    };
    resize(window()->minimumSize());
    AWAIT_EQUAL(shown(), QString("list"));
    list()->setFocus();
    simulate(V2 + Three + message("4", "+49 30 1", skin.isEmpty() ? "6T09:00" : "6T09:01", "New"));
    AWAIT(rows(TextRole).startsWith("New|"));
    AWAIT_EQUAL(rows(UnreadRole).left(2), QString("1|")); // although it is in the current conversation
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Left}) {
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(shown() == "thread" && thread()->hasFocus() && !inDialog<QTextBrowser>());
        QVERIFY(rows(UnreadRole).startsWith("0|"));
        QTest::keyClick(thread(), Qt::Key_Up);
        QTest::keyClick(thread(), key, key == Qt::Key_Left ? Qt::AltModifier : Qt::NoModifier);
        AWAIT_EQUAL(shown(), QString("list"));
        QVERIFY(list()->hasFocus());
        press(list(), Qt::Key_C);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("New"));
    }
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                      list()->visualRect(list()->model()->index(1, 0)).center());
    AWAIT_EQUAL(shown(), QString("thread"));
    AWAIT_EQUAL(page()->verticalScrollBar()->maximum(), 0);
    resize({960, 700});
    AWAIT_EQUAL(shown(), QString("listthread"));
    resize(window()->minimumSize());
    AWAIT_EQUAL(shown(), QString("thread"));
    simulate(V2 + First); // the conversation has gone
    AWAIT_EQUAL(shown(), QString("list"));
}

void TestMessages::customising_data()
{
    const auto row = dataTable<QString, QByteArray, QString, QString>("settings", "modem", "menu", "buttons");
    row("plain", "11y", "customize=northtel", "Search - Open Reply Copy Delete - Mark", "Call");
    row("other menu", "01y", "customize=bluewave", "Search - Reply Copy Delete - Mark", "");
    row("no plugin for calls", "11n", "gid=BW-BIZ\ncustomize=northtel",
        "Search Open Reply Copy Delete - Mark", "");
    row("video calls", "01y", "gid=NT-GOLD\ncustomize=northtel", "Search - Open Reply Copy Delete - Mark",
        "Video call");
    row("no video calls", "00y", "gid=NT-GOLD\ncustomize=northtel", "Search - Open Reply Copy Delete - Mark",
        "");
}

/// Settings, rules of the operator and the modem decide about buttons and the context menu.
void TestMessages::customising()
{
    QFETCH(const QString, settings);
    QFETCH(const QByteArray, modem);
    simulate({});
    AWAIT(!owner("Ctrl+D") && rows().isEmpty());
    CommonUtils::SetSettings("callui", "callvoice", settings[0]);
    CommonUtils::SetSettings("callui", "callvideo", settings[1]);
    CommonUtils::SetSettings("messages", "searchseparator", settings[2] == 'n' ? "false" : "true");
    use(V2 + modem + '\n');
    const auto enabled = [this](const QStringList& names) {
        QString found;
        for (const auto* button : page()->findChildren<QAbstractButton*>())
            if (names.contains(button->accessibleName()) && button->isEnabled() && !button->icon().isNull())
                found += button->accessibleName();
        return found;
    };
    QFETCH(const QString, buttons);
    AWAIT_EQUAL(enabled({"Call", "Video call"}), buttons);
    choose(1); // a name cannot be called
    QCOMPARE(enabled({"Call", "Video call", "Reply", "Delete"}), QString("Delete"));
    const auto trigger = [this](const QString& entry) {
        emit list()->customContextMenuRequested(QPoint());
        QStringList entries;
        for (const QMenu* shown : page()->findChildren<QMenu*>())
            for (QAction* action : shown->actions()) {
                entries.append(action->isSeparator() ? "-" : action->text().section(' ', 0, 0));
                if (action->text() == entry)
                    action->trigger();
            }
        return entries.join(' ');
    };
    const QString menu = trigger("Search");
    QTEST(menu, "menu");
    QVERIFY(page()->findChild<SearchLineEdit*>()->isEnabled());
    QVERIFY(page()->windowTitle() != "Messages");
    AWAIT((trigger("Mark all as read"), page()->windowTitle() == "Messages")); // once all have been read in
}

/// What was not sent can be kept: for its recipient, and for the next new message. The window asks before it closes.
void TestMessages::drafts()
{
    QPointer<QWidget> dialog = compose("Ctrl+E");
    QVERIFY(dialog);
    dialog->findChild<QLineEdit*>()->setText("+49 30 1");
    field()->setPlainText("not yet");
    QTest::keyClick(dialog, Qt::Key_Escape);
    answer("Cancel");
    QVERIFY(dialog && dialog->isVisible());
    for (const char* shortcut : {"Ctrl+R", "Ctrl+E"}) {
        dialog->close();
        answer("Keep draft");
        AWAIT(!dialog);
        QCOMPARE(rows(TextRole), QString("Draft: not yet|Your code"));
        dialog = compose(shortcut);
        QVERIFY(dialog);
        QCOMPARE(dialog->findChild<QLineEdit*>()->text(), QString("+49 30 1"));
        QCOMPARE(field()->toPlainText(), QString("not yet"));
    }
    const QString kept = CommonUtils::GetUserSettings("messages", "drafts");
    QVERIFY2(QRegularExpression("^[0-9A-F]+$").match(kept).hasMatch(), qUtf8Printable(kept)); // encrypted
    compose("Ctrl+R"); // the same draft, so the same window
    window()->close(); // asks as well
    answer("Cancel");
    QVERIFY(window()->isVisible());
    dialog->close();
    answer("Discard");
    AWAIT(!dialog && !field());
    QCOMPARE(rows(TextRole), QString("And bye|Your code"));
    dialog = compose("Ctrl+E");
    QCOMPARE(field()->toPlainText(), QString());
    dialog->close(); // without a question
    AWAIT(!dialog);
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
    const QPointer<QWidget> dialog = isWritten ? compose("Ctrl+R") : nullptr;
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
    AWAIT(reason.isEmpty() ? !owner("Ctrl+E") : says(reason));
    QVERIFY(!inDialog<DkMessageBox>());
    QCOMPARE(bool(dialog), isWritten && !reason.isEmpty());
    if (task == "write" && dialog)
        press(field(), Qt::Key_Return); // in vain
    QVERIFY(!says("Sending"));
    use(V2);
    AWAIT(rows(TextRole).startsWith((isWritten ? "Draft: On my way" : "And bye") + QString("|Your code|")));
    QVERIFY(page()->isVisible());
    QVERIFY(task == "send" || reason.isEmpty() || !says(reason));
    if (!isWritten)
        return;
    if (!dialog)
        QVERIFY(compose("Ctrl+E"));
    QCOMPARE(field()->toPlainText(), QString("On my way"));
    send();
    AWAIT_EQUAL(CommonUtils::GetUserSettings("messages", "drafts"), QString());
}

/// A reply goes out through the modem that received the message, or one that the user chooses.
void TestMessages::choosingSender()
{
    simulate(V2 + X5 + Three);
    const QPointer<QWidget> dialog = compose("Ctrl+R");
    QVERIFY(dialog);
    auto* const box = dialog->findChild<QComboBox*>();
    AWAIT(box->isVisible() && box->currentText().startsWith("Lume V2"));
    field()->setPlainText("On my way");
    simulate(X5);
    AWAIT_EQUAL(box->currentIndex(), -1);
    QTest::keyClick(box, Qt::Key_Down);
    simulate(V2 + X5 + Three);
    AWAIT_EQUAL(box->count(), 2);
    send();
    for (const Modem& modem : attachedModems())
        QCOMPARE(modemValue(modem.id, "sent-messages").isEmpty(), modem.name == "Lume V2");
}

int main(int argc, char** argv)
{
    return runTest<TestMessages>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_messages.moc"
