// What the application shows: every page in every state of a modem, and every dialog, all of which can be read. With
// SKYLUME_PICTURES set to a folder, this is done in all looks, in the language SKYLUME_LANGUAGE, and pictures are saved
// there; see scripts/make-pictures.
#include "Change/Change.h"
#include "DataTable.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>

#include <functional>

class TestPages : public RunningApplication
{
    Q_OBJECT

private slots:
    void pages_data();
    void pages();
    void dialogs_data();
    void dialogs();
    void cleanupTestCase() { end(); }

private:
    void open(const QByteArray& modems, const QString& language);
    QObject* mainFrame() const { return dynamic_cast<QObject*>(Startup::GetMainFrameService()); }
    void press(QWidget* place, const char* plugin, const char* id) const;
    void checkState();
    void inLooks(bool all, const std::function<void(const QString& look)>& show);
    void saveAndCheck(QWidget* shown, const QWidget* part, const QString& name) const;

    const QString m_folder = qEnvironmentVariable("SKYLUME_PICTURES");
    const QString m_language = qEnvironmentVariable("SKYLUME_LANGUAGE", "en-us");
    QByteArray m_running;              ///< what the application was started with
    QHash<QString, QImage> m_pictures; ///< of states so far, by name
};

namespace {

const QByteArray Modem = "[modem Lume V2]\nmodel=Lume V2\nport=sim2\nstate=attached\nimsi=262011234567890\n"
                         "gid=NT-GOLD\ncustomize=northtel\nnetwork=26201\nsignal=80\ntechnology=lte\n"
                         "received=188743680\nsent=9437184\nimei=001017002345678\nnumber=+491700000002\n";
const QByteArray Messages =
    "[message 1]\nmodem=Lume V2\nsender=northtel\ntime=2024-03-01T09:15:00\n"
    "text=Welcome! Questions? help@northtel.test\n"
    "[message 2]\nmodem=Lume V2\nsender=+493012345\ntime=2024-03-02T08:05:00\ntext=Hello\n";
const QByteArray Code = "[ussd *100#]\nanswer=1: balance\\n2: data left\nasks=true\n";
const QByteArray Network = "[network 26298]\nname=Lumenet\ntechnology=umts\n";
constexpr int LongestWait = 20000; // milliseconds

bool isShown(const QString& text)
{
    const QWidgetList all = QApplication::allWidgets();
    return std::any_of(all.begin(), all.end(), [&text](const QWidget* widget) {
        return widget->isVisible() && widget->property("text").toString().contains(text);
    });
}

/// The texts that need more space than they have, except those that may end with an ellipsis.
QString cutTexts(const QWidget* parent)
{
    QString cut;
    for (const QWidget* part : parent->findChildren<QWidget*>()) {
        const QString text = part->property("text").toString();
        const bool mayBeCut = part->inherits("ElidedLabel") || part->inherits("QToolButton");
        const bool isText = part->inherits("QAbstractButton") || part->inherits("QLabel");
        if (text.isEmpty() || !isText || mayBeCut || !part->isVisible())
            continue;
        const QSize needed(part->minimumSizeHint().width(),
                           part->hasHeightForWidth() ? part->heightForWidth(part->width()) : 0);
        if (needed.boundedTo(part->size()) != needed)
            QDebug(&cut) << text << "needs" << needed << "but has" << part->size() << '\n';
    }
    return cut;
}

/// A picture once nothing is going on behind the window.
QImage pictureAtRest(QWidget* widget)
{
    QImage picture;
    const auto isAtRest = [&] {
        const QImage before = picture;
        picture = widget->grab().toImage();
        CommonUtils::ThreadCountInc("test", "test");
        return CommonUtils::ThreadCountDec("test", "test") == 0 && before == picture;
    };
    Q_UNUSED(QTest::qWaitFor(isAtRest, 3000)) // some pages count seconds
    return picture;
}

} // namespace

/// Starts the application with these modems, unless it runs with them, and waits until their pages are there.
void TestPages::open(const QByteArray& modems, const QString& language)
{
    const QByteArray key = modems + language.toLatin1();
    if (m_running == key)
        return;
    m_running = key;
    CommonUtils::SetSettings("language", "active", '_' + language);
    end();
    simulate({}); // the service goes on: nothing is left of the modem before
    QTRY_VERIFY_WITH_TIMEOUT(CommonUtils::getIMSI().isEmpty(), LongestWait);
    simulate(modems);
    const bool isReady = modems.contains("=attached") && !modems.contains("\nsim=");
    QTRY_COMPARE_WITH_TIMEOUT(CommonUtils::getIMSI().isEmpty(), !isReady, LongestWait);
    start();
    QVERIFY(window());
    QSignalSpy customised(mainFrame(), SIGNAL(customised()));
    QVERIFY(customised.wait(LongestWait));
    window()->findChild<QListWidget*>()->setFocus();
}

