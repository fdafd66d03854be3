// The page "Modem and SIM" in the whole application, with simulated modems.
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <tuple>

namespace {

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
    void identity_data();
    void identity();
    void networks();
    void cleanupTestCase() { end(); }

private:
    QWidget* page() const { return m_page; }

    /// What can be read on the page, "A | B".
    QString shown() const;
    QString copied() const;
    QAbstractButton* button(const QString& label) const;
    bool shows(const QString& text) const
    {
        return QTest::qWaitFor([&] { return shown().contains(text); }, 20000);
    }

    QWidget* m_page = nullptr;
};

void TestModemPage::initTestCase()
{
    simulate({});
    start();
    QVERIFY(Startup::GetMainFrameService()->ShowPage("3D1C7E52-94AB-4F60-8E27-B06F5A9C1D38"));
    for (QWidget* widget : window()->findChildren<QWidget*>()) {
        if (widget->inherits("ModemPage"))
            m_page = widget;
    }
    QVERIFY(page());
    QTRY_VERIFY(page()->isVisible());
    QVERIFY(shows("No modem attached"));
    QVERIFY(!button("Copy all")->isEnabled());
}

QString TestModemPage::shown() const
{
    QStringList texts;
    for (const QWidget* child : page()->findChildren<QWidget*>()) {
        const QString text = child->property("text").toString();
        if (child->isVisibleTo(page()) && !text.isEmpty())
            texts << (child->isEnabled() ? text : '[' + text + ']');
    }
    return texts.join(" | ");
}

QAbstractButton* TestModemPage::button(const QString& label) const
{
    for (auto* candidate : page()->findChildren<QAbstractButton*>()) {
        if (candidate->text().startsWith(label))
            return candidate;
    }
    qFatal("There is no button %s", qPrintable(label));
}

QString TestModemPage::copied() const
{
    button("Cop")->click(); // "Copied" for a moment
    return QApplication::clipboard()->text();
}

void TestModemPage::details()
{
    const std::tuple<QByteArray, QStringList> rows[] = {
        {"technology=lte\nsignal=70", {"Firmware | 7.1", "State | Ready", "LTE (4G)", "Signal | 70 %"}},
        {"message-storage=modem", {"Message storage | modem (also possible: SIM card)"}},
        {"sim=pin", {"State | Locked, asks for its PIN", "Registration | In no network"}},
        {"sim=absent", {"State | Not inserted"}},
        {"registration=denied", {"Registration | Refused"}},
    };
    for (const auto& [lines, texts] : rows) {
        simulate(modem("999011234567890", lines + '\n'));
        for (const QString& text : texts)
            QVERIFY2(shows(text), qPrintable(text + " expected, but: " + shown()));
    }
}

void TestModemPage::identity_data()
{
    QTest::addColumn<QByteArray>("imsi");
    QTest::addColumn<bool>("mayBeShown");
    QTest::newRow("usual") << QByteArray("262011234567890") << true;
    QTest::newRow("not to be shown") << QByteArray("310260123456789") << false; // by a rule for this SIM
}

/// What identifies the user is readable only while it is asked for, and the subscriber's identity not even then if
/// a rule excludes it.
void TestModemPage::identity()
{
    QFETCH(QByteArray, imsi);
    QFETCH(bool, mayBeShown);
    const QString serialNumber = "356938035643809";
    const QStringList subscriber = {"+491700000123", imsi, "8949555"};
    simulate({});
    QVERIFY(shows("No modem attached"));
    simulate(modem(imsi, "gid=NT-GOLD\n"));
    QTRY_VERIFY(button("Show identity")->isEnabled());
    const auto hasPanel = [&] {
        return shown().contains("Subscriber identity");
    };
    QTRY_COMPARE(hasPanel(), mayBeShown);
    for (const QString& secret : subscriber + QStringList(serialNumber))
        QVERIFY2(!shown().contains(secret), qPrintable(secret));
    const QString copy = copied();
    QVERIFY(copy.contains("(IMEI): " + serialNumber));
    button("Show identity")->click();
    QVERIFY(shows(serialNumber));
    for (const QString& secret : subscriber) {
        QCOMPARE(secret + shown().contains(secret), secret + mayBeShown);
        QCOMPARE(secret + copy.contains(secret), secret + mayBeShown);
    }
    page()->hide(); // who turns to another page wants it no more
    page()->show();
    QTRY_VERIFY(!shown().contains(serialNumber));
    QVERIFY(button("Show identity"));
}

void TestModemPage::networks()
{
    simulate(modem("999011234567890", "registration=home\n"));
    QVERIFY(shows("Registration | Home network"));
    button("Find networks")->click();
    QVERIFY2(shows("Looking for networks"), qPrintable(shown()));
    QVERIFY(!button("Apply")->isEnabled());
    QVERIFY2(
        shows("Alpha \u00b7 LTE (4G) \u00b7 in use | Beta \u00b7 available | [Gamma \u00b7 not allowed]"),
        qPrintable(shown()));
    button("Beta")->click();
    button("Apply")->click();
    QVERIFY(shows("Name | Beta"));
    QVERIFY2(shows("Alpha \u00b7 LTE (4G) \u00b7 available | Beta \u00b7 in use"), qPrintable(shown()));
    QVERIFY(shows("Choice | By hand"));
    button("Automatic")->click();
    button("Apply")->click();
    QVERIFY(shows("Choice | Automatic"));
    QVERIFY(shows("Name | Alpha"));

    simulate(modem("999017777777777")); // another SIM card: what was found is no longer true
    QVERIFY(QTest::qWaitFor([this] { return page()->findChildren<QRadioButton*>().size() == 1; }, 20000));
    simulate(modem("999017777777777").replace(Networks, "").replace("network=99901\n", ""));
    QVERIFY(shows("Registration | In no network"));
    button("Apply")->click();
    QVERIFY2(shows("No network. Move to a place"), qPrintable(shown()));
}

int main(int argc, char** argv)
{
    const TestHome home("[language]\nactive=_en-us\n");
    QApplication application(argc, argv);
    TestModemPage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_modempage.moc"
