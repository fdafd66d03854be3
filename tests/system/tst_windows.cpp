// The windows of the running application: frame, place, tiles, and what happens to them when the main window or
// the plugin that opened them goes away.
#include "RunningApplication.h"

#include "../support/DataTable.h"
#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "ExtendDialog/FaderWidget.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QListWidget>
#include <QPointer>
#include <QScreen>
#include <QStackedWidget>
#include <QStyle>
#include <QTimer>
#include <QWindow>

namespace {

const QByteArray Modem = "[modem V]\nmodel=Lume V2\nstate=attached\nnetwork=26201\n";
const QByteArray OtherModem = "[modem S]\nmodel=Lume S1\nstate=attached\n"; // for neither messages nor calls
const QByteArray Messages = "[message 1]\nmodem=V\nsender=A\ntext=first\ntime=2024-03-04T18:40:00\n"
                            "[message 2]\nmodem=V\nsender=B\ntext=second\n";
constexpr QRect Usual(10, 30, 780, 560);

/// Sends what the mouse would, through the window system's queue.
/// @param from in coordinates of the window
void drag(QWidget* widget, QPoint from, QPoint distance)
{
    QWindow* const window = widget->windowHandle();
    const QPoint start = widget->mapToGlobal(from);
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    for (const int step : {1, 2}) // each in the coordinates of where the window is now
        QTest::mouseMove(window, widget->mapFromGlobal(start + distance * step / 2));
    QTest::mouseRelease(window, Qt::LeftButton, {}, widget->mapFromGlobal(start + distance));
}

QAbstractButton* titleButton(const QWidget* window, const char* name)
{
    return window->findChild<QAbstractButton*>(QLatin1String("Core_Button") + QLatin1String(name));
}

/// The visible dialogs whose main widget is of a class.
QList<ExtendDialog*> dialogs(const char* content)
{
    QList<ExtendDialog*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<ExtendDialog*>(widget);
        if (dialog && dialog->isVisible() && dialog->GetMainWidget()->inherits(content))
            found.append(dialog);
    }
    return found;
}

/// Counts the repaints of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

} // namespace

class TestWindows : public RunningApplication
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { end(); }
    void resizing_data();
    void resizing();
    void dragging();
    void nextStart();
    void places_data();
    void places();
    void systemFrame();
    void minimising();
    void language();
    void messageWindows();
    void resizableDialogs();
    void pageChange();
    void unloadedPlugin();
    void callGuard_data();
    void callGuard();

private:
    /// Opens the message in this row of the list in a window.
    /// @return null if no window has come
    ExtendDialog* openMessage(int row) const;

    void click(const char* shortcut) const { QVERIFY(QMetaObject::invokeMethod(owner(shortcut), "click")); }
};

void TestWindows::init()
{
    qApp->setQuitOnLastWindowClosed(false);
    simulate(Modem + Messages);
    CommonUtils::SetSettings("mainwindow", "maximized", "false");
    start();
    QVERIFY(window() && QTest::qWaitForWindowExposed(window()));
    QTRY_VERIFY(owner("Ctrl+D") && owner("Ctrl+O"));
    QTRY_COMPARE(window()->findChild<QAbstractItemView*>("messageList")->model()->rowCount(), 2);
    window()->setGeometry(Usual);
}

ExtendDialog* TestWindows::openMessage(int row) const
{
    auto* const list = window()->findChild<QAbstractItemView*>("messageList");
    list->setCurrentIndex(list->model()->index(row, 0));
    click("Ctrl+O");
    const QString sender = QString("AB").mid(row, 1);
    for (ExtendDialog* dialog : dialogs("MessageView"))
        if (dialog->windowTitle().endsWith(sender))
            return dialog;
    return nullptr;
}

