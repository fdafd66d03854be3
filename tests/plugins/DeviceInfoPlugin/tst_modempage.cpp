// The page "Modem and SIM" in the whole application, with simulated modems.
#include "Part.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"
#include "support/DeviceEvents.h"

#include <QClipboard>
#include <QRadioButton>

#include <tuple>

namespace {

const TestHome Home("[language]\nactive=_en-us\n");

constexpr Part Page{"ModemPage"};
const QByteArray Networks = "[network 99901]\nname=Alpha\ntechnology=lte\n[network 99902]\nname=Beta\n"
                            "[network 99903]\nname=Gamma\nforbidden=true\n";

/// A modem with a SIM of this IMSI in the network Alpha.
QByteArray modem(const QByteArray& imsi, const QByteArray& lines = {})
{
    return "[modem M]\nmodel=Model\nstate=attached\nnetwork=99901\nnetwork-name=Alpha\nrequest-time=20\n"
           "imei=356938035643809\nfirmware=7.1\nnumber=+491700000123\niccid=8949555\nimsi=" +
           imsi + '\n' + lines + Networks;
}

} // namespace

class TestModemPage : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void details();
    void identity();
    void networks();
    void cleanupTestCase() { end(); }
};

void TestModemPage::initTestCase()
{
    simulate({});
    start();
    QVERIFY(Startup::GetMainFrameService()->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
    QVERIFY(Page.says("No modem attached"));
    QVERIFY(!Page.button("Copy all")->isEnabled());
}

void TestModemPage::details()
{
    const std::pair<QByteArray, QStringList> rows[] = {
        {"technology=lte\nsignal=70", {"Firmware | 7.1", "State | Ready", "LTE (4G)", "Signal | 70 %"}},
        {"message-storage=modem", {"Message storage | modem (also possible: SIM card)"}},
        {"sim=pin", {"State | Locked, asks for its PIN", "Registration | In no network"}},
        {"sim=absent", {"State | Not inserted"}},
        {"registration=denied", {"Registration | Refused"}},
    };
    for (const auto& [lines, texts] : rows) {
        simulate(modem("999011234567890", lines + '\n'));
        for (const QString& text : texts)
            QVERIFY(Page.says(text));
    }
}

/// What identifies the user is readable only while it is asked for, and the subscriber's identity not even then if
/// a rule excludes it.
void TestModemPage::identity()
{
    const QString serialNumber = "356938035643809";
    const std::pair<QByteArray, bool> rows[] = {{"262011234567890", true},
                                                {"310260123456789", false}}; // by a rule for this SIM
    for (const auto& [imsi, mayBeShown] : rows) {
        const QStringList subscriber = {"+491700000123", imsi, "8949555"};
        simulate({});
        QVERIFY(Page.says("No modem attached"));
        simulate(modem(imsi, "gid=NT-GOLD\n"));
        QTRY_VERIFY(Page.button("Show identity")->isEnabled());
        QTRY_COMPARE(Page.texts().contains("Subscriber identity"), mayBeShown);
        for (const QString& secret : subscriber + QStringList(serialNumber))
            QVERIFY2(!Page.texts().contains(secret), qPrintable(secret));
        Page.button("Cop")->click(); // "Copied" for a moment
        const QString copy = QApplication::clipboard()->text();
        QVERIFY(copy.contains("(IMEI): " + serialNumber));
        Page.button("Show identity")->click();
        QVERIFY(Page.says(serialNumber));
        for (const QString& secret : subscriber) {
            QCOMPARE(secret + Page.texts().contains(secret), secret + mayBeShown);
            QCOMPARE(secret + copy.contains(secret), secret + mayBeShown);
        }
        QWidget* const page = Page.widget();
        page->hide(); // who turns to another page wants it no more
        page->show();
        QTRY_VERIFY(!Page.texts().contains(serialNumber));
        QVERIFY(Page.button("Show identity"));
    }
}

void TestModemPage::networks()
{
    simulate(modem("999011234567890", "registration=home\n"));
    QVERIFY(Page.says("Registration | Home network"));
    Page.button("Find networks")->click();
    QVERIFY(Page.says("Looking for networks"));
    QVERIFY(!Page.button("Apply")->isEnabled());
    QVERIFY(Page.says(
        "Alpha \u00b7 LTE (4G) \u00b7 in use | Beta \u00b7 available | [Gamma \u00b7 not allowed]"));
    Page.button("Beta")->click();
    Page.button("Apply")->click();
    QVERIFY(Page.says("Name | Beta"));
    QVERIFY(Page.says("Alpha \u00b7 LTE (4G) \u00b7 available | Beta \u00b7 in use") &&
            Page.says("Choice | Manual"));
    QTRY_VERIFY(qobject_cast<QRadioButton*>(Page.button("Beta"))->isChecked());
    Page.button("Automatic")->click();
    Page.button("Apply")->click();
    QVERIFY(Page.says("Choice | Automatic") && Page.says("Name | Alpha"));

    simulate(modem("999011234567890").replace("time=20", "time=500").replace("7.1", "7.2"));
    QVERIFY(Page.says("7.2"));
    DeviceEvents events;
    QSignalSpy searches(&events, &DeviceEvents::requestEnded);
    QVERIFY(events.listen());
    Page.button("Find networks")->click();
    simulate(modem("999017777777777")); // another SIM card: nothing that is found before it is true for it
    AWAIT_EQUAL(Page.all<QRadioButton>().size(), 1);
    AWAIT_EQUAL(searches.size(), 1);
    QCOMPARE(Page.all<QRadioButton>().size(), 1);
    simulate(modem("999017777777777").replace("network=99901\n", "network-choice=manual\n"));
    QTRY_VERIFY(!Page.button("Automatic")->isChecked() && !Page.button("Apply")->isEnabled());
    simulate(modem("999017777777777", "network-choice=manual\n"));
    QTRY_VERIFY(Page.all<QRadioButton>().size() == 2 && Page.all<QRadioButton>().last()->isChecked());
    simulate(modem("999017777777777").replace(Networks, "").replace("network=99901\n", ""));
    QVERIFY(Page.says("Registration | In no network"));
    Page.button("Apply")->click();
    QVERIFY(Page.says("No network. Move to a place"));
}

QTEST_MAIN(TestModemPage)
#include "tst_modempage.moc"
