// The page "Connection" in the whole application, with simulated modems.
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include <functional>
#include <memory>
#include <tuple>

class TestConnectionPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void connecting();
    void cancelled();
    void removedMeanwhile();
    void pin();
    void puk();
    void pinDialogOpensOnce();
    void accessPoint();
    void twoModems();
    void cleanupTestCase();

private:
    std::unique_ptr<Startup> m_startup;
};

namespace {

constexpr int LongestWait = 20000; // milliseconds; any step takes much less, on a busy machine too

bool soon(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, LongestWait);
}

QString homePath(const QString& name)
{
    return QString::fromLocal8Bit(qgetenv("QRVL_USER_DIR")) + '/' + name;
}

QByteArray homeFile(const QString& name)
{
    QFile file(homePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QWidget* window()
{
    return CommonUtils::GetMainWindow();
}

/// The visible widget of a class of the plugin; null if there is none.
QWidget* part(const char* className)
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->inherits(className) && widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// The texts that can be read in a part of the window, "A | B | C"; a button that is off is in brackets.
QString textsOf(const QWidget* widget)
{
    QStringList texts;
    const auto parts = widget ? widget->findChildren<QWidget*>() : QList<QWidget*>();
    for (const QWidget* child : parts) {
        const bool isElided = child->inherits("ElidedLabel"); // its description is the full text
        const QString text = isElided ? child->accessibleDescription() : child->property("text").toString();
        if (!child->isVisibleTo(widget) || text.isEmpty() || child->inherits("QLineEdit"))
            continue;
        texts << (child->isEnabled() ? text : '[' + text + ']');
    }
    return texts.join(" | ");
}

bool state(const QString& expected)
{
    if (soon([&] { return textsOf(part("StatePanel")).startsWith(expected); }))
        return true;
    qWarning("%s", qUtf8Printable(textsOf(part("StatePanel"))));
    return false;
}

QPushButton* mainButton()
{
    return part("StatePanel")->findChild<QPushButton*>();
}

void press(const QWidget* dialog, const QString& label)
{
    const auto buttons = dialog->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == label)
            button->click();
    }
}

/// The visible fields of the dialog for PIN and PUK.
QVector<QLineEdit*> fields()
{
    QVector<QLineEdit*> shown;
    const auto all = part("PinDialog")->findChildren<QLineEdit*>();
    for (QLineEdit* field : all) {
        if (field->isVisible())
            shown.append(field);
    }
    return shown;
}

/// Types codes into the dialog and presses "Unlock".
void unlock(const QStringList& codes)
{
    const QVector<QLineEdit*> shown = fields();
    for (int i = 0; i < codes.size() && i < shown.size(); ++i)
        QTest::keyClicks(shown[i], codes[i]);
    press(part("PinDialog"), "Unlock");
}

bool dialogSays(const QString& text)
{
    if (soon([&] { return textsOf(part("PinDialog")).contains(text); }))
        return true;
    qWarning("%s", qUtf8Printable(textsOf(part("PinDialog"))));
    return false;
}

/// The section of a modem in its home network.
QByteArray modem(const QByteArray& name, const QByteArray& lines)
{
    return "[modem " + name + "]\nmodel=" + name + "\nport=" + name +
           " port\nstate=attached\nimsi=999011234567890\nnetwork=99901\nnetwork-name=Net " + name +
           "\nsignal=60\nrequest-time=20\npin=4711\npuk=87654321\nconnection=disconnected\n" + lines + '\n';
}

void simulate(const QByteArray& modems)
{
    const auto write = [&modems] {
        QSaveFile file(homePath("simulator.ini"));
        return file.open(QIODevice::WriteOnly) && file.write(modems) == modems.size() && file.commit();
    };
    QVERIFY(soon(write)); // on Windows the file cannot be replaced while the service reads it
}

/// Replaces all modems by one, and waits until the page shows its network.
bool show(const QByteArray& lines)
{
    static int number = 0;
    const QByteArray name = "Modem " + QByteArray::number(++number);
    simulate(modem(name, lines));
    return soon([&] { return textsOf(part("FactsPanel")).contains("Net " + name); });
}

} // namespace