void TestWindows::resizing_data()
{
    const auto row = dataTable<QPoint, QPoint, QRect>("grip", "distance", "resized");
    const int right = Usual.width() - 1;
    const int bottom = Usual.height() - 1;
    row("left", {1, 300}, {-8, 5}, Usual + QMargins(8, 0, 0, 0));
    row("right", {right - 1, 300}, {-6, 5}, Usual + QMargins(0, 0, -6, 0));
    row("top", {300, 1}, {5, -4}, Usual + QMargins(0, 4, 0, 0));
    row("bottom", {300, bottom - 1}, {5, 6}, Usual + QMargins(0, 0, 0, 6));
    row("top left", {1, 12}, {-8, -4}, Usual + QMargins(8, 4, 0, 0));
    row("top right", {right - 1, 12}, {-6, -4}, Usual + QMargins(0, 4, -6, 0));
    row("bottom left", {12, bottom - 1}, {-8, 6}, Usual + QMargins(8, 0, 0, 6));
    row("bottom right", {right - 12, bottom - 1}, {-6, 6}, Usual + QMargins(0, 0, -6, 6));
    row("no further than the smallest width", {1, 300}, {800, 0}, {Usual.right() + 1, Usual.top(), 0, 560});
    row("no further than the smallest height", {300, bottom - 1}, {0, -300},
        {Usual.topLeft(), QSize(Usual.width(), 0)});
    row("inside the border", {4, 300}, {-8, 0}, Usual);
}

void TestWindows::resizing()
{
    QFETCH(QPoint, grip);
    QFETCH(QPoint, distance);
    QFETCH(QRect, resized);
    const QSize smallest = window()->minimumSize().expandedTo(window()->minimumSizeHint());
    if (resized.isEmpty()) // as small as possible
        resized +=
            resized.width() == 0 ? QMargins(smallest.width(), 0, 0, 0) : QMargins(0, 0, 0, smallest.height());
    drag(window(), grip, distance);
    QCOMPARE(window()->geometry(), resized);
    titleButton(window(), "Maximize")->click();
    drag(window(), grip, distance);
    QCOMPARE(window()->geometry(), window()->screen()->availableGeometry());
}

/// A window that is dragged need not be painted.
void TestWindows::dragging()
{
    auto* const bar = window()->findChild<TitleBar*>();
    QTest::qWait(0);
    const PaintCounter paints(bar);
    drag(window(), bar->geometry().center(), {8, 14});
    QCOMPARE(window()->geometry(), Usual.translated(8, 14));
    QVERIFY2(paints.count <= 3, qPrintable(QString::number(paints.count))); // moves
}

void TestWindows::nextStart()
{
    titleButton(window(), "Maximize")->click();
    const QRect available = window()->screen()->availableGeometry();
    for (const bool isMaximized : {true, false}) {
        QCOMPARE(window()->geometry(), isMaximized ? available : Usual);
        window()->close();
        end();
        start();
        QCOMPARE(window()->geometry(), isMaximized ? available : Usual);
        QCOMPARE(titleButton(window(), "Restore")->isHidden(), !isMaximized);
        titleButton(window(), "Restore")->click();
    }
}

/// What becomes of the stored place at the next start. Empty: the middle of the screen.
void TestWindows::places_data()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const auto row = dataTable<QString, QRect>("stored", "expected");
    row("at the upper edge", "10 0 700 560", {10, 0, 700, 560});
    row("as large as the screen", QString("0 0 %1 %2").arg(screen.width()).arg(screen.height()), screen);
    row("on a screen that is gone", "5000 -900 700 560", {screen.right() - 699, 0, 700, 560});
    row("larger than the screen", "-2147483648 2147483647 2147483647 9000", screen);
    row("nonsense", "a b c d e", QRect());
    row("without size", "10 20 0 0", QRect());
}

void TestWindows::places()
{
    QFETCH(QString, stored);
    QFETCH(QRect, expected);
    for (const bool isStored : {true, false}) { // then what the application has stored itself
        end();
        if (isStored)
            CommonUtils::SetSettings("mainwindow", "geometry", stored);
        start();
        if (expected.isEmpty())
            expected = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, window()->size(),
                                           window()->screen()->availableGeometry());
        QCOMPARE(window()->geometry(), expected);
        window()->showMinimized();
        window()->showNormal();
        QCOMPARE(window()->geometry(), expected);
        window()->close();
    }
}

