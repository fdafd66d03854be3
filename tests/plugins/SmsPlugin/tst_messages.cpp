// Reading, searching and customising on the page "Messages".
#include "DataTable.h"
#include "MessagesTest.h"
#include "ToolBar/SearchLineEdit.h"
#include "support/Customisation.h"
#include "support/Modems.h"

class TestMessages : public MessagesTest
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }
    void conversations();
    void reading();
    void unread();
    void searching();
    void narrow_data();
    void narrow();
    void customising_data();
    void customising();

private:
    /// Waits for what the device service does, while the application handles no events.
    static void sleepUntil(const std::function<bool()>& isDone)
    {
        for (QDeadlineTimer end(LongestWait); !isDone() && !end.hasExpired();)
            QTest::qSleep(1);
    }

    QString m_early; ///< the rows when some messages had been read, but not all
};

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
    QCOMPARE(Part{"MessageWindow"}.all<QTextBrowser>().value(0)->toPlainText(), QString("Hello from Berlin"));
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
            [this] { m_early = !m_early.contains('|') && says(" of 300 read") ? rows() : m_early; });
    simulate(V2 + many);
    AWAIT(m_early.startsWith("399|398"));
    simulate(OtherSim + many.replace("old", "new"));
    // When the page hears of the other SIM, it has not taken all messages of the first one.
    sleepUntil([] { return attachedModems().value(0).imsi.endsWith("0000"); });
    AWAIT_EQUAL(rows(TextRole).count("new"), 300);
}

/// Messages are unread until they have been on the screen, and that is remembered for their SIM. What is shown as the
/// application ends does not count, and a message without a time is known by its text.
void TestMessages::unread()
{
    const QByteArray undated = QByteArray(Three).replace("time=2024-03-01T09:00:00\n", "");
    simulate(OtherSim + QByteArray(undated).replace("Your code", "Of the other SIM"));
    AWAIT(rows(TextRole).contains("Of the other SIM")); // although it has the same identifier
    AWAIT_EQUAL(page()->windowTitle(), QString("Messages (3)"));
    CommonUtils::SetShutDownFlag();
    show(); // for a moment, as the pages before it go
    end();
    start();
    AWAIT_EQUAL(rows(UnreadRole), QString("2|1"));
    show();
    QCOMPARE(page()->windowTitle(), QString("Messages (1)"));
    end();
    simulate(OtherSim + QByteArray(undated).replace("[message 1]", "[message 7]").replace("Hello", "Bye"));
    start();
    AWAIT_EQUAL(rows(UnreadRole), QString("1|1"));
    show();
    choose(1);
    QCOMPARE(page()->windowTitle(), QString("Messages"));
    simulate(OtherSim + undated + message("4", "Bank", "4T09:00", "New"));
    AWAIT(rows(TextRole).startsWith("New|"));
    QCOMPARE(page()->windowTitle(), QString("Messages")); // it is on the screen
    end();
    start();
    const Customisation customisation;
    const QSignalSpy customised(&customisation, &Customisation::applied);
    simulate({}); // the modem goes before the start has ended, and so do its pages
    sleepUntil([] { return attachedModems().isEmpty(); });
    AWAIT(!customised.isEmpty() && !owner("Ctrl+D"));
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
        QVERIFY(shown() == "thread" && thread()->hasFocus() && !Part{"MessageWindow"}.widget());
        QVERIFY(rows(UnreadRole).startsWith("0|"));
        QTest::keyClick(thread(), Qt::Key_Up);
        QTest::keyClick(thread(), key, key == Qt::Key_Left ? Qt::AltModifier : Qt::NoModifier);
        QCOMPARE(shown(), QString("list")); // at once
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

int main(int argc, char** argv)
{
    return runTest<TestMessages>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_messages.moc"
