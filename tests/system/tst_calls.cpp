// Calls and service codes in the whole application, with simulated modems.
#include "Change/Change.h"
#include "Part.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "common/CommonUtils.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStyledItemDelegate>

#include <algorithm>
#include <tuple>

namespace {

const QByteArray CallModem =
    "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\nrequest-time=20\n";
const QByteArray Offline = QByteArray(CallModem).replace("26201", "");

const char PadId[] = "70B4D2F8-5E19-4A3C-9D66-C82E0F7A5B14";
constexpr Part Pad{"DialPadPage"}, Call{"CallWindow"}, Ussd{"UssdDialog"};

QLineEdit* field(const Part& part)
{
    return part.all<QLineEdit>().value(0);
}

} // namespace

class TestCalls : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void calls();
    void dialling();
    void serviceCodes();
    void obstacles();
    void cleanupTestCase() { end(); }

private:
    static bool showPad() { return Startup::GetMainFrameService()->ShowPage(PadId) && field(Pad); }
    QAbstractButton* call() const { return qobject_cast<QAbstractButton*>(owner("Ctrl+D")); }
    bool canDial(const QString& number) const
    {
        field(Pad)->setText(number);
        return call()->isEnabled();
    }
    void use(const QByteArray& modem) const;
    void checkReasonsFit() const;
};

void TestCalls::initTestCase()
{
    simulate(CallModem);
    start();
    AWAIT(showPad()); // it comes with the modem's customisation
}

/// What the dial pad says about numbers, and why calls end.
void TestCalls::calls()
{
    QVERIFY(!call()->isEnabled() && canDial("no number"));
    call()->click();
    QVERIFY(Pad.texts().contains("This is not a telephone number."));
    QVERIFY(canDial("\u202a+49 (30)\u2013\u0661\u06623\u202c")); // copied from an Arabic document
    call()->click();
    QVERIFY(Call.texts().contains("+4930123"));
    call()->click();
    QVERIFY(Pad.texts().contains("Another call is in progress."));
    QVERIFY(!CommonUtils::MakeCall("*100#", UI_CALL_VOICE));
    const QByteArray busy = CallModem + "calls=busy\n";
    const std::tuple<QByteArray, QByteArray, const char*, const char*> rows[] = {
        // the modem before and during the call, and what the call has come to
        {busy, busy, "Dialling", "The number is busy"},
        {CallModem, Offline, "Dialling", "No network"},
        {CallModem, CallModem, "Dialling", "You hung up"},
        {CallModem, {}, "Dialling", "The modem was removed"},
        {CallModem, Offline, "In call", "No network"},
    };
    for (const auto& [before, during, state, reason] : rows) {
        delete Call.widget();
        use(before);
        QVERIFY(QTest::qWaitFor([] { return CommonUtils::MakeCall("0", UI_CALL_VOICE); }, LongestWait));
        QVERIFY(Call.says(state));
        simulate(during);
        if (before == during && before == CallModem)
            Call.button("Hang up")->click();
        QVERIFY(Call.says(reason));
    }
    checkReasonsFit();
    delete Call.widget();
}

/// Simulates a modem that is in a network, and waits until its signal, which no modem before had, shows that it has come.
void TestCalls::use(const QByteArray& modem) const
{
    static int signal = 50;
    simulate(QByteArray(modem).replace("state=", "signal=" + QByteArray::number(++signal) + "\nstate="));
    const auto isShown = [this] {
        const QVector<QWidget*> parts = Part{"StatusBar"}.all<QWidget>();
        return call() && std::any_of(parts.begin(), parts.end(), [](const QWidget* part) {
                   return part->toolTip() == QString("Signal: %1 %").arg(signal);
               });
    };
    AWAIT(isShown());
}

/// Each end of a call that was answered can be read in each language. The duration is below it.
void TestCalls::checkReasonsFit() const
{
    const auto text = [](const char* id) {
        return Change::tr(id, "CallUIPlugin");
    };
    QLabel* shown = nullptr;
    for (auto* label : Call.all<QLabel>())
        shown = label->wordWrap() ? label : shown;
    for (const char* language : {"Deutsch", "Français", "简体中文", "العربية", "עברית", "American English"}) {
        choose(language);
        QVERIFY2(shown->text().startsWith(text("IDS_CALL_NO_NETWORK") + '\n'), language);
        for (const char* reason : {"IDS_CALL_REFUSED", "IDS_CALL_NO_MODEM", "IDS_CALL_HUNG_UP"}) {
            shown->setText(text(reason) + "\n00:00:00");
            QVERIFY2(shown->heightForWidth(shown->width()) <= shown->height(), language);
        }
    }
}