/// Does what a string says, on a page or in the main menu.
void TestPages::press(QWidget* place, const char* plugin, const char* id) const
{
    QString label;
    QKeySequence shortcut;
    Change::tr(id, plugin, label, shortcut);
    const auto trigger = [&]() -> QObject* {
        for (QObject* object : place->findChildren<QObject*>())
            if (object->property("text") == label.trimmed() && object->property("enabled").toBool() &&
                (object->inherits("QAbstractButton") || object->inherits("QAction")))
                return object;
        return nullptr;
    };
    QTRY_VERIFY2_WITH_TIMEOUT(trigger(), id, LongestWait);
    QVERIFY(QMetaObject::invokeMethod(trigger(), trigger()->inherits("QAction") ? "trigger" : "click"));
}

/// Does something in the looks that the settings offer.
/// @param all whether in all of them; else in the usual one
void TestPages::inLooks(bool all, const std::function<void(const QString& look)>& show)
{
    QVERIFY(QMetaObject::invokeMethod(mainFrame(), "openSettings", Q_ARG(QString, QString())));
    auto* const looks = part<QListWidget>("LookChooser");
    looks->window()->hide();
    for (int row = 0; row < (all || !m_folder.isEmpty() ? looks->count() : 1); ++row) {
        looks->setCurrentRow(row);
        if (!CommonUtils::IsMiniMode())
            window()->resize(960, 700);
        show(QString("%1 %2").arg(row + 1).arg(looks->item(row)->text()));
    }
    looks->setCurrentRow(0); // for the next start
    delete looks->window();
}

/// Waits until everything on a part of a window can be read, and nothing is hidden at the side.
void TestPages::saveAndCheck(QWidget* shown, const QWidget* part, const QString& name) const
{
    if (!m_folder.isEmpty())
        QVERIFY2(pictureAtRest(shown).save(m_folder + '/' + name + ".png"), qUtf8Printable(m_folder));
    const auto* const page = qobject_cast<const QAbstractScrollArea*>(part);
    const auto isHidden = [page] {
        return page && page->horizontalScrollBar()->maximum() > 0;
    };
    QTRY_VERIFY2(!isHidden() && cutTexts(part).isEmpty(), qUtf8Printable(name + ": " + cutTexts(part)));
}

void TestPages::pages_data()
{
    const auto row = dataTable<QString, QByteArray>("language", "modem");
    const QByteArray offline = Modem + "connection=disconnected\n";
    row("no modem", m_language, "");
    row("disconnected", m_language, offline);
    row("connected", m_language, Modem + Messages);
    row("refused", m_language, QByteArray(Modem).replace("=attached", "=rejected"));
    row("failed", m_language, QByteArray(Modem).replace("=attached", "=failed"));
    row("no SIM", m_language, Modem + "sim=absent\n");
    row("locked", m_language, Modem + "sim=pin\n");
    row("PUK", m_language, Modem + "sim=puk\n");
    row("blocked", m_language, Modem + "sim=blocked\n");
    row("searching", m_language, offline + "registration=searching\n");
    row("denied", m_language, offline + "registration=denied\n");
    row("two modems", m_language, Modem + "[modem Lume S1]\nmodel=Lume S1\nstate=attached\nnetwork=00101\n");
    row("not connected", m_language, offline + "request-time=1\nfailure=refused\n");
    for (const char* other : {"de-de", "fr-fr", "zh-cn", "ar-sa", "he-il"})
        if (m_folder.isEmpty())
            row(other, other, Modem + Messages);
    row("connecting", m_language, offline + "request-time=59999\n"); // goes on in the device service
}

void TestPages::pages()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, modem);
    open(modem, language);
    if (modem.contains("request-time")) {
        auto* const button = part("StatePanel")->findChild<QPushButton*>();
        QTRY_VERIFY(button->isEnabled());
        const QString caption = button->text();
        button->click();
        if (modem.contains("failure"))
            QTRY_COMPARE(button->text(), caption); // to try again
    }
    checkState();
    inLooks(modem.contains("[message"), [this](const QString& look) {
        auto* const sideBar = window()->findChild<QListWidget*>();
        for (int row = 0; row < sideBar->count(); ++row) {
            sideBar->setCurrentRow(row);
            const QWidget* const page = window()->findChild<QStackedWidget*>()->currentWidget();
            saveAndCheck(
                window(), page,
                QString("%1, %2, %3").arg(page->metaObject()->className(), QTest::currentDataTag(), look));
        }
    });
}

