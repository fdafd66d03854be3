// The page "Data" and the data limit in the whole application, with simulated modems.
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "RunningApplication.h"
#include "Startup/Startup.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QRect>
#include <QSpinBox>
#include <QtTest>

#include <memory>

class TestDataPage : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void counting();
    void limit();
    void leaving();

private:
    QWidget* page() const;
    QString words() const;
};

namespace {

const QString Clsid = "C43A8D5E-07B1-4F92-86DA-3E51F9B27A60";
const QByteArray Modem = "[modem M]\nmodel=M\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                         "received=0\nsent=0\nreceive-rate=3145728\nsend-rate=1048576\n";
constexpr int LongestWait = 20000; // milliseconds

QDir folder()
{
    return {qEnvironmentVariable("QRVL_USER_DIR") + "/data-use"};
}

} // namespace

QWidget* TestDataPage::page() const
{
    for (QWidget* widget : window()->findChildren<QWidget*>())
        if (widget->inherits("DataPage"))
            return widget;
    return nullptr;
}

/// What can be read on the page.
QString TestDataPage::words() const
{
    QStringList words;
    for (const QLabel* label : page()->findChildren<QLabel*>())
        if (label->isVisible())
            words << label->text();
    return words.join('|');
}

void TestDataPage::initTestCase()
{
    qApp->setQuitOnLastWindowClosed(false);
    simulate({});
    start();
    QTRY_VERIFY_WITH_TIMEOUT(page(), LongestWait);
    QVERIFY(Startup::GetMainFrameService()->ShowPage(Clsid));
    QTRY_VERIFY(words().contains("no unlocked SIM card"));
}

/// The page counts while it is visible, with the numbers of the language.
void TestDataPage::counting()
{
    choose("Deutsch");
    simulate(Modem);
    const QRegularExpression speeds("↓ [0-9]+,[0-9]{2} MB/s[|]↑ [0-9]+,[0-9]{2}");
    QTRY_VERIFY_WITH_TIMEOUT(words().contains(speeds), LongestWait);
    QTRY_VERIFY_WITH_TIMEOUT(
        words().contains(QRegularExpression("Dieser Monat[|].*[|][1-9][0-9]*,[0-9]{2} MB")), LongestWait);
    simulate(Modem + "connection=disconnected\n");
    QTRY_VERIFY_WITH_TIMEOUT(words().contains("↓ – B/s"), LongestWait);
    QTRY_COMPARE(folder().entryList(QDir::Files).size(), 1); // written when the connection has ended
}

void TestDataPage::limit()
{
    auto* const builder =
        qobject_cast<IUIPlugin*>(Startup::GetPluginContainer()->GetPlugin(Clsid, PluginIds::SettingsPage));
    QVERIFY(builder);
    const std::unique_ptr<QWidget> settings(builder->BuildFrame(nullptr, QRect()));
    const auto numbers = settings->findChildren<QSpinBox*>();
    QCOMPARE(numbers.size(), 3);
    QVERIFY(!numbers.first()->isEnabled());
    QVERIFY(words().contains("Legen Sie in den Einstellungen ein Datenlimit"));
    settings->findChild<QCheckBox*>()->click();
    QVERIFY(numbers.first()->isEnabled());
    QVERIFY2(words().contains(QRegularExpression("MB von 10 GB \\(0 %\\)[|]Noch 10,00 GB")),
             qUtf8Printable(words()));
    settings->findChild<QComboBox*>()->setCurrentIndex(0);
    numbers.first()->setValue(1); // less than has been transferred
    QVERIFY(page()->windowTitle().startsWith("Daten ("));
    QVERIFY2(words().contains("Das Datenlimit ist aufgebraucht."), qUtf8Printable(words()));
}

/// A history names no SIM card and is kept when the application ends.
void TestDataPage::leaving()
{
    simulate(Modem);
    QTRY_VERIFY_WITH_TIMEOUT(!words().contains("↓ – B/s"), LongestWait);
    end();
    const QStringList files = folder().entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    QFile file(folder().filePath(files.first()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY(!content.contains("262011234567890"));
    QVERIFY(content.contains(QDate::currentDate().toString(Qt::ISODate).toLatin1() + ' '));
    QVERIFY(content.contains(" 2\n")); // the user has seen that the limit is reached
}

int main(int argc, char** argv)
{
    const TestHome home("[language]\nactive=_en-us\n");
    QApplication application(argc, argv);
    TestDataPage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_datapage.moc"