void TestConnectionPage::initTestCase()
{
    m_startup = std::make_unique<Startup>(true);
    QVERIFY(Startup::GetMainFrameService() && window());
    QVERIFY(state("No modem | Plug in")); // the first page, and the one that is shown
    QVERIFY(textsOf(window()).contains("Demonstration"));
    QVERIFY(!mainButton()->isEnabled());
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
        QVERIFY(show(lines));
        QVERIFY(state("Not connected | The modem is ready to connect. | Connect"));
        QTest::mouseClick(mainButton(), Qt::LeftButton);
        QTest::mouseDClick(mainButton(), Qt::LeftButton);  // the second click of a double click
        QTest::mouseRelease(mainButton(), Qt::LeftButton); // cancels nothing
        QVERIFY(state(expected));
    }
    const QString facts = textsOf(part("FactsPanel"));
    for (const char* fact : {"Good (60 %)", "Roaming | No", "IP address | 10.", "\u2193 0.00 B"})
        QVERIFY2(facts.contains(fact), qUtf8Printable(facts));
    mainButton()->click();
    QVERIFY(state("Not connected | The modem is ready to connect. | Connect"));
}

void TestConnectionPage::cancelled()
{
    const QString ready = "Not connected | The modem is ready to connect. | Connect";
    const QString attempt = "Connecting\u2026 | This usually takes a few seconds. | Cancel";
    QVERIFY(show("request-time=50000"));
    QVERIFY(state(ready));
    mainButton()->click();
    QVERIFY(textsOf(part("StatePanel")).startsWith(attempt)); // at once
    simulate(homeFile("simulator.ini").replace("request-time=50000", "request-time=20"));
    mainButton()->click();
    QVERIFY(state(ready));

    // That the attempt has ended, because it was cancelled, is no failure.
    QVERIFY(show("request-time=50000"));
    mainButton()->click();
    QVERIFY(state(attempt));
    mainButton()->click();
    simulate(homeFile("simulator.ini").replace("signal=60", "signal=90"));
    QVERIFY(soon([] { return textsOf(part("FactsPanel")).contains("Excellent (90 %)"); }));
    QVERIFY(state("Disconnecting\u2026 | One moment, please. | [Disconnect]"));
}

void TestConnectionPage::removedMeanwhile()
{
    QVERIFY(show("request-time=50000"));
    mainButton()->click();
    QVERIFY(state("Connecting\u2026"));
    simulate({});
    QVERIFY(state("No modem | Plug in"));
    QVERIFY(show({}));
    QVERIFY(state("Not connected | The modem is ready to connect. | Connect"));
}

void TestConnectionPage::pin()
{
    simulate(modem("Locked 1", "sim=pin\npin-tries=3"));
    QVERIFY(dialogSays("The SIM card in Locked 1 is locked. Enter its PIN."));
    QVERIFY(dialogSays("Tries left: 3"));
    QCOMPARE(fields().size(), 1);
    QCOMPARE(fields().first()->echoMode(), QLineEdit::Password);
    QTest::keyClicks(fields().first(), "a1-2x3");
    QCOMPARE(fields().first()->text(), QString("123"));
    QVERIFY(textsOf(part("PinDialog")).contains("[Unlock]")); // too short
    unlock({"4"});
    QVERIFY(fields().first()->text().isEmpty()); // at once
    QVERIFY(dialogSays("This PIN is wrong."));
    QVERIFY(dialogSays("Tries left: 2"));
    unlock({"4711"});
    QVERIFY(soon([] { return !part("PinDialog"); }));
    QVERIFY(state("Not connected"));
}

void TestConnectionPage::puk()
{
    simulate(modem("Locked 2", "sim=pin\npin-tries=1\npuk-tries=2"));
    QVERIFY(dialogSays("The SIM card in Locked 2"));
    unlock({"0000"});
    QVERIFY(dialogSays("A wrong PIN was entered too often."));
    QVERIFY(dialogSays("Tries left: 2"));
    QCOMPARE(fields().size(), 3);
    unlock({"87654321", "1111", "2222"});
    QVERIFY(dialogSays("The two new PINs are different."));
    for (QLineEdit* field : fields())
        field->clear();
    unlock({"11111111", "1111", "1111"});
    QVERIFY(dialogSays("This PUK is wrong."));
    QVERIFY(dialogSays("Tries left: 1"));
    unlock({"87654321", "1111", "1111"});
    QVERIFY(soon([] { return !part("PinDialog"); }));
    QVERIFY(state("Not connected"));
    QVERIFY(homeFile("simulator.ini").contains("pin=1111"));

    simulate(modem("Locked 3", "sim=puk\npuk-tries=1"));
    QVERIFY(dialogSays("The SIM card in Locked 3 asks for its PUK."));
    unlock({"11111111", "1111", "1111"});
    QVERIFY(dialogSays("A wrong PUK was entered too often"));
    QVERIFY(fields().isEmpty());
    QVERIFY(state("SIM card blocked | A wrong PUK was entered too often"));
    press(part("PinDialog"), "Cancel");
    QVERIFY(soon([] { return !part("PinDialog"); }));
}