/// The window looks different in each state, and shows what can be done in it even when it is small.
void TestPages::checkState()
{
    delete QApplication::activeModalWidget(); // asks for the PIN
    QImage picture;
    const auto isNew = [&] {
        picture = pictureAtRest(window());
        return m_pictures.key(picture).isEmpty();
    };
    QVERIFY2(QTest::qWaitFor(isNew, LongestWait), qUtf8Printable("looks like " + m_pictures.key(picture)));
    m_pictures[QTest::currentDataTag()] = picture;
    window()->resize(window()->minimumSize());
    for (const auto* button : part("StatePanel")->findChildren<QPushButton*>())
        if (button->isVisible())
            QTRY_COMPARE(button->visibleRegion().boundingRect(), button->rect());
}

void TestPages::dialogs_data()
{
    const auto row = dataTable<QByteArray, QByteArray, QByteArray, QByteArray, QString>(
        "modem", "page", "plugin", "label", "awaited");
    const QByteArray modem = Modem + "request-time=1\n" + Messages + Code + Network;
    row("settings", modem, "", "XFramePlugin", "IDS_MENU_SETTINGS", "");
    row("about", modem, "", "XFramePlugin", "IDS_MENU_ABOUT", "");
    row("installation", modem, "", "XFramePlugin", "IDS_MENU_INSTALLATION", "");
    row("access point", modem, "ConnectionPage", "ConnectionPlugin", "IDS_CONN_CHANGE_ACCESS_POINT", "");
    row("PIN", Modem + "sim=pin\n", "ConnectionPage", "ConnectionPlugin", "IDS_CONN_ENTER_PIN", "");
    row("PUK", Modem + "sim=puk\n", "ConnectionPage", "ConnectionPlugin", "IDS_CONN_ENTER_PUK", "");
    row("networks", modem, "ModemPage", "DeviceInfoPlugin", "IDS_MODEM_SEARCH", "Lumenet");
    row("code", modem, "DialPadPage", "DialPadPlugin", "IDS_DIAL_SEND", "1: balance");
    row("compose", modem, "MessagesPage", "SmsPlugin", "IDS_SMS_WRITE", "");
    row("message", modem, "MessagesPage", "SmsPlugin", "IDS_SMS_OPEN", "");
    row("delete", modem, "MessagesPage", "SmsPlugin", "IDS_SMS_DELETE", "");
    row("call", modem, "MessagesPage", "SmsPlugin", "IDS_SMS_CALL", "");
}

void TestPages::dialogs()
{
    QFETCH(QByteArray, modem);
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, plugin);
    QFETCH(QByteArray, label);
    QFETCH(QString, awaited);
    open(modem, m_language);
    inLooks(false, [&](const QString& look) {
        QWidget* const place = page.isEmpty() ? window() : part(page);
        if (!page.isEmpty())
            window()->findChild<QListWidget*>()->setCurrentRow(
                window()->findChild<QStackedWidget*>()->indexOf(place));
        if (page == "DialPadPage")
            place->findChild<QLineEdit*>()->setText("*100#");
        press(place, plugin, label);
        QTRY_VERIFY_WITH_TIMEOUT(isShown(awaited), LongestWait);
        QWidget* const dialog = windows("ExtendDialog").value(0);
        auto* const tabs = dialog ? dialog->findChild<QTabWidget*>() : nullptr;
        if (auto* const area = qobject_cast<QAbstractScrollArea*>(place))
            area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
        for (int tab = 0; tab < (tabs ? tabs->count() : 1); ++tab) {
            if (tabs)
                tabs->setCurrentIndex(tab);
            saveAndCheck(dialog ? dialog : window(),
                         tabs     ? tabs->currentWidget()
                         : dialog ? dialog
                                  : place,
                         QString("dialogs, %1 %2, %3").arg(QTest::currentDataTag()).arg(tab + 1).arg(look));
        }
        delete dialog;
    });
}

int main(int argc, char** argv)
{
    QGuiApplication::setApplicationDisplayName("Skylume");
    return runTest<TestPages>(argc, argv, "");
}
#include "tst_pages.moc"
