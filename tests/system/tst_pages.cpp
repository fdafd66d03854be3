// Every page of the application in every state of a modem. With SKYLUME_PICTURES set to a folder, their pictures are
// saved there, in the language SKYLUME_LANGUAGE; see scripts/make-pictures.
#include "DataTable.h"
#include "RunningApplication.h"
#include "common/CommonUtils.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QtTest>

#include <algorithm>

class TestPages : public RunningApplication
{
    Q_OBJECT

private slots:
    void states_data();
    void states();
    void pages_data();
    void pages();
    void cleanup() { end(); }

private:
    void open(const QByteArray& modems);
    QImage rest() const;
    void press() const;
    bool fitsSideways() const;
    void checkAndSave(const QImage& picture, const QString& name);

    QHash<QByteArray, QString> m_names; ///< of the pictures so far
};

namespace {

const QByteArray Modem = "[modem Lume V2]\nmodel=Lume V2\nport=sim2\nstate=attached\nimsi=262011234567890\n"
                         "gid=NT-GOLD\ncustomize=northtel\nnetwork=26201\nsignal=80\ntechnology=lte\n"
                         "received=188743680\nsent=9437184\nimei=001017002345678\nnumber=+491700000002\n";
const QByteArray Messages =
    "[message 1]\nmodem=Lume V2\nsender=northtel\ntime=2024-03-01T09:15:00\n"
    "text=Welcome! Questions? help@northtel.test\n"
    "[message 2]\nmodem=Lume V2\nsender=+493012345\ntime=2024-03-02T08:05:00\ntext=Hello\n";
constexpr QSize WindowSize{960, 700};

QByteArray setting(const char* name, const QByteArray& fallback)
{
    const QByteArray value = qgetenv(name);
    return value.isEmpty() ? fallback : value;
}

QByteArray bytesOf(const QImage& image)
{
    return {reinterpret_cast<const char*>(image.constBits()), int(image.sizeInBytes())};
}

} // namespace

/// Starts the application and waits until the modem's pages are there.
void TestPages::open(const QByteArray& modems)
{
    simulate(modems);
    start();
    QVERIFY(window());
    window()->resize(WindowSize);
    auto* const sideBar = window()->findChild<QListWidget*>();
    QVERIFY(sideBar);
    sideBar->setFocus();
}

/// The window as soon as it no longer changes.
QImage TestPages::rest() const
{
    QImage last;
    const auto isAtRest = [this, &last] {
        const QImage before = last;
        last = window()->grab().toImage();
        return before == last;
    };
    for (int looks = 0; looks < 3; ++looks) { // what a modem reports comes in several steps
        QTest::qWait(100);
        Q_UNUSED(QTest::qWaitFor(isAtRest, 3000)) // some pages count seconds
    }
    return last;
}

void TestPages::states_data()
{
    const auto row = dataTable<QByteArray, bool>("modem", "press");
    row("connected", Modem, false);
    row("no modem", "", false);
    row("refused", QByteArray(Modem).replace("=attached", "=rejected"), false);
    row("failed", QByteArray(Modem).replace("=attached", "=failed"), false);
    row("no SIM", Modem + "sim=absent\n", false);
    row("locked", Modem + "sim=pin\n", false);
    row("PUK", Modem + "sim=puk\n", false);
    row("blocked", Modem + "sim=blocked\n", false);
    row("searching", Modem + "connection=disconnected\nregistration=searching\n", false);
    row("denied", Modem + "connection=disconnected\nregistration=denied\n", false);
    row("disconnected", Modem + "connection=disconnected\n", false);
    row("not connected", Modem + "connection=disconnected\nrequest-time=1\nfailure=refused\n", true);
    row("connecting", Modem + "connection=disconnected\nrequest-time=59999\n", true);
    row("two modems", Modem + "[modem Lume S1]\nmodel=Lume S1\nstate=attached\nnetwork=00101\n", false);
}

/// Clicks the button that the first page offers.
void TestPages::press() const
{
    const auto* const pages = window()->findChild<QStackedWidget*>();
    const auto buttons = pages->currentWidget()->findChildren<QPushButton*>();
    const auto isOn = [](const QPushButton* button) {
        return button->isVisible() && button->isEnabled();
    };
    const auto button = std::find_if(buttons.begin(), buttons.end(), isOn);
    QVERIFY(button != buttons.end());
    (*button)->click();
}

/// No two pictures are the same.
void TestPages::checkAndSave(const QImage& picture, const QString& name)
{
    QString& known = m_names[bytesOf(picture)];
    QVERIFY2(known.isEmpty(), qUtf8Printable(name + " looks like " + known));
    known = name;
    const QString folder = qEnvironmentVariable("SKYLUME_PICTURES");
    if (!folder.isEmpty())
        QVERIFY2(picture.save(folder + '/' + name + ".png"), qUtf8Printable(folder));
}

/// Whether nothing is hidden at the side of the current page.
bool TestPages::fitsSideways() const
{
    const auto* const page = window()->findChild<QStackedWidget*>()->currentWidget();
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(page);
    return area && area->horizontalScrollBar()->maximum() == 0;
}

void TestPages::states()
{
    QFETCH(QByteArray, modem);
    QFETCH(bool, press);
    open(modem);
    QImage picture = rest();
    if (press) {
        this->press();
        picture = rest();
    }
    checkAndSave(picture, QLatin1String("state ") + QTest::currentDataTag());
    window()->resize(window()->minimumSize());
    for (const auto* button : window()->findChildren<QPushButton*>())
        if (button->parent()->inherits("StatePanel"))
            QTRY_COMPARE(button->visibleRegion().boundingRect(), button->rect());
}

void TestPages::pages_data()
{
    const auto row = dataTable<QByteArray>("skin");
    row("usual", "");
    row("compact", "Blue");
    row("compact, dark", "Graphite");
}

void TestPages::pages()
{
    QFETCH(QByteArray, skin);
    open(Modem + Messages);
    QTRY_VERIFY(owner("Ctrl+O")); // the pages of the modem are there
    CommonUtils::SetSettings("MiniSkin", "Name", skin);
    if (!skin.isEmpty())
        QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
    auto* const sideBar = window()->findChild<QListWidget*>();
    for (int row = 0; row < sideBar->count(); ++row) {
        sideBar->setCurrentRow(row);
        const QString name = QString("page %1, %2").arg(row + 1).arg(QTest::currentDataTag());
        checkAndSave(rest(), name);
        QVERIFY2(fitsSideways(), qUtf8Printable(name));
    }
    if (!skin.isEmpty())
        QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
}

int main(int argc, char** argv)
{
    const TestHome home("[language]\nactive=_" + setting("SKYLUME_LANGUAGE", "en-us") + '\n');
    QApplication application(argc, argv);
    application.setCursorFlashTime(0);
    TestPages test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pages.moc"
