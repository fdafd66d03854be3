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
#include <QApplication>
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

#include <algorithm>

namespace {

const QByteArray Modem =
    "[modem V]\nmodel=Lume V2\nstate=attached\nnetwork=26201\nimsi=262011234567890\ngid=NT-GOLD\n"
    "[message 1]\nmodem=V\nsender=A\ntext=see https://a.example\n";

using Interface = QAccessibleInterface;

QString describe(const Interface& control)
{
    const QObject* const object = control.object();
    return QString("%1 %2 in %3")
        .arg(object ? object->metaObject()->className() : "item", object ? object->objectName() : QString(),
             control.parent() && control.parent()->object()
                 ? control.parent()->object()->metaObject()->className()
                 : "");
}

bool canBeOperated(const Interface& control)
{
    const QAccessible::State state = control.state();
    const bool isWindow = control.role() == QAccessible::Window || control.role() == QAccessible::Dialog;
    const bool isButton = control.role() == QAccessible::Button || control.role() == QAccessible::ButtonMenu;
    const bool isEntry = control.role() == QAccessible::MenuItem;
    return !state.disabled && (isWindow || isButton || isEntry || state.focusable || state.selectable);
}

bool isExempt(const Interface& control)
{
    return control.role() == QAccessible::ScrollBar || control.role() == QAccessible::Separator;
}

/// All controls in a window that are shown and can be operated.
void addControls(Interface* parent, QVector<Interface*>& controls)
{
    if (!parent || !parent->isValid() || parent->state().invisible || isExempt(*parent))
        return;
    if (canBeOperated(*parent))
        controls.append(parent);
    for (int i = 0; i < parent->childCount(); ++i)
        addControls(parent->child(i), controls);
}

QVector<Interface*> controlsOf(QWidget* window)
{
    QVector<Interface*> controls;
    addControls(QAccessible::queryAccessibleInterface(window), controls);
    return controls;
}

QStringList withoutNameOrRole(const QVector<Interface*>& controls)
{
    QStringList faults;
    for (const Interface* control : controls) {
        const bool isArea = qobject_cast<QAbstractScrollArea*>(control->object());
        const bool hasRole = isArea || (control->role() != QAccessible::NoRole && // what Qt takes by default:
                                        control->role() != QAccessible::Client);
        if (control->text(QAccessible::Name).isEmpty() || !hasRole)
            faults.append(describe(*control));
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
            faults.append(describe(*control));
    }
    return faults;
}

/// Pixels that differ clearly.
int differentPixels(const QImage& left, const QImage& right)
{
    const auto differs = [](QRgb one, QRgb other) {
        return one != other && Contrast::of(one, other) >= Contrast::ForOthers;
    };
    int count = 0;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            count += differs(left.pixel(x, y), right.pixel(x, y));
    return count;
}

/// The widgets that look the same with and without the focus.
QStringList withoutFocusFrame(const QWidgetList& stops)
{
    constexpr int frame = 24; // pixels; more than a text cursor
    QStringList faults;
    for (QWidget* stop : stops) {
        stop->setFocus(Qt::TabFocusReason);
        const QImage focused = stop->grab().toImage();
        stop->clearFocus();
        if (differentPixels(focused, stop->grab().toImage()) < frame)
            faults.append(QString(stop->metaObject()->className()) + ' ' + stop->objectName());
    }
    return faults;
}

QString faultsOf(QWidget* window)
{
    window->activateWindow();
    const bool isActive = QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
    const QVector<Interface*> controls = controlsOf(window);
    if (!isActive || controls.size() < 2)
        return "cannot be examined";
    const QWidgetList stops = tabStops(window);
    return (withoutNameOrRole(controls) + withoutFocus(controls, stops) + withoutFocusFrame(stops))
        .join("; ");
}

/// How many accessible objects of a role are visible below a widget.
int countOf(QAccessible::Role role, Interface* parent)
{
    int count = parent->role() == role && !parent->text(QAccessible::Name).isEmpty();
    for (int i = 0; i < parent->childCount(); ++i)
        if (Interface* const child = parent->child(i); child && !child->state().invisible)
            count += countOf(role, child);
    return count;
}

ExtendDialog* visibleDialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* const dialog = qobject_cast<ExtendDialog*>(widget); dialog && dialog->isVisible())
            return dialog;
    return nullptr;
}

} // namespace