/// Who closes the dialog is left alone, but the button opens it again.
void TestConnectionPage::pinDialogOpensOnce()
{
    const QByteArray locked = modem("Locked 4", "sim=pin\npin-tries=3");
    simulate(locked);
    QVERIFY(dialogSays("Locked 4"));
    press(part("PinDialog"), "Cancel");
    QVERIFY(soon([] { return !part("PinDialog"); }));
    simulate(QByteArray(locked).replace("sim=pin\npin-tries=3", "sim=puk\npuk-tries=5"));
    QVERIFY(state("SIM card locked | A wrong PIN was entered too often. The card"));
    QVERIFY(!part("PinDialog"));
    mainButton()->click();
    QVERIFY(dialogSays("Tries left: 5"));
    simulate({}); // nothing is left to unlock
    QVERIFY(soon([] { return !part("PinDialog"); }));
}

void TestConnectionPage::accessPoint()
{
    QVERIFY(show("network=99801")); // a foreign network
    const auto open = [] {
        press(part("ConnectionPage"), "Access point\u2026");
        return QApplication::activeModalWidget();
    };
    QWidget* dialog = open();
    QVERIFY(dialog);
    QCOMPARE(dialog->findChildren<QRadioButton*>().first()->isChecked(), true); // automatic
    dialog->findChildren<QRadioButton*>().last()->click();
    const auto lines = dialog->findChildren<QLineEdit*>();
    QCOMPARE(lines.size(), 3);
    for (const auto& [field, text] :
         {std::pair(0, "my.apn"), std::pair(1, "user"), std::pair(2, "secret w\u00f6rd")})
        lines[field]->setText(text);
    dialog->findChild<QCheckBox*>()->click();
    press(dialog, "Save");
    QVERIFY(state("Not connected | The modem is in a foreign network, and you allow connections in the home "
                  "network only. | [Connect]"));
    QVERIFY(soon([] { return homeFile("settings.ini").contains("name=my.apn"); }));
    for (const char* secret : {"secret", "999011234567890"})
        QVERIFY2(!homeFile("settings.ini").contains(secret), secret);
    QVERIFY(soon([] { return !QApplication::activeModalWidget(); }));
    dialog = open();
    QVERIFY(dialog);
    QCOMPARE(dialog->findChildren<QLineEdit*>().last()->text(), QString("secret w\u00f6rd"));
    dialog->findChild<QCheckBox*>()->click();
    press(dialog, "Save");
    QVERIFY(state("Not connected | The modem is ready to connect. | Connect"));
}

/// The choice of a modem changes what the page shows and what the application is customised for.
void TestConnectionPage::twoModems()
{
    const auto hasPage = [](const QString& title) {
        return !window()->findChild<QListWidget*>()->findItems(title, Qt::MatchExactly).isEmpty();
    };
    simulate(modem("Lume V2", {}));
    QVERIFY(soon([&] { return hasPage("Dial pad"); }));
    QVERIFY(!part("ModemChooser"));
    const int headerHeight = part("HeaderBar")->height();
    simulate(modem("Lume S1", "connection=connected") + modem("Lume V2", {}));
    QVERIFY(soon([] { return part("ModemChooser") != nullptr; }));
    QCOMPARE(part("HeaderBar")->height(), headerHeight);
    const auto* const chooser = static_cast<QToolButton*>(part("ModemChooser"));
    for (const auto& [name, title, isVoice] :
         {std::tuple("Lume S1", "Connected", false), std::tuple("Lume V2", "Not connected", true)}) {
        const auto entries = chooser->menu()->actions();
        QCOMPARE(entries.size(), 2);
        const int index = isVoice ? 1 : 0;
        QVERIFY(!entries[index]->isChecked() && entries[1 - index]->isChecked());
        entries[index]->trigger();
        QVERIFY(state(title));
        QCOMPARE(chooser->text(), QString("%1 \u00b7 %1 port").arg(name));
        QVERIFY(soon([&, isWanted = isVoice] { return hasPage("Dial pad") == isWanted; }));
        QCOMPARE(CommonUtils::GetSettings("device", "lastused"), QString(name));
    }
}

void TestConnectionPage::cleanupTestCase()
{
    CommonUtils::SetShutDownFlag();
    m_startup.reset();
}

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("QRVL_USER_DIR", home.path().toLocal8Bit());
    QFile modems(home.filePath("simulator.ini"));
    if (!modems.open(QIODevice::WriteOnly))
        return EXIT_FAILURE;
    modems.close();
    QApplication application(argc, argv);
    TestConnectionPage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_connectionpage.moc"
