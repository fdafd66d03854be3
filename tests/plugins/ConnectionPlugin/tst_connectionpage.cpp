// The page "Connection" in the whole application, with simulated modems.
#include "Part.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "TestFiles.h"
#include "common/CommonUtils.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QToolButton>

#include <algorithm>
#include <tuple>

class TestConnectionPage : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void connecting();
    void interrupted();
    void pin();
    void puk();
    void pinDialogOpensOnce();
    void accessPoint();
    void twoModems();
    void cleanupTestCase() { end(); }

private:
    /// Replaces all modems by one, and waits until the page shows its network.
    static bool show(const QByteArray& lines);
};

namespace {

const TestHome Home;

constexpr Part Page{"ConnectionPage"}, State{"StatePanel"}, Facts{"FactsPanel"}, Dialog{"PinDialog"},
    AccessPoint{"ExtendDialog"}, Chooser{"ModemChooser"};
const QString Ready = "Not connected | The modem is ready to connect. | Connect";

/// Types codes into the dialog and presses the Return key.
void unlock(const QStringList& codes)
{
    const QVector<QLineEdit*> shown = Dialog.all<QLineEdit>();
    for (int i = 0; i < codes.size() && i < shown.size(); ++i)
        QTest::keyClicks(shown[i], codes[i]);
    QTest::keyClick(shown.last(), Qt::Key_Return);
}

/// The section of a modem in its home network.
QByteArray modem(const QByteArray& name, const QByteArray& lines)
{
    return "[modem " + name + "]\nmodel=" + name + "\nport=" + name +
           " port\nstate=attached\nimsi=999011234567890\nnetwork=99901\nnetwork-name=Net " + name +
           "\nsignal=60\nrequest-time=20\npin=4711\npuk=87654321\nconnection=disconnected\n" + lines + '\n';
}

} // namespace

bool TestConnectionPage::show(const QByteArray& lines)
{
    static int number = 0;
    const QByteArray name = "Modem " + QByteArray::number(++number);
    simulate(modem(name, lines));
    return Facts.says("Net " + name);
}

void TestConnectionPage::initTestCase()
{
    simulate({});
    start();
    QVERIFY(window());
    QVERIFY(State.says("No modem | Plug in")); // the first page, and the one that is shown
    QVERIFY(Page.texts().contains("Demonstration"));
    QVERIFY(!State.texts().contains("Help")); // the operator has removed that page
}

void TestConnectionPage::connecting()
{
    const std::pair<QByteArray, QString> rows[] = {
        {"failure=refused", "The network has refused | Ask your operator"},
        {"failure=no-coverage", "No network | Move"},
        {"failure=access-point", "The access point does not work | Check the access point"},
        {"failure=timeout", "No answer | Try again"},
        {"failure=permission", "You are not allowed to do that | Ask the administrator"},
        {"failure=failed", "That did not work | Try again"},
        {"connection.address=10.0.0.7", "Connected | Since "},
    };
    for (const auto& [lines, expected] : rows) {
        QVERIFY(show(lines) && State.says(Ready));
        QTest::mouseClick(State.button(), Qt::LeftButton);
        QTest::mouseDClick(State.button(), Qt::LeftButton);  // the second click of a double click
        QTest::mouseRelease(State.button(), Qt::LeftButton); // cancels nothing
        QVERIFY(State.says(expected));
    }
    for (const char* fact : {"Fair (60\u00a0%)", "Roaming | No", "IP address | 10.", "\u2193 0.00 B"})
        QVERIFY(Facts.says(fact));
    State.button()->click();
    QVERIFY(State.says(Ready));
    window()->activateWindow();
    State.button()->setFocus();
    QTRY_VERIFY(State.button()->hasFocus());
    simulate({});
    QVERIFY(State.says("No modem | Plug in"));
    QVERIFY(!Part{"HeaderBar"}.widget()->isAncestorOf(QApplication::focusWidget())); // it has stayed near

    simulate(modem("M", "registration=searching"));
    QVERIFY(State.says("You can connect as soon as the modem has found one. | Choose network"));
    State.button()->click();
    QVERIFY(!State.widget() && Part{"ModemPage"}.widget());
    QVERIFY(Startup::GetMainFrameService()->ShowPage("227AB861-6F54-4094-857F-40B0663C5817"));
}

