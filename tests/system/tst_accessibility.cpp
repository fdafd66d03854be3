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
    "received=0\nsent=0\n[message 1]\nmodem=V\nsender=A\ntext=see https://a.example\n";

using Interface = QAccessibleInterface;

/// What is shown in a window and wanted, without scroll bars and separators.
QVector<Interface*> shownIn(Interface* parent, bool (*isWanted)(const Interface&))
{
    if (!parent || !parent->isValid() || parent->state().invisible ||
        parent->role() == QAccessible::ScrollBar || parent->role() == QAccessible::Separator)
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
    using A = QAccessible;
    const QVector<A::Role> roles = {A::Window, A::Dialog, A::Button, A::ButtonMenu, A::MenuItem};
    const A::State state = control.state();
    return !state.disabled && (roles.contains(control.role()) || state.focusable || state.selectable);
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

/// The controls without a name or a role, or that the Tab key does not reach. Items are reached by the arrow keys, title
/// bars by the keys of the desktop; the button in a line edit that clears it does what keys do there.
QString faultsOf(const QVector<Interface*>& controls, const QWidgetList& stops)
{
    QString faults;
    for (const Interface* control : controls) {
        auto* const widget = qobject_cast<QWidget*>(control->object());
        const QWidget* const parent = widget && !widget->isWindow() ? widget->parentWidget() : nullptr;
        const bool isStop =
            parent && !qobject_cast<const TitleBar*>(parent) && !qobject_cast<const QLineEdit*>(parent);
        const bool isUnreached = isStop && !stops.contains(widget) && !stops.contains(widget->focusProxy());
        const bool hasRole = qobject_cast<const QAbstractScrollArea*>(widget) ||
                             (control->role() != QAccessible::NoRole && // what Qt takes by default:
                              control->role() != QAccessible::Client);
        if (control->text(QAccessible::Name).isEmpty() || !hasRole || isUnreached)
            QDebug(&faults) << control;
    }
    return faults;
}

/// The widgets that look the same with and without the focus, but for pixels that hardly change.
QString withoutFocusFrame(const QWidgetList& stops)
{
    constexpr int frame = 24; // pixels; more than a text cursor
    QString faults;
    for (QWidget* stop : stops) {
        stop->setFocus(Qt::TabFocusReason);
        const QImage focused = stop->grab().toImage();
        stop->clearFocus();
        const QImage plain = stop->grab().toImage();
        int differences = 0;
        for (int i = 0; i < plain.width() * plain.height(); ++i) {
            const QPoint here(i % plain.width(), i / plain.width());
            differences += Contrast::of(focused.pixel(here), plain.pixel(here)) >= Contrast::ForOthers;
        }
        if (differences < frame)
            QDebug(&faults) << stop;
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
    return faultsOf(controls, stops) + withoutFocusFrame(stops);
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
    void values();
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
    const Interface* const main = QAccessible::queryAccessibleInterface(window());
    QCOMPARE(main->role(), QAccessible::Window);
    QCOMPARE(main->text(QAccessible::Name), window()->windowTitle());
}

void TestAccessibility::keyboard()
{
    auto* const sideBar = window()->findChild<QListWidget*>();
    const auto* const pages = window()->findChild<QStackedWidget*>();
    QCOMPARE(QApplication::focusWidget(), sideBar);
    bool isMenuOpen = false;
    QTimer::singleShot(0, this, [&isMenuOpen] {
        isMenuOpen = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->close();
    });
    QTest::keyClick(window()->windowHandle(), Qt::Key_F10);
    QVERIFY(isMenuOpen);
    const auto press = [this](int key, Qt::KeyboardModifiers modifiers = {}) {
        window()->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window());
        QTest::keyClick(window()->windowHandle(), Qt::Key(key), modifiers);
    };
    for (const int page : {1, 2, 3, 4, 0, 4, 3, 2, 1, 0}) { // forward and back
        const bool isBack = page != (pages->currentIndex() + 1) % 5;
        press(Qt::Key_Tab, Qt::ControlModifier | (isBack ? Qt::ShiftModifier : Qt::NoModifier));
        QCOMPARE(pages->currentIndex(), page);
    }
    const int dialPad = pages->indexOf(part("DialPadPage"));
    QTest::mouseClick(sideBar->viewport(), Qt::LeftButton, {},
                      sideBar->visualItemRect(sideBar->item(dialPad)).center());
    for (const int key : {Qt::Key_1, Qt::Key_1, Qt::Key_0})
        press(key);
    QCOMPARE(part("DialPadPage")->findChild<QLineEdit*>()->text(), "110");
    const auto edge = [this] {
        return part("DialPadPage")->grab().toImage().pixel(0, 0);
    };
    const QRgb withField = edge();
    press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), owner("Ctrl+D"));
    QCOMPARE(withField, edge()); // the frame of a page is for the page itself
    press(Qt::Key_Return);
    auto* const call = qobject_cast<ExtendDialog*>(QApplication::activeWindow());
    QVERIFY(call && call->inherits("CallWindow"));
    QCOMPARE(faultsOf(call), QString());
    QTest::keyClick(call->windowHandle(), Qt::Key_Escape); // becomes a tile
    QVERIFY(call->isVisible() && call->GetTileBar()->IsMinimized());
    delete call;
    press(Qt::Key_F1);
    QVERIFY(QApplication::activeModalWidget()); // this operator has removed the help page
    delete QApplication::activeModalWidget();
}

