// What users without a mouse or without sight need: every control has a name and a role, gets the focus by the Tab
// key and shows that it has it, in all skins, on all pages and in all dialogs.
#include "RunningApplication.h"

#include "../support/DataTable.h"
#include "Contrast.h"
#include "ExtendDialog/ExtendDialog.h"
#include "TitleBar/TitleBar.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTimer>

namespace {

const QByteArray Modem =
    "[modem V]\nmodel=Lume V2\nstate=attached\nnetwork=26201\nimsi=262011234567890\ngid=NT-GOLD\n"
    "[message 1]\nmodem=V\nsender=A\ntext=see https://a.example\n";

using Interface = QAccessibleInterface;

QString describe(const QObject* object)
{
    return object ? QString(object->metaObject()->className()) + ' ' + object->objectName() : "item";
}

/// What is shown in a window and wanted, without scroll bars and separators.
QVector<Interface*> shownIn(Interface* parent, bool (*isWanted)(const Interface&))
{
    const bool isExempt = !parent || !parent->isValid() || parent->state().invisible ||
                          parent->role() == QAccessible::ScrollBar ||
                          parent->role() == QAccessible::Separator;
    if (isExempt)
        return {};
    QVector<Interface*> shown;
    if (isWanted(*parent))
        shown.append(parent);
    for (int i = 0; i < parent->childCount(); ++i)
        shown += shownIn(parent->child(i), isWanted);
    return shown;
}

bool isNamedHeading(const Interface& part)
{
    return part.role() == QAccessible::Heading && !part.text(QAccessible::Name).isEmpty();
}

bool canBeOperated(const Interface& control)
{
    const QVector<QAccessible::Role> roles = {QAccessible::Window, QAccessible::Dialog, QAccessible::Button,
                                              QAccessible::ButtonMenu, QAccessible::MenuItem};
    const QAccessible::State state = control.state();
    return !state.disabled && (roles.contains(control.role()) || state.focusable || state.selectable);
}

QStringList withoutNameOrRole(const QVector<Interface*>& controls)
{
    QStringList faults;
    for (const Interface* control : controls) {
        const bool isArea = qobject_cast<QAbstractScrollArea*>(control->object());
        const bool hasRole = isArea || (control->role() != QAccessible::NoRole && // what Qt takes by default:
                                        control->role() != QAccessible::Client);
        if (control->text(QAccessible::Name).isEmpty() || !hasRole)
            faults.append(describe(control->object()) + " in " + describe(control->parent()->object()));
    }
    return faults;
}

/// The widgets that the Tab key visits, in this order.
QWidgetList tabStops(QWidget* window)
{
    QWidgetList stops;
    for (int keys = 0; keys < 100; ++keys) {
        QWidget* const focus = QApplication::focusWidget();
        if (!focus || (stops.size() > 1 && focus == stops.first()))
            break;
        if (stops.isEmpty() || stops.last() != focus) // text with links is visited several times
            stops.append(focus);
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    }
    return stops;
}

/// Items are reached by the arrow keys, title bars by the keys of the desktop; the button in a line edit that
/// clears it does what keys do there.
QStringList withoutFocus(const QVector<Interface*>& controls, const QWidgetList& stops)
{
    QStringList faults;
    for (const Interface* control : controls) {
        auto* const widget = qobject_cast<QWidget*>(control->object());
        const QWidget* const parent = widget ? widget->parentWidget() : nullptr;
        const bool isExpected = parent && !widget->isWindow() && !qobject_cast<const TitleBar*>(parent) &&
                                !qobject_cast<const QLineEdit*>(parent);
        if (isExpected && !stops.contains(widget) && !stops.contains(widget->focusProxy()))
            faults.append(describe(widget));
    }
    return faults;
}

/// The widgets that look the same with and without the focus, but for pixels that hardly change.
QStringList withoutFocusFrame(const QWidgetList& stops)
{
    constexpr int frame = 24; // pixels; more than a text cursor
    QStringList faults;
    for (QWidget* stop : stops) {
        stop->setFocus(Qt::TabFocusReason);
        const QImage focused = stop->grab().toImage();
        stop->clearFocus();
        const QImage plain = stop->grab().toImage();
        int differences = 0;
        for (int y = 0; y < plain.height(); ++y)
            for (int x = 0; x < plain.width(); ++x)
                differences += Contrast::of(focused.pixel(x, y), plain.pixel(x, y)) >= Contrast::ForOthers;
        if (differences < frame)
            faults.append(describe(stop));
    }
    return faults;
}

QString faultsOf(QWidget* window)
{
    window->activateWindow();
    const bool isActive = QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
    const QVector<Interface*> controls =
        shownIn(QAccessible::queryAccessibleInterface(window), canBeOperated);
    if (!isActive || controls.size() < 2)
        return "cannot be examined";
    const QWidgetList stops = tabStops(window);
    return (withoutNameOrRole(controls) + withoutFocus(controls, stops) + withoutFocusFrame(stops))
        .join("; ");
}

} // namespace

