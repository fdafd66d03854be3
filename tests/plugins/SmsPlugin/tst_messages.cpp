// The page "Messages" as its users see it, with simulated modems.
#include "DataTable.h"
#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "MessageLength.h"
#include "MessageText.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "ToolBar/SearchLineEdit.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QtTest>

#include <qrvl.h>

class TestMessages : public RunningApplication
{
    Q_OBJECT

private slots:
    void length_data();
    void length();
    void links_data();
    void links();

    void initTestCase();
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
    void deleting();
    void sending();
    void drafts();

private:
    QAbstractItemView* list() const { return window()->findChild<QAbstractItemView*>("messageList"); }
    QTextBrowser* thread() const { return list()->parentWidget()->findChild<QTextBrowser*>(); }
    QWidget* page() const;

    /// What the rows of the list show.
    QStringList rows(int role = Qt::DisplayRole) const;

    void choose(int row) const { list()->setCurrentIndex(list()->model()->index(row, 0)); }
    void click(const char* shortcut) const;

    /// The visible window with a widget of this class; null when there is none.
    template <typename Content>
    ExtendDialog* dialog() const;

    /// Answers the question that is shown.
    void answer(const QString& button);

    /// Opens the window for writing.
    ExtendDialog* compose(const char* shortcut) const;
    static void fill(const ExtendDialog* dialog, const QString& recipient, const QString& text);
    static void press(QWidget* widget, Qt::Key key) { QTest::keyClick(widget, key, Qt::ControlModifier); }
};

namespace {

const QByteArray Modem = "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                         "request-time=1\n";
const QByteArray Three =
    "[message 1]\nmodem=M\nsender=+49 30 1\ntime=2024-03-01T09:00:00\ntext=Hello from Berlin\n"
    "[message 2]\nmodem=M\nsender=Bank\ntime=2024-03-02T09:00:00\ntext=Your code\n"
    "[message 3]\nmodem=M\nsender=+49(30)1\ntime=2024-03-03T09:00:00\ntext=And bye\n";

enum Role { TimeRole = Qt::UserRole, TextRole, UnreadRole };

QString repeated(const QString& text, int times)
{
    return text.repeated(times);
}

} // namespace