/// Keys that are held down, and the numbers that were dialled last.
void TestCalls::dialling()
{
    CommonUtils::SetSettings("calls", "recent", "111 222 333 444 555 666 777 888 999 000");
    simulate("[modem S]\nmodel=Lume S1\nstate=attached\n"); // cannot call
    AWAIT(!call()); // else this could be the dial pad of the modem before
    simulate(CallModem);
    AWAIT(Pad.widget());
    QLineEdit* const number = field(Pad);
    QAbstractButton* const backspace = Pad.button("Delete the last character");
    QAbstractButton* const zero = Pad.button("0");
    for (const auto& [key, held] : {std::pair(zero, "+"), {backspace, ""}}) {
        QTest::mousePress(key, Qt::LeftButton);
        AWAIT_EQUAL(number->text(), QString(held));
        QTest::mouseRelease(key, Qt::LeftButton);
        for (QAbstractButton* clicked : {zero, Pad.button("2"), backspace})
            QTest::mouseClick(clicked, Qt::LeftButton);
        QCOMPARE(number->text(), held + QString("0"));
    }
    QTest::mouseClick(backspace, Qt::LeftButton);
    QVERIFY(!backspace->isEnabled());

    const char* const kept = "222 111 333 444 555 666 777 888 999 000";
    for (const auto& [dialled, numbers] : {std::pair("222", kept),
                                           {"**04*1234*4321*4321#", kept}, // has a PIN
                                           {"*33*0000#", kept},            // has a password
                                           {"*#33#", "*#33# 222 111 333 444 555 666 777 888 999"}}) {
        number->setText(dialled);
        call()->click();
        QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), numbers);
        QVERIFY(dialled[0] != '*' || Ussd.says("The network has refused the code"));
        delete (dialled[0] == '*' ? Ussd : Call).widget();
    }
    auto* const recent = Pad.all<QListWidget>().value(0);
    QTest::keyClick(recent, Qt::Key_Down);
    QTest::keyClick(recent, Qt::Key_Down);
    QCOMPARE(number->text(), "222");
    Pad.button("Remove")->click();
    QCOMPARE(CommonUtils::GetUserSettings("calls", "recent"), "*#33# 111 333 444 555 666 777 888 999");
    QCOMPARE(recent->currentItem()->text(), "111");
    const auto* const delegate = qobject_cast<QStyledItemDelegate*>(recent->itemDelegate());
    QCOMPARE(delegate->displayText("*#33#", {}), QString("\u2066*#33#\u2069")); // not mirrored in Arabic
}

/// What a service code is answered with, and what failures are called.
void TestCalls::serviceCodes()
{
    const QByteArray menu =
        CallModem + "[ussd *100#]\nanswer=menu\nasks=true\n[ussd *100# 1]\nanswer=5 EUR\n";
    const QByteArray slow = CallModem + "request-time=50000\n";
    const std::tuple<QByteArray, QString, QString, QString> rows[] = {
        // the modem, the code, the reply and what is shown in the end
        {menu, "*1 00#", "", "menu"}, // cancels the dialogue, so that the next one begins with the menu
        {menu, "*100#", "1\r", "5 EUR"},
        {menu, "*100#", "9\r", "The network has refused the code"},
        {menu, "#9#", "", "The network has refused the code"},
        {CallModem + "failure=no-coverage\n", "*100#", "", "No network"},
        {slow, "*100#", "", "The modem is gone"}, // another modem replaces it
    };
    for (const auto& [modem, code, reply, end] : rows) {
        use(modem);
        QVERIFY(canDial(code));
        QCOMPARE(call()->text(), "Send code");
        call()->click();
        if (modem == slow)
            simulate(QByteArray(CallModem).replace("[modem M]", "[modem N]"));
        AWAIT(reply.isEmpty() || field(Ussd));
        if (!reply.isEmpty())
            QTest::keyClicks(field(Ussd), reply);
        QVERIFY2(Ussd.says(end), qUtf8Printable(code));
        QCOMPARE(bool(field(Ussd)), end == "menu");
        delete Ussd.widget();
    }
}

/// Why the dial pad cannot be used. This operator has it without a modem, too, and has a help page.
void TestCalls::obstacles()
{
    CommonUtils::SetSettings("customize", "operator", "bluewave");
    start();
    QVERIFY(QMetaObject::invokeMethod(owner("F1"), "trigger"));
    AWAIT(Part{"HelpPage"}.widget());
    AWAIT(showPad());
    for (const auto& [modem, fault] :
         {std::pair(CallModem + "calls=none\n", "Calls are not possible with this modem."),
          {Offline, "Calls are not possible without a network."},
          {QByteArray(), "Plug in a modem to make calls."}}) {
        simulate(modem);
        QVERIFY(Pad.says(fault));
        QCOMPARE(canDial("*100#"), !modem.isEmpty());
        QVERIFY(!canDial("0") && Pad.says(fault));
    }
}

int main(int argc, char** argv)
{
    return runTest<TestCalls>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_calls.moc"