void TestConnectionPage::interrupted()
{
    const QString attempt = "Connecting\u2026 | This usually takes a few seconds. | Cancel";
    QVERIFY(show("request-time=50000") && State.says(Ready));
    State.button()->click();
    QVERIFY(State.texts().contains(attempt)); // at once
    simulate(contentOf(homeFile("simulator.ini")).replace("request-time=50000", "request-time=20"));
    State.button()->click();
    QVERIFY(State.says(Ready));

    // That the attempt has ended, because it was cancelled, is no failure.
    QVERIFY(show("request-time=50000"));
    State.button()->click();
    QVERIFY(State.says(attempt));
    State.button()->click();
    simulate(contentOf(homeFile("simulator.ini")).replace("signal=60", "signal=90"));
    QVERIFY(Facts.says("Excellent (90\u00a0%)"));
    QVERIFY(State.says("Disconnecting\u2026 | One moment, please. | [Disconnect]"));

    // The modem is removed meanwhile.
    QVERIFY(show("request-time=50000"));
    State.button()->click();
    QVERIFY(State.says("Connecting\u2026"));
    simulate({});
    QVERIFY(State.says("No modem | Plug in"));
    QVERIFY(show({}) && State.says(Ready));
}

void TestConnectionPage::pin()
{
    simulate(modem("Locked 1", "sim=pin\npin-tries=3"));
    QVERIFY(Dialog.says("The SIM card in Locked 1 is locked. Enter its PIN.") &&
            Dialog.says("Tries left: 3"));
    QCOMPARE(Dialog.all<QLineEdit>().size(), 1);
    QCOMPARE(Dialog.all<QLineEdit>().first()->echoMode(), QLineEdit::Password);
    QTest::keyClicks(Dialog.all<QLineEdit>().first(), "a1-2x3");
    QCOMPARE(Dialog.all<QLineEdit>().first()->text(), QString("123"));
    QVERIFY(Dialog.texts().contains("[Unlock]")); // too short
    unlock({"4"});
    QVERIFY(Dialog.all<QLineEdit>().first()->text().isEmpty()); // at once
    QVERIFY(Dialog.says("This PIN is wrong.") && Dialog.says("Tries left: 2"));
    unlock({"4711"});
    AWAIT(!Dialog.widget());
    QVERIFY(State.says("Not connected"));
}

void TestConnectionPage::puk()
{
    simulate(modem("Locked 2", "sim=pin\npin-tries=1\npuk-tries=2"));
    QVERIFY(Dialog.says("The SIM card in Locked 2"));
    unlock({"0000"});
    QVERIFY(Dialog.says("A wrong PIN was entered too often.") && Dialog.says("Tries left: 2"));
    QCOMPARE(Dialog.all<QLineEdit>().size(), 3);
    unlock({"87654321", "1111", "2222"});
    QVERIFY(Dialog.says("The two new PINs are different."));
    for (QLineEdit* field : Dialog.all<QLineEdit>())
        field->clear();
    unlock({"11111111", "1111", "1111"});
    QVERIFY(Dialog.says("This PUK is wrong.") && Dialog.says("Tries left: 1"));
    unlock({"87654321", "1111", "1111"});
    AWAIT(!Dialog.widget());
    QVERIFY(State.says("Not connected"));
    QVERIFY(contentOf(homeFile("simulator.ini")).contains("pin=1111"));

    simulate(modem("Locked 3", "sim=puk\npuk-tries=1"));
    QVERIFY(Dialog.says("The SIM card in Locked 3 asks for its PUK."));
    unlock({"11111111", "1111", "1111"});
    QVERIFY(Dialog.says("A wrong PUK was entered too often"));
    QVERIFY(Dialog.all<QLineEdit>().isEmpty());
    QVERIFY(State.says("SIM card blocked | A wrong PUK was entered too often"));
    Dialog.button("Cancel")->click();
    AWAIT(!Dialog.widget());
}

