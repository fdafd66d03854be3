// Every page of the application in every state of a modem. With SKYLUME_PICTURES set to a folder, their pictures are
// saved there, in the language SKYLUME_LANGUAGE; see scripts/make-pictures.
#include "DataTable.h"
#include "RunningApplication.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>

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
    void checkAndSave(const QString& name);

    QHash<QString, QImage> m_pictures; ///< so far, by name
};

namespace {

const QByteArray Modem = "[modem Lume V2]\nmodel=Lume V2\nport=sim2\nstate=attached\nimsi=262011234567890\n"
                         "gid=NT-GOLD\ncustomize=northtel\nnetwork=26201\nsignal=80\ntechnology=lte\n"
                         "received=188743680\nsent=9437184\nimei=001017002345678\nnumber=+491700000002\n";
const QByteArray Messages =
    "[message 1]\nmodem=Lume V2\nsender=northtel\ntime=2024-03-01T09:15:00\n"
    "text=Welcome! Questions? help@northtel.test\n"
    "[message 2]\nmodem=Lume V2\nsender=+493012345\ntime=2024-03-02T08:05:00\ntext=Hello\n";

} // namespace

/// Starts the application with these modems.
void TestPages::open(const QByteArray& modems)
{
    simulate(modems);
    start();
    QVERIFY(window());
    window()->resize(960, 700);
    window()->findChild<QListWidget*>()->setFocus();
}

/// Looks at the window as soon as it no longer changes. No two pictures are the same.
void TestPages::checkAndSave(const QString& name)
{
    QImage picture;
    const auto isAtRest = [this, &picture] {
        const QImage before = picture;
        picture = window()->grab().toImage();
        return before == picture;
    };
    for (int looks = 0; looks < 3; ++looks) { // what a modem reports comes in several steps
        QTest::qWait(100);
        Q_UNUSED(QTest::qWaitFor(isAtRest, 3000)) // some pages count seconds
    }
    const QString same = m_pictures.key(picture);
    QVERIFY2(same.isEmpty(), qUtf8Printable(name + " looks like " + same));
    m_pictures[name] = picture;
    const QString folder = qEnvironmentVariable("SKYLUME_PICTURES");
    if (!folder.isEmpty())
        QVERIFY2(picture.save(folder + '/' + name + ".png"), qUtf8Printable(folder));
}

void TestPages::states_data()
{
    const auto row = dataTable<QByteArray>("modem");
    row("connected", Modem);
    row("no modem", "");
    row("refused", QByteArray(Modem).replace("=attached", "=rejected"));
    row("failed", QByteArray(Modem).replace("=attached", "=failed"));
    row("no SIM", Modem + "sim=absent\n");
    row("locked", Modem + "sim=pin\n");
    row("PUK", Modem + "sim=puk\n");
    row("blocked", Modem + "sim=blocked\n");
    row("searching", Modem + "connection=disconnected\nregistration=searching\n");
    row("denied", Modem + "connection=disconnected\nregistration=denied\n");
    row("disconnected", Modem + "connection=disconnected\n");
    row("not connected", Modem + "connection=disconnected\nrequest-time=1\nfailure=refused\n");
    row("connecting", Modem + "connection=disconnected\nrequest-time=59999\n");
    row("two modems", Modem + "[modem Lume S1]\nmodel=Lume S1\nstate=attached\nnetwork=00101\n");
}

void TestPages::states()
{
    QFETCH(QByteArray, modem);
    open(modem);
    if (modem.contains("request-time")) {
        auto* const button = part("StatePanel")->findChild<QPushButton*>();
        QTRY_VERIFY(button->isEnabled());
        button->click();
    }
    checkAndSave(QLatin1String("state ") + QTest::currentDataTag());
    window()->resize(window()->minimumSize());
    for (const auto* button : window()->findChildren<QPushButton*>())
        if (button->isVisible() && button->parent()->inherits("StatePanel"))
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
    useSkin(skin);
    auto* const sideBar = window()->findChild<QListWidget*>();
    for (int row = 0; row < sideBar->count(); ++row) {
        sideBar->setCurrentRow(row);
        const QString name = QString("page %1, %2").arg(row + 1).arg(QTest::currentDataTag());
        checkAndSave(name);
        // Nothing is hidden at the side.
        auto* const page = window()->findChild<QStackedWidget*>()->currentWidget();
        QCOMPARE(qobject_cast<QAbstractScrollArea*>(page)->horizontalScrollBar()->maximum(), 0);
    }
}

int main(int argc, char** argv)
{
    const QString language = qEnvironmentVariable("SKYLUME_LANGUAGE", "en-us");
    return runTest<TestPages>(argc, argv, "[language]\nactive=_" + language.toLatin1() + '\n');
}
#include "tst_pages.moc"