void TestWindows::systemFrame()
{
    for (const char* setting : {"true", "false"}) {
        const bool isOwn = qstrcmp(setting, "false") == 0;
        end();
        QVERIFY(!CommonUtils::SetSettings("mainwindow", "systemframe", setting));
        start();
        QCOMPARE(window()->windowFlags().testFlag(Qt::FramelessWindowHint), isOwn);
        QCOMPARE(window()->findChildren<TitleBar*>().size(), int(isOwn));
        QTRY_VERIFY(owner("Ctrl+O"));
        QTRY_VERIFY(openMessage(0));
        QCOMPARE(openMessage(0)->IsCusTitle(), isOwn);
        QCOMPARE(openMessage(0)->windowFlags().testFlag(Qt::FramelessWindowHint), isOwn);
    }
}

void TestWindows::minimising()
{
    const QPointer<ExtendDialog> message = openMessage(0);
    const QPointer<ExtendDialog> closed = openMessage(1);
    int answer = -2;
    QTimer::singleShot(0, this, [&] { // while a message waits for its answer
        auto* const question = dialogs("DkMessageBox").value(0);
        QVERIFY(question);
        titleButton(window(), "Minimize")->click();
        QVERIFY(window()->isMinimized() && !message->isVisible() && !question->isVisible());
        delete closed;
        window()->showNormal();
        QVERIFY(message->isVisible() && question->isVisible());
        qobject_cast<DkMessageBox*>(question->GetMainWidget())->buttons().first()->click();
    });
    answer = CommonUtils::ShowMessage(nullptr, "title", "text", {});
    QCOMPARE(answer, 0);
}

void TestWindows::language()
{
    const ExtendDialog* const message = openMessage(0);
    for (const auto& [language, close, title] : {std::tuple("Deutsch", "Schließen", "Nachricht von A"),
                                                 std::tuple("American English", "Close", "Message from A")}) {
        choose(language);
        for (const QWidget* const widget : {window(), static_cast<QWidget*>(openMessage(0))})
            QCOMPARE(titleButton(widget, "Close")->accessibleName(), close);
        QCOMPARE(message->windowTitle(), title);
    }
}

void TestWindows::messageWindows()
{
    const QPointer<ExtendDialog> first = openMessage(0);
    QVERIFY(first);
    QCOMPARE(openMessage(0), first);
    const QPointer<ExtendDialog> second = openMessage(1);
    QCOMPARE(dialogs("MessageView").size(), 2);
    const QRect place = second->geometry();
    QVERIFY(!titleButton(second, "Maximize")->isVisible());
    for (ExtendDialog* dialog : {first.data(), second.data()})
        titleButton(dialog, "Minimize")->click();
    QCOMPARE(second->geometry(), first->geometry().translated(160, 0));
    QCOMPARE(openMessage(1)->geometry(), place);
    titleButton(second, "Minimize")->click();
    titleButton(second, "Restore")->click();
    QCOMPARE(second->geometry(), place);
    const QRect tile = first->geometry();
    first->close();
    QTRY_VERIFY(!first);
    titleButton(second, "Minimize")->click(); // takes the tile that is free again
    QCOMPARE(second->geometry(), tile);
}

void TestWindows::resizableDialogs()
{
    ExtendDialog* const message = openMessage(0);
    const QRect before = message->geometry();
    const QPoint end = message->rect().bottomRight();
    drag(message, end - QPoint(1, 20), {30, 20});
    drag(message, {200, 1}, {5, -12}); // in the title bar
    drag(message, {1, 200}, {400, 0}); // no smaller than its contents
    const QRect resized(before.right() + 31 - before.width(), before.top() - 12, before.width(),
                        before.height() + 12);
    QCOMPARE(message->geometry(), resized);
    QCOMPARE(message->GetMainWidget()->size(), message->minimumSizeHint() + QSize(0, 12) -
                                                   (message->size() - message->GetMainWidget()->size()));
    titleButton(message, "Minimize")->click();
    const QRect tile = message->geometry();
    drag(message, {tile.width() - 1, 15}, {30, 0});
    QCOMPARE(message->size(), tile.size());
    titleButton(message, "Restore")->click();
    QCOMPARE(message->geometry(), resized);
    for (const char* name : {"About Skylume", "Settings"}) {
        choose(name);
        QWidget* const dialog = QApplication::activeModalWidget();
        QVERIFY2(dialog, name);
        const QSize size = dialog->size();
        drag(dialog, {dialog->width() - 2, 200}, {30, 0});
        QCOMPARE(dialog->size(), size + QSize(30, 0));
        dialog->close();
    }
}