void TestAccessibility::controls_data()
{
    const auto row = dataTable<QByteArray>("skin");
    row("usual window", "");
    row("usual window, dark", "dark");
    row("compact window", "Blue");
    row("compact window, dark", "Graphite");
}

void TestAccessibility::controls()
{
    QFETCH(QByteArray, skin);
    useSkin(skin);
    const auto* const pages = window()->findChild<QStackedWidget*>();
    auto* const sideBar = window()->findChild<QListWidget*>();
    for (int row = 0; row < sideBar->count(); ++row) {
        sideBar->setCurrentRow(row);
        sideBar->setFocus();
        QCOMPARE(faultsOf(window()), QString());
        auto* const page = qobject_cast<QAbstractScrollArea*>(pages->currentWidget());
        const bool scrolls = page->verticalScrollBar()->maximum() > 0;
        QVERIFY(page->focusProxy() || scrolls || page->focusPolicy() == Qt::NoFocus);
        const auto headings = shownIn(QAccessible::queryAccessibleInterface(page), isNamedHeading);
        QVERIFY(headings.size() > (page->inherits("ModemPage") ? 3 : 0)); // page and panels
    }
    const auto* const text = part("MessagesPage")->findChild<QTextBrowser*>();
    const QColor link = text->document()->find("a.example").charFormat().foreground().color();
    QVERIFY(Contrast::of(link, text->palette().color(QPalette::Base)) >= Contrast::ForText);
    for (const auto& [shortcut, entry] : {std::pair("Ctrl+O", "none"),
                                          {"Del", "none"},
                                          {"", "About Skylume"},
                                          {"", "About this installation"},
                                          {"", "Settings"}}) {
        if (*shortcut != '\0')
            QVERIFY(QMetaObject::invokeMethod(owner(shortcut), "click"));
        choose(entry);
        const QPointer<QWidget> dialog = windows("ExtendDialog").value(0);
        QVERIFY(dialog);
        QCOMPARE(dialog->focusWidget()->inherits("QComboBox"), entry == QString("Settings"));
        QVERIFY2(dialog->minimumSizeHint().height() <= 440, entry); // small screens
        QCOMPARE(faultsOf(dialog), QString());
        QTest::keyPress(dialog->windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY(!dialog);
    }
}

/// A value is spoken with its caption.
void TestAccessibility::values()
{
    QStringList spoken;
    for (const QWidget* widget : window()->findChildren<QWidget*>())
        spoken.append(widget->accessibleName() + ": " + widget->accessibleDescription());
    for (const char* value : {"Model: Lume V2", "Roaming: No", "Received: 0.00 B"})
        QVERIFY2(spoken.contains(value), value);
}

void TestAccessibility::menus()
{
    for (QMenu* menu : window()->findChildren<QMenu*>()) {
        menu->popup({});
        const QVector<Interface*> controls =
            shownIn(QAccessible::queryAccessibleInterface(menu), canBeOperated);
        QVERIFY(controls.size() >= qMin(menu->actions().size(), 2)); // the menu itself is one
        QCOMPARE(faultsOf(controls, {}), QString());
        menu->hide();
    }
}

/// What a screen reader knows of a page stays valid, also of panels that were made after other plugins were loaded.
void TestAccessibility::unloadedPlugins()
{
    for (const char* language : {"Deutsch", "American English"})
        choose(language);
    auto* const pages = window()->findChild<QStackedWidget*>();
    window()->findChild<QListWidget*>()->setCurrentRow(pages->indexOf(part("ModemPage")));
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