class TestAccessibility : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { end(); }
    void keyboard();
    void controls_data();
    void controls();
    void structure();
    void menus();

private:
    void useForm(bool isCompact, const char* skin) const;
    QWidget* page(const char* kind) const;
};

void TestAccessibility::initTestCase()
{
    qApp->setQuitOnLastWindowClosed(false);
    qApp->setCursorFlashTime(0);
    simulate(Modem);
    start();
    QVERIFY(window() && QTest::qWaitForWindowActive(window()));
    QTRY_COMPARE(window()->findChild<QStackedWidget*>()->count(), 5); // all that this SIM card gets
    QTRY_VERIFY(owner("Ctrl+O"));
}

QWidget* TestAccessibility::page(const char* kind) const
{
    for (QWidget* widget : window()->findChildren<QWidget*>())
        if (widget->inherits(kind))
            return widget;
    return nullptr;
}

void TestAccessibility::keyboard()
{
    auto* const sideBar = window()->findChild<QListWidget*>();
    const auto* const pages = window()->findChild<QStackedWidget*>();
    QCOMPARE(QApplication::focusWidget(), sideBar);
    const int count = pages->count();
    for (const bool isForward : {true, false}) {
        for (int i = 1; i <= count; ++i) {
            QTest::keyClick(window()->windowHandle(), Qt::Key_Tab,
                            isForward ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(pages->currentIndex(), (isForward ? i : count - i) % count);
        }
    }
    const int dialPad = pages->indexOf(page("DialPadPage"));
    QTest::mouseClick(sideBar->viewport(), Qt::LeftButton, {},
                      sideBar->visualItemRect(sideBar->item(dialPad)).center());
    for (const char key : {'1', '1', '0'})
        QTest::keyClick(window()->windowHandle(), key);
    QCOMPARE(page("DialPadPage")->findChild<QLineEdit*>()->text(), "110");
    const auto edge = [this] {
        return page("DialPadPage")->grab().toImage().pixel(0, 0);
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
    QVERIFY(visibleDialog()); // this operator has removed the help page
    delete visibleDialog();
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

void TestAccessibility::useForm(bool isCompact, const char* skin) const
{
    CommonUtils::SetSettings("MiniSkin", "Name", skin);
    for (const bool form : {!isCompact, isCompact})
        if (CommonUtils::IsMiniMode() != form)
            QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+M"), "trigger"));
    QCOMPARE(CommonUtils::IsMiniMode(), isCompact);
}

void TestAccessibility::controls_data()
{
    const auto row = dataTable<bool, QByteArray>("compact", "skin");
    row("usual window", false, "Blue");
    row("compact window", true, "Blue");
    row("compact window, dark", true, "Graphite");
}

void TestAccessibility::controls()
{
    QFETCH(bool, compact);
    QFETCH(QByteArray, skin);
    useForm(compact, skin);
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
    const auto* const text = page("MessagesPage")->findChild<QTextBrowser*>();
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
        const QPointer<ExtendDialog> dialog = visibleDialog();
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
        QVERIFY2(countOf(QAccessible::Heading, main) >= 1, qUtf8Printable(sideBar->item(row)->text()));
    }
}

void TestAccessibility::menus()
{
    for (QMenu* menu : window()->findChildren<QMenu*>()) {
        menu->popup({});
        const QVector<Interface*> controls = controlsOf(menu);
        QVERIFY(controls.size() >= qMin(menu->actions().size(), 2)); // the menu itself is one
        QCOMPARE(withoutNameOrRole(controls), QStringList());
        menu->hide();
    }
}

int main(int argc, char** argv)
{
    const TestHome home("[system]\nEnableMaxButton=true\n[calls]\nrecent=112 *100#\n");
    QApplication application(argc, argv);
    TestAccessibility test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_accessibility.moc"