/// A new page appears gently, can be used at once, and the style can switch this off.
void TestWindows::pageChange()
{
    auto* const pages = window()->findChild<QStackedWidget*>();
    const auto turn = [pages] {
        pages->setCurrentIndex((pages->currentIndex() + 1) % pages->count());
        return QPointer<FaderWidget>(pages->findChild<FaderWidget*>());
    };
    QVERIFY(!pages->findChild<FaderWidget*>());
    for (int times = 1; times <= 2; ++times) {
        QVERIFY(turn());
        QCOMPARE(pages->findChildren<FaderWidget*>().size(), 1);
        const QPoint centre = pages->rect().center();
        QVERIFY(pages->childAt(centre) != pages->findChild<FaderWidget*>());
    }
    QTRY_VERIFY(!pages->findChild<FaderWidget*>());
    window()->resize(window()->minimumSize()); // only icons: the number of unread messages is on one
    auto* const messages = *std::find_if(pages->children().begin(), pages->children().end(),
                                         [](const QObject* page) { return page->inherits("MessagesPage"); });
    QVERIFY(messages->property("badge").isValid());
    auto* const sideBar = window()->findChild<QListWidget*>();
    messages->setProperty("badge", 7);
    const QImage icons = sideBar->grab().toImage();
    messages->setProperty("badge", 0);
    QVERIFY(icons != sideBar->grab().toImage());
    qApp->setStyleSheet(qApp->styleSheet() + "SideBarArea { widget-animation-duration: 0; }");
    QVERIFY(!turn());
}

/// The windows of a plugin go with it, even those that are tiles or hidden.
void TestWindows::unloadedPlugin()
{
    const QPointer<ExtendDialog> tile = openMessage(0);
    const QPointer<ExtendDialog> message = openMessage(1);
    titleButton(tile, "Minimize")->click();
    const QRect place = tile->geometry();
    window()->showMinimized();
    simulate(OtherModem);
    QTRY_VERIFY(!tile && !message && !owner("Ctrl+O"));
    window()->showNormal();
    simulate(Modem + Messages);
    QTRY_VERIFY(owner("Ctrl+O"));
    QTRY_VERIFY(openMessage(0));
    const ExtendDialog* const next = openMessage(0);
    titleButton(next, "Minimize")->click();
    QCOMPARE(next->geometry(), place);
}

void TestWindows::callGuard_data()
{
    const auto row = dataTable<int, bool, bool>("button", "closes", "callGoesOn");
    row("leave", 0, true, true);
    row("stay", 1, false, true);
    row("the question is closed", 2, false, true);
    row("the modem goes away meanwhile", 3, false, false);
}

void TestWindows::callGuard()
{
    QFETCH(int, button);
    QVERIFY(window()->close());
    window()->show(); // nothing to ask about
    QVERIFY(CommonUtils::MakeCall("123", UI_CALL_VOICE));
    QVERIFY(!window()->close() && !window()->close());
    QCOMPARE(dialogs("DkMessageBox").size(), 1);
    const QPointer<ExtendDialog> question = dialogs("DkMessageBox").first();
    if (button == 3)
        simulate(OtherModem);
    else if (button == 2)
        question->close();
    else
        qobject_cast<DkMessageBox*>(question->GetMainWidget())->buttons().at(button)->click();
    QTRY_VERIFY(!question);
    QTEST(!window()->isVisible(), "closes");
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool callGoesOn = std::any_of(windows.begin(), windows.end(), [](const QWidget* widget) {
        return widget->inherits("CallWindow") && widget->isVisible();
    });
    QTEST(callGoesOn, "callGoesOn");
}

int main(int argc, char** argv)
{
    const TestHome home("[system]\nEnableMaxButton=true\n");
    QApplication application(argc, argv);
    TestWindows test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windows.moc"
