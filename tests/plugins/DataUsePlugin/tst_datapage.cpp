// The page "Data" and the data limit in the whole application, with simulated modems.
#include "Part.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QSpinBox>
#include <QTabWidget>

class TestDataPage : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void counting();
    void limit();
    void months();
    void exchangedCards();

private:
    void open();
};

namespace {

const QString Clsid = "C43A8D5E-07B1-4F92-86DA-3E51F9B27A60";
const QByteArray Modem = "[modem M]\nmodel=M\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                         "received=0\nsent=0\nreceive-rate=3145728\nsend-rate=1048576\n";
constexpr Part Page{"DataPage"};

QDir folder()
{
    return {homeFile("data-use")};
}

QString words()
{
    return Page.texts().replace(QChar::Nbsp, ' ');
}

} // namespace

void TestDataPage::open()
{
    start();
    AWAIT(Startup::GetMainFrameService()->ShowPage(Clsid) && Page.widget());
}

void TestDataPage::initTestCase()
{
    simulate({});
    open();
    QTRY_VERIFY(words().contains("no unlocked SIM card"));
}

/// The page counts while it is visible, with the numbers of the language.
void TestDataPage::counting()
{
    choose("Deutsch");
    simulate(Modem);
    const QRegularExpression speeds("↓ [0-9]+,[0-9]{2} MB/s [|] ↑ [0-9]+,[0-9]{2}");
    AWAIT(words().contains(speeds));
    AWAIT(words().contains(QRegularExpression("Dieser Monat [|] .* [|] [1-9][0-9]*,[0-9]{2} MB")));
    simulate(Modem + "connection=disconnected\n");
    AWAIT(words().contains("↓ – B/s"));
    QTRY_COMPARE(folder().entryList(QDir::Files).size(), 1); // written when the connection has ended
}

void TestDataPage::limit()
{
    QAbstractButton* const opener = Page.button("Festlegen");
    choose("Einstellungen");
    opener->click(); // chooses the page in the same dialog
    QCOMPARE(window()->findChildren<QTabWidget*>().size(), 1);
    const auto* const tabs = window()->findChild<QTabWidget*>();
    QVERIFY(tabs->isVisible());
    QWidget* const settings = tabs->currentWidget();
    const auto numbers = settings->findChildren<QSpinBox*>();
    QCOMPARE(numbers.size(), 3);
    QVERIFY(!numbers.first()->isEnabled());
    QVERIFY(words().contains("Legen Sie in den Einstellungen ein Datenlimit"));
    settings->findChild<QCheckBox*>()->click();
    QVERIFY(numbers.first()->isEnabled() && !opener->isVisible());
    // A slow machine may have counted some hundred megabytes by now.
    QVERIFY2(
        words().contains(QRegularExpression("MB von 10 GB \\([0-9] %\\) [|] Noch (10,00|9,[0-9]{2}) GB")),
        qUtf8Printable(words()));
    settings->findChild<QComboBox*>()->setCurrentIndex(0);
    numbers.first()->setValue(1); // less than has been transferred
    QVERIFY(Page.widget()->windowTitle().startsWith("Daten ("));
    QVERIFY2(words().contains("Das Datenlimit ist aufgebraucht."), qUtf8Printable(words()));
    settings->window()->close();
}

/// The buttons lead to each month in which something was transferred, and keep the focus.
void TestDataPage::months()
{
    simulate(Modem);
    AWAIT(!words().contains("↓ – B/s"));
    end(); // keeps what was counted
    const QDate today = QDate::currentDate();
    QFile file(folder().filePath(folder().entryList(QDir::Files).value(0)));
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QByteArray content = file.readAll();
    QVERIFY(content.contains(today.toString(Qt::ISODate).toLatin1() + ' '));
    QVERIFY(content.contains(" 2\n")); // the user has seen that the limit is reached
    const QDate thisMonth(today.year(), today.month(), 1);
    for (const auto& [months, bytes] : {std::pair(-1, "1572864 0"), std::pair(-2, "0 2621440")})
        file.write(thisMonth.addMonths(months).toString(Qt::ISODate).toLatin1() + ' ' + bytes + '\n');
    file.close();
    simulate(Modem + "connection=disconnected\n");
    open();
    QTRY_VERIFY(words().contains("Dieser Monat"));
    QAbstractButton* const earlier = Page.button("Voriger Monat");
    QAbstractButton* const later = Page.button("Nächster Monat");
    QVERIFY(earlier->isEnabled() && !later->isEnabled());
    earlier->setFocus();
    for (const char* sum : {": 1,50 MB", ": 2,50 MB"}) {
        QVERIFY2(!words().contains(sum), qUtf8Printable(words()));
        QTest::keyClick(earlier, Qt::Key_Return);
        QVERIFY2(words().contains(sum), qUtf8Printable(words()));
    }
    QVERIFY(!earlier->isEnabled() && later->hasFocus());
    later->click();
    QVERIFY(words().contains(": 1,50 MB") && earlier->isEnabled() && later->isEnabled());
}

/// A SIM card does not inherit what the modem has transferred with another one.
void TestDataPage::exchangedCards()
{
    for (const auto& [imsi, rate, used] :
         {std::tuple("262019", "3145728", "MB"), std::tuple("262018", "999999999", "GB"),
          std::tuple("262019", "0", "MB")}) {
        simulate(QByteArray(Modem).replace("262011", imsi).replace("3145728", rate));
        const QRegularExpression usage(QString("[|] [1-9][0-9]*,[0-9]{2} %1 von 1 MB").arg(used));
        AWAIT(words().contains(usage));
    }
    end();
}

int main(int argc, char** argv)
{
    return runTest<TestDataPage>(argc, argv, "[language]\nactive=_en-us\n");
}
#include "tst_datapage.moc"