void TestMessages::length_data()
{
    const auto row = dataTable<QString, QVector<int>>("text", "length"); // characters, parts, left
    row("nothing", "", {0, 0, 160});
    row("one part", repeated("a", 160), {160, 1, 0});
    row("two parts", repeated("a", 161), {161, 2, 306 - 161});
    row("two full parts", repeated("a", 306), {306, 2, 0});
    row("three parts", repeated("a", 307), {307, 3, 152});
    row("basic table", QStringLiteral("Ñàé\n€"), {5, 1, 154});
    row("extension table", repeated(QStringLiteral("€"), 81), {81, 2, 2 * 153 - 1 - 162});
    row("undivided escape", repeated(QStringLiteral("€"), 153), {153, 3, 151});
    row("one part of UCS-2", repeated(QStringLiteral("ж"), 70), {70, 1, 0});
    row("two parts of UCS-2", repeated(QStringLiteral("ж"), 71), {71, 2, 134 - 71});
    row("mixed", repeated("a", 133) + QStringLiteral("中文"), {135, 3, 66});
    row("emoji", repeated(QStringLiteral("😀"), 35), {35, 1, 0});
    row("undivided emoji", repeated(QStringLiteral("😀"), 67), {67, 3, 65});
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
    row("full stop", "See www.b.de.", {"http://www.b.de"});
    row("brackets", "(www.b.de)", {"http://www.b.de"});
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

void TestMessages::initTestCase()
{
    qApp->setQuitOnLastWindowClosed(false);
}

void TestMessages::init()
{
    const QByteArray test = QTest::currentTestFunction();
    if (test == "length" || test == "links")
        return;
    CommonUtils::SetSettings("callui", "callvoice", "1");
    simulate(Modem + Three);
    start();
    QTRY_VERIFY(owner("Ctrl+O") && owner("Ctrl+D")); // the dial pad comes with the modem's customisation
    QTRY_COMPARE(rows().size(), 2);
}

QWidget* TestMessages::page() const
{
    QWidget* page = list();
    while (page && !page->inherits("MessagesPage"))
        page = page->parentWidget();
    return page;
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

void TestMessages::answer(const QString& button)
{
    const QPointer<DkMessageBox> question = window()->findChild<DkMessageBox*>();
    QVERIFY(question);
    for (QAbstractButton* choice : question->buttons()) {
        if (choice->text() == button)
            choice->click();
    }
    QTRY_VERIFY(!question);
}

/// The spellings of a number are one conversation; the newest is first, its newest message at the end.
void TestMessages::conversations()
{
    QCOMPARE(rows(), QStringList({"+49(30)1", "Bank"}));
    QCOMPARE(rows(TextRole), QStringList({"And bye", "Your code"}));
    QTRY_VERIFY(thread()->toPlainText().endsWith("And bye"));
    QVERIFY(thread()->toPlainText().contains("Hello from Berlin"));
    QCOMPARE(rows(TimeRole).last(), QLocale("en-us").toString(QDate(2024, 3, 2), QLocale::ShortFormat));
    QVERIFY(rows(Qt::AccessibleTextRole).first().contains(QRegularExpression("\n.*2024.*\nAnd bye")));
    QTest::keyClick(thread(), Qt::Key_Up);
    click("Ctrl+O");
    QVERIFY(dialog<QTextBrowser>());
    QTRY_COMPARE(dialog<QTextBrowser>()->findChild<QTextBrowser*>()->toPlainText(),
                 QString("Hello from Berlin"));
    dialog<QTextBrowser>()->close();
    simulate(Modem + Three + "[message 4]\nmodem=M\nsender=+49 30 1\ntime=2024-03-05T09:00:00\ntext=New\n");
    QTRY_VERIFY(thread()->toPlainText().endsWith("New"));
    click("Ctrl+O"); // the chosen message, although a newer one has arrived
    QCOMPARE(dialog<QTextBrowser>()->findChild<QTextBrowser*>()->toPlainText(), QString("Hello from Berlin"));
}

/// A message is read once: a text that changes in its place, which no modem does, is not noticed. Deleted ones go.
void TestMessages::reading()
{
    const QByteArray changed = QByteArray(Three).replace("Your code", "changed");
    const QByteArray fourth = "[message 4]\nmodem=M\nsender=Dora\ntime=2024-03-04T09:00:00\ntext=New\n";
    simulate(Modem + changed + fourth);
    QTRY_COMPARE(rows(TextRole), QStringList({"New", "And bye", "Your code"}));
    simulate(Modem + Three.left(Three.indexOf("[message 3]")) + fourth);
    QTRY_COMPARE(rows(TextRole), QStringList({"New", "Your code", "Hello from Berlin"}));
    simulate({});
    QTRY_COMPARE(rows().size(), 0);
}

/// Messages are unread until they have been on the screen, and that is remembered for their SIM.
void TestMessages::unread()
{
    const QByteArray otherSim = QByteArray(Modem).replace("4567890", "0000000");
    simulate(otherSim + QByteArray(Three).replace("Your code", "Of the other SIM"));
    QTRY_VERIFY(rows(TextRole).contains("Of the other SIM")); // although it has the same identifier
    const auto show = [] {
        Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46");
    };
    QTRY_COMPARE(page()->windowTitle(), QString("Messages (3)"));
    QCOMPARE(rows(UnreadRole), QStringList({"2", "1"}));
    show();
    QCOMPARE(page()->windowTitle(), QString("Messages (1)"));
    end();
    start();
    QTRY_COMPARE(rows(UnreadRole), QStringList({"0", "1"}));
    show();
    choose(1);
    QCOMPARE(page()->windowTitle(), QString("Messages"));
    simulate(otherSim + Three + "[message 4]\nmodem=M\nsender=Bank\ntime=2024-03-04T09:00:00\ntext=New\n");
    QTRY_COMPARE(rows(TextRole).first(), QString("New"));
    QCOMPARE(page()->windowTitle(), QString("Messages")); // it is on the screen
}

void TestMessages::searching()
{
    Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46");
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
    QTRY_VERIFY(!owner("Ctrl+D") && rows().isEmpty());
    CommonUtils::SetSettings("callui", "callvoice", callvoice);
    CommonUtils::SetSettings("callui", "callvideo", callvideo);
    simulate(Modem + "gid=" + gid + '\n' + Three);
    QTRY_COMPARE(rows().size(), 2);
    const auto hasButton = [this](const QString& name) {
        for (const QAbstractButton* button : page()->findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == name && button->isEnabled() && !button->icon().isNull())
                return true;
        }
        return false;
    };
    QVERIFY(hasButton("Reply") && hasButton("Search"));
    const auto callButtons = [&] {
        return QString(hasButton("Call") ? "Call" : "") + (hasButton("Video call") ? "Video call" : "");
    };
    QFETCH(QString, buttons);
    QTRY_COMPARE(callButtons(), buttons);
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
    simulate(Modem + "customize=" + modem + '\n' + Three);
    char name[QRVL_CUSTOMIZE_NAME_SIZE];
    QTRY_VERIFY(QRVL_DevSrv_GetCustomizeName(name) == QRVL_OK && modem == name);
    QTRY_VERIFY(rows().size() == 2 && owner("Ctrl+R"));
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

void TestMessages::deleting()
{
    click("Del");
    answer("Cancel");
    click("Del");
    answer("Delete");
    QTRY_COMPARE(rows(TextRole), QStringList({"Your code", "Hello from Berlin"}));
    click("Del");
    QVERIFY(dialog<DkMessageBox>());
    simulate("[modem S]\nmodel=Lume S1\nstate=attached\n"); // its customisation unloads the plugin
    QTRY_VERIFY(!owner("Ctrl+E"));
    QVERIFY(!dialog<DkMessageBox>());
}

ExtendDialog* TestMessages::compose(const char* shortcut) const
{
    QMetaObject::invokeMethod(owner(shortcut), "click");
    return dialog<QPlainTextEdit>();
}

void TestMessages::fill(const ExtendDialog* dialog, const QString& recipient, const QString& text)
{
    dialog->findChild<QLineEdit*>()->setText(recipient);
    dialog->findChild<QPlainTextEdit*>()->setPlainText(text);
}

/// A failure is explained in the window, which keeps the text; a message that was sent is in its conversation.
void TestMessages::sending()
{
    QPointer<ExtendDialog> dialog = compose("Ctrl+R");
    QVERIFY(dialog);
    QCOMPARE(dialog->findChild<QLineEdit*>()->text(), QString("+49(30)1"));
    fill(dialog, "+49 30/1", "On my way");
    const auto note = [&dialog] {
        QStringList texts;
        for (const QLabel* label : dialog->findChildren<QLabel*>())
            texts.append(label->text());
        return texts.join('|');
    };
    QVERIFY2(note().contains("Characters: 9 · Left: 151 · Parts: 1"), qUtf8Printable(note()));
    const auto send = [&](const QByteArray& failure) {
        // The message shows that the modem has its new values.
        simulate(Modem + "failure=" + failure + '\n' + Three + "[message of-" + failure +
                 "]\nmodem=M\nsender=Dora\ntime=2024-03-01T08:01:00\ntext=" + failure + " now\n");
        QTRY_VERIFY(rows(TextRole).contains(QString(failure + " now").trimmed()));
        press(dialog->findChild<QPlainTextEdit*>(), Qt::Key_Return);
    };
    for (const auto& [failure, words] :
         {std::pair("no-coverage", "No network"), std::pair("refused", "The network has refused")}) {
        send(failure);
        QTRY_VERIFY2(note().contains(QString("Not sent: ") + words), qUtf8Printable(note()));
        QCOMPARE(dialog->findChild<QPlainTextEdit*>()->toPlainText(), QString("On my way"));
    }
    send("");
    QTRY_VERIFY(!dialog);
    QTRY_COMPARE(rows(TextRole).mid(0, 2), QStringList({"You: On my way", "Your code"}));
    QTRY_VERIFY(thread()->toPlainText().contains("Sent") || thread()->toPlainText().contains("Delivered"));
    QVERIFY(CommonUtils::GetUserSettings("messages", "drafts") == "[]");
}

/// What was not sent can be kept: for its recipient, and for the next new message. The window asks before it closes.
void TestMessages::drafts()
{
    QPointer<ExtendDialog> dialog = compose("Ctrl+E");
    QVERIFY(dialog);
    fill(dialog, "+49 30 1", "not yet");
    dialog->reject();
    answer("Cancel");
    QVERIFY(dialog && dialog->isVisible());
    dialog->close();
    answer("Keep draft");
    QTRY_VERIFY(!dialog);
    for (const char* shortcut : {"Ctrl+R", "Ctrl+E"}) {
        dialog = compose(shortcut);
        QVERIFY(dialog);
        QCOMPARE(dialog->findChild<QLineEdit*>()->text(), QString("+49 30 1"));
        QCOMPARE(dialog->findChild<QPlainTextEdit*>()->toPlainText(), QString("not yet"));
        dialog->close();
        answer("Keep draft");
        QTRY_VERIFY(!dialog);
    }
    dialog = compose("Ctrl+R");
    window()->close(); // asks as well
    answer("Cancel");
    QVERIFY(window()->isVisible());
    dialog->close();
    answer("Discard");
    QTRY_VERIFY(!dialog);
    dialog = compose("Ctrl+E");
    QCOMPARE(dialog->findChild<QPlainTextEdit*>()->toPlainText(), QString());
    dialog->close(); // without a question
    QTRY_VERIFY(!dialog);
}

int main(int argc, char** argv)
{
    const TestHome home("[language]\nactive=_en-us\n");
    QApplication application(argc, argv);
    TestMessages test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_messages.moc"