class TestAccessibility : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void keyboard();
    void controls_data();
    void controls();
    void structure();
    void menus();
    void unloadedPlugins();
};

void TestAccessibility::initTestCase()
{
    simulate(Modem);
    start();
    QVERIFY(window() && QTest::qWaitForWindowActive(window()));
    QTRY_COMPARE(window()->findChild<QStackedWidget*>()->count(), 5); // all that this SIM card gets
    QTRY_VERIFY(owner("Ctrl+O"));
}

void TestAccessibility::keyboard()
{
    auto* const sideBar = window()->findChild<QListWidget*>();
    const auto* const pages = window()->findChild<QStackedWidget*>();
    QCOMPARE(QApplication::focusWidget(), sideBar);
    for (const int page : {1, 2, 3, 4, 0}) { // and back
        QTest::keyClick(window()->windowHandle(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(pages->currentIndex(), page);
    }
    for (const int page : {4, 3, 2, 1, 0}) {
        QTest::keyClick(window()->windowHandle(), Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(pages->currentIndex(), page);
    }
    const int dialPad = pages->indexOf(part("DialPadPage"));
    QTest::mouseClick(sideBar->viewport(), Qt::LeftButton, {},
                      sideBar->visualItemRect(sideBar->item(dialPad)).center());
    for (const char key : {'1', '1', '0'})
        QTest::keyClick(window()->windowHandle(), key);
    QCOMPARE(part("DialPadPage")->findChild<QLineEdit*>()->text(), "110");
    const auto edge = [this] {
        return part("DialPadPage")->grab().toImage().pixel(0, 0);
    };
    const QRgb withField = edge();
    QTest::keyClick(window()->windowHandle(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), owner("Ctrl+D"));
    QCOMPARE(withField, edge()); // the frame of a page is for the page itself
    QTest::keyClick(window()->windowHandle(), Qt::Key_Return);
    auto* const call = qobject_cast<ExtendDialog*>(QApplication::activeWindow());
    QVERIFY(call && call->inherits("CallWindow"));
    QCOMPARE(faultsOf(call), QString());
    QTest::keyClick(call->windowHandle(), Qt::Key_Escape); // becomes a tile
    QVERIFY(call->isVisible() && call->GetTileBar()->IsMinimized());
    delete call;
    window()->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window());
    QTest::keyClick(window()->windowHandle(), Qt::Key_F1);
    QVERIFY(QApplication::activeModalWidget()); // this operator has removed the help page
    delete QApplication::activeModalWidget();
    window()->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window());
    bool isMenuOpen = false;
    QTimer::singleShot(0, this, [&isMenuOpen] {
        isMenuOpen = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->close();
    });
    QTest::keyClick(window()->windowHandle(), Qt::Key_F10);
    QVERIFY(isMenuOpen);
}

void TestAccessibility::controls_data()
{
    const auto row = dataTable<QByteArray>("skin");
    row("usual window", "");
    row("compact window", "Blue");
    row("compact window, dark", "Graphite");
}

void TestAccessibility::controls()
{
    QFETCH(QByteArray, skin);
    useSkin(skin);
    auto* const sideBar = window()->findChild<QListWidget*>();
    for (int row = 0; row < sideBar->count(); ++row) {
        sideBar->setCurrentRow(row);
        sideBar->setFocus();
        QCOMPARE(faultsOf(window()), QString());
        const auto* const page =
            qobject_cast<QAbstractScrollArea*>(window()->findChild<QStackedWidget*>()->currentWidget());
        QVERIFY2(page->focusProxy() || page->verticalScrollBar()->maximum() > 0 ||
                     page->focusPolicy() == Qt::NoFocus,
                 qPrintable(page->windowTitle()));
    }
    const auto* const text = part("MessagesPage")->findChild<QTextBrowser*>();
    const QColor link = text->document()->find("a.example").charFormat().foreground().color();
    QVERIFY2(Contrast::of(link, text->palette().color(QPalette::Base)) >= Contrast::ForText,
             qPrintable(link.name()));
    QString faults = "not shown";
    QTimer::singleShot(0, this, [&faults] {
        QWidget* const message = QApplication::activeModalWidget();
        faults = faultsOf(message);
        message->close();
    });
    CommonUtils::ShowMessage(window(), "Title", "Text", {"Yes", "No"});
    QCOMPARE(faults, QString());
    for (const char* entry : {"", "About Skylume", "About this installation", "Settings"}) {
        if (*entry != '\0')
            choose(entry);
        else
            QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+O"), "click"));
        const QPointer<QWidget> dialog = windows("ExtendDialog").value(0);
        QVERIFY(dialog);
        const auto* const field = qobject_cast<QComboBox*>(dialog->focusWidget());
        QCOMPARE(field != nullptr, qstrcmp(entry, "Settings") == 0);
        QVERIFY2(dialog->minimumSizeHint().height() <= 440, entry); // small screens
        QCOMPARE(faultsOf(dialog), QString());
        QTest::keyPress(dialog->windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY(!dialog);
    }
}

void TestAccessibility::structure()
{
    Interface* const main = QAccessible::queryAccessibleInterface(window());
    QCOMPARE(main->role(), QAccessible::Window);
    QCOMPARE(main->text(QAccessible::Name), window()->windowTitle());
    auto* const sideBar = window()->findChild<QListWidget*>();
    for (int row = 0; row < sideBar->count(); ++row) {
        sideBar->setCurrentRow(row);
        QVERIFY2(!shownIn(main, isNamedHeading).isEmpty(), qUtf8Printable(sideBar->item(row)->text()));
    }
    sideBar->setCurrentRow(window()->findChild<QStackedWidget*>()->indexOf(part("ModemPage")));
    QVERIFY(shownIn(main, isNamedHeading).size() > 4); // of the page and its panels
}

void TestAccessibility::menus()
{
    for (QMenu* menu : window()->findChildren<QMenu*>()) {
        menu->popup({});
        const QVector<Interface*> controls =
            shownIn(QAccessible::queryAccessibleInterface(menu), canBeOperated);
        QVERIFY(controls.size() >= qMin(menu->actions().size(), 2)); // the menu itself is one
        QCOMPARE(withoutNameOrRole(controls), QStringList());
        menu->hide();
    }
}

/// What a screen reader knows of a page stays valid, also of panels that were made after other plugins were loaded.
void TestAccessibility::unloadedPlugins()
{
    for (const char* language : {"Deutsch", "American English"})
        choose(language);
    simulate("[modem S]\nmodel=Lume S1\nstate=attached\n"); // for neither messages nor calls
    QTRY_VERIFY(!owner("Ctrl+O"));
    QVERIFY(shownIn(QAccessible::queryAccessibleInterface(window()), isNamedHeading).size() > 2);
}

int main(int argc, char** argv)
{
    return runTest<TestAccessibility>(argc, argv,
                                      "[system]\nEnableMaxButton=true\n[calls]\nrecent=112 *100#\n");
}
#include "tst_accessibility.moc"