/// Who closes the dialog is left alone, but the button opens it again.
void TestConnectionPage::pinDialogOpensOnce()
{
    simulate(modem("Locked 4", "sim=pin\npin-tries=3"));
    QVERIFY(Dialog.says("Locked 4"));
    Dialog.button("Cancel")->click();
    AWAIT(!Dialog.widget());
    simulate(contentOf(homeFile("simulator.ini")).replace("sim=pin\npin-tries=3", "sim=puk\npuk-tries=5"));
    QVERIFY(State.says("SIM card locked | A wrong PIN was entered too often. The card"));
    QVERIFY(!Dialog.widget());
    State.button()->click();
    QVERIFY(Dialog.says("Tries left: 5"));
    simulate({}); // nothing is left to unlock
    AWAIT(!Dialog.widget());
    window()->hide();
    simulate(modem("Locked 5", "sim=pin\n"));
    const auto labels = part("HeaderBar")->findChildren<QLabel*>();
    AWAIT(std::any_of(labels.begin(), labels.end(),
                      [](const QLabel* label) { return label->text() == "Locked 5"; }));
    QVERIFY(Startup::GetMainFrameService()->ShowPage("227AB861-6F54-4094-857F-40B0663C5817"));
    QVERIFY(Dialog.says("Locked 5"));
    QTRY_COMPARE(QApplication::activeWindow(), Dialog.widget()); // in front of the main window
    Dialog.button("Cancel")->click();
}

void TestConnectionPage::accessPoint()
{
    QVERIFY(show("network=99801")); // a foreign network
    Page.button("Access point\u2026")->click();
    QVERIFY(AccessPoint.button("Choose automatically")->isChecked());
    AccessPoint.button("Use these settings")->click();
    const auto fields = AccessPoint.all<QLineEdit>();
    QCOMPARE(fields.size(), 3);
    fields[0]->setText("my.apn");
    fields[1]->setText("user");
    fields[2]->setText("secret w\u00f6rd");
    AccessPoint.button("Connect in the home network only")->click();
    AccessPoint.button("Save")->click();
    QVERIFY(State.says("Not connected | The modem is in a foreign network, and you allow connections in the "
                       "home network only. | Allow roaming"));
    QVERIFY(Startup::GetMainFrameService()->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
    choose("Connect"); // in the notification area; the page says why that is not possible
    QVERIFY(State.widget());
    AWAIT(contentOf(homeFile("settings.ini")).contains("name=my.apn"));
    for (const char* secret : {"secret", "999011234567890"})
        QVERIFY2(!contentOf(homeFile("settings.ini")).contains(secret), secret);
    AWAIT(!AccessPoint.widget());
    Page.button("Access point\u2026")->click();
    AccessPoint.button("Connect in the home network only")->click();
    QTest::keyClick(AccessPoint.button("Cancel"), Qt::Key_Return); // changes nothing
    AWAIT(!AccessPoint.widget());
    Page.button("Access point\u2026")->click();
    QCOMPARE(AccessPoint.all<QLineEdit>().last()->text(), QString("secret w\u00f6rd"));
    AccessPoint.button("Connect in the home network only")->click();
    AccessPoint.button("Save")->click();
    QVERIFY(State.says(Ready));
}

/// The choice of a modem changes what the page shows and what the application is customised for.
void TestConnectionPage::twoModems()
{
    const auto hasPage = [this](const QString& title) {
        return !window()->findChild<QListWidget*>()->findItems(title, Qt::MatchExactly).isEmpty();
    };
    simulate(modem("Lume V2", {}));
    AWAIT(hasPage("Dial pad"));
    QVERIFY(!Chooser.widget());
    const int headerHeight = Part{"HeaderBar"}.widget()->height();
    simulate(modem("Lume S1", "connection=connected") + modem("Lume V2", {}));
    AWAIT(Chooser.widget());
    QCOMPARE(Part{"HeaderBar"}.widget()->height(), headerHeight);
    const auto* const chooser = static_cast<QToolButton*>(Chooser.widget());
    for (const auto& [name, title, isVoice] :
         {std::tuple("Lume S1", "Connected", false), std::tuple("Lume V2", "Not connected", true)}) {
        const auto entries = chooser->menu()->actions();
        QCOMPARE(entries.size(), 2);
        QVERIFY(!entries[isVoice]->isChecked() && entries[!isVoice]->isChecked());
        entries[isVoice]->trigger();
        QVERIFY(State.says(title));
        QCOMPARE(chooser->text(), QString("%1 \u00b7 %1 port").arg(name));
        AWAIT_EQUAL(hasPage("Dial pad"), isVoice);
        QCOMPARE(CommonUtils::GetSettings("device", "lastused"), QString(name));
    }
}

QTEST_MAIN(TestConnectionPage)
#include "tst_connectionpage.moc"
