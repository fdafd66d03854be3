// Writing messages: drafts, failures and the choice of a modem.
#include "DataTable.h"
#include "MessagesTest.h"
#include "support/Modems.h"

class TestCompose : public MessagesTest
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }
    void drafts();
    void failing_data();
    void failing();
    void choosingSender();

private:
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
        const auto isReady = [] {
            return field() && QApplication::activeWindow() == field()->window();
        };
        return QTest::qWaitFor(isReady, LongestWait) ? field()->window() : nullptr;
    }
    static QPlainTextEdit* field() { return Part{"ComposeWindow"}.all<QPlainTextEdit>().value(0); }
};

/// What was not sent can be kept: for its recipient, and for the next new message. The window asks before it closes.
void TestCompose::drafts()
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
    dialog->findChild<QLineEdit*>()->setText("+49 30 9"); // nobody in the list
    field()->setPlainText("to you");
    dialog->close();
    answer("Keep draft");
    AWAIT(!dialog);
    QCOMPARE(rows(TextRole), QString("Draft: to you|And bye|Your code"));
    choose(0);
    QTest::keyClick(list(), Qt::Key_Return);
    AWAIT(field() && field()->toPlainText() == "to you");
    field()->clear();
    field()->window()->close(); // without a question
    AWAIT_EQUAL(rows(TextRole), QString("And bye|Your code"));
}

void TestCompose::failing_data()
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
void TestCompose::failing()
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
    QVERIFY(!Part{"DkMessageBox"}.widget());
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
void TestCompose::choosingSender()
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
    return runTest<TestCompose>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_compose.moc"
