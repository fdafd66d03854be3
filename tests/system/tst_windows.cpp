// The windows of the running application: frame, place, tiles, and what happens to them when the main window or
// the plugin that opened them goes away.
#include "RunningApplication.h"

#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "ExtendDialog/FaderWidget.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScreen>
#include <QStackedWidget>
#include <QStyle>
#include <QTimer>
#include <QWindow>

#include <tuple>

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

} // namespace

class TestWindows : public RunningApplication
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { end(); }
    void dragging();
    void nextStart();
    void places();
    void systemFrame();
    void minimising();
    void messageWindows();
    void resizableDialogs();
    void pageChange();
    void unloadedPlugin();
    void callGuard();
    void severalGuards();

private:
    /// Opens the message in this row of the list in a window.
    /// @return null if no window has come
    ExtendDialog* openMessage(int row) const;
};

void TestWindows::init()
{
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
    qobject_cast<QAbstractButton*>(owner("Ctrl+O"))->click();
    for (QWidget* dialog : windows("MessageWindow"))
        if (dialog->windowTitle().endsWith("AB"[row]))
            return static_cast<ExtendDialog*>(dialog);
    return nullptr;
}

void TestWindows::dragging()
{
    const int right = Usual.width() - 1;
    const int bottom = Usual.height() - 1;
    const std::tuple<const char*, QPoint, QPoint, QMargins> rows[] = {
        {"left", {1, 300}, {-8, 5}, {8, 0, 0, 0}},
        {"right", {right - 1, 300}, {-6, 5}, {0, 0, -6, 0}},
        {"top", {300, 1}, {5, -4}, {0, 4, 0, 0}},
        {"bottom", {300, bottom - 1}, {5, 6}, {0, 0, 0, 6}},
        {"top left", {1, 12}, {-8, -4}, {8, 4, 0, 0}},
        {"bottom right", {right - 12, bottom - 1}, {-6, 6}, {0, 0, -6, 6}},
        {"no further than the smallest width", {1, 300}, {800, 0}, {-800, 0, 0, 0}},
        {"no further than the smallest height", {300, bottom - 1}, {0, -300}, {0, 0, 0, -300}},
        {"title bar", {300, 20}, {8, 14}, {-8, -14, 8, 14}},
        {"inside the border", {4, 300}, {-8, 0}, {}},
    };
    const QSize smallest = window()->minimumSize().expandedTo(window()->minimumSizeHint());
    const QRect available = window()->screen()->availableGeometry();
    for (const auto& [name, grip, distance, growth] : rows) {
        QRect place = Usual + growth;
        place.setLeft(qMin(place.left(), place.right() + 1 - smallest.width()));
        place.setBottom(qMax(place.bottom(), place.top() - 1 + smallest.height()));
        window()->setGeometry(Usual);
        drag(window(), grip, distance);
        QVERIFY2(window()->geometry() == place, name);
        titleButton(window(), "Maximize")->click();
        drag(window(), grip, distance);
        QVERIFY2(window()->geometry() == available, name);
        titleButton(window(), "Restore")->click();
    }
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
void TestWindows::places()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const std::pair<QString, QRect> rows[] = {
        {"10 0 700 560", {10, 0, 700, 560}}, // at the upper edge
        {QString("0 0 %1 %2").arg(screen.width()).arg(screen.height()), screen},
        {"5000 -900 700 560", {screen.right() - 699, 0, 700, 560}}, // on a screen that is gone
        {"-2147483648 2147483647 2147483647 9000", screen},
        {"a b c d e", {}},
        {"10 20 0 0", {}},
    };
    for (const auto& [stored, place] : rows) {
        for (const bool isStored : {true, false}) { // then what the application has stored itself
            end();
            if (isStored)
                CommonUtils::SetSettings("mainwindow", "geometry", stored);
            start();
            const QRect middle =
                QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, window()->size(), screen);
            QCOMPARE(window()->geometry(), place.isEmpty() ? middle : place);
            window()->close();
        }
    }
}

void TestWindows::systemFrame()
{
    for (const bool isOwn : {false, true}) {
        end();
        QVERIFY(!CommonUtils::SetSettings("mainwindow", "systemframe", isOwn ? "false" : "true"));
        start();
        QCOMPARE(window()->windowFlags().testFlag(Qt::FramelessWindowHint), isOwn);
        QCOMPARE(window()->findChildren<TitleBar*>().size(), int(isOwn));
        QTRY_VERIFY(owner("Ctrl+D") && owner("Ctrl+O") && openMessage(0));
        QCOMPARE(openMessage(0)->IsCusTitle(), isOwn);
        QVERIFY(CommonUtils::MakeCall("123", UI_CALL_VOICE));
        QWidget* const call = windows("CallWindow").value(0);
        QTest::keyClick(call, Qt::Key_Escape);
        QVERIFY(call->isVisible());
    }
}

void TestWindows::minimising()
{
    const QPointer<ExtendDialog> message = openMessage(0);
    QTimer::singleShot(0, this, [&] { // while a message waits for its answer
        const auto* const question = window()->findChild<DkMessageBox*>();
        QVERIFY(question);
        titleButton(window(), "Minimize")->click();
        QVERIFY(window()->isMinimized() && !message->isVisible() && !question->isVisible());
        window()->showNormal();
        QVERIFY(message->isVisible() && question->isVisible());
        question->buttons().first()->click();
    });
    QCOMPARE(CommonUtils::ShowMessage(window(), "title", "text", {}), 0);
}

void TestWindows::messageWindows()
{
    const QPointer<ExtendDialog> first = openMessage(0);
    QVERIFY(first);
    for (const auto& [language, title] :
         {std::pair("Deutsch", "Nachricht von A"), std::pair("American English", "Message from A")}) {
        choose(language);
        QCOMPARE(first->windowTitle(), title);
    }
    QCOMPARE(openMessage(0), first);
    const QPointer<ExtendDialog> second = openMessage(1);
    QCOMPARE(windows("MessageWindow").size(), 2);
    const QRect place = second->geometry();
    QVERIFY(!titleButton(second, "Maximize")->isVisible());
    for (ExtendDialog* dialog : {first.data(), second.data()})
        titleButton(dialog, "Minimize")->click();
    QCOMPARE(second->geometry(), first->geometry().translated(160, 0));
    QCOMPARE(openMessage(1)->geometry(), place);
}

void TestWindows::resizableDialogs()
{
    ExtendDialog* const message = openMessage(0);
    const QRect before = message->geometry();
    const int contentHeight = message->GetMainWidget()->height();
    const QPoint end = message->rect().bottomRight();
    drag(message, end - QPoint(1, 20), {30, 20});
    drag(message, {200, 1}, {5, -12}); // in the title bar
    drag(message, {1, 200}, {400, 0}); // no smaller than its contents
    const QRect resized(before.right() + 31 - before.width(), before.top() - 12, before.width(),
                        before.height() + 12);
    QCOMPARE(message->geometry(), resized);
    QCOMPARE(message->GetMainWidget()->height(), contentHeight + 12);
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
        return pages->findChildren<FaderWidget*>();
    };
    QVERIFY(!pages->findChild<FaderWidget*>());
    for (int times = 1; times <= 2; ++times) {
        QCOMPARE(turn().size(), 1);
        QVERIFY(!qobject_cast<FaderWidget*>(pages->childAt(pages->rect().center())));
    }
    QTRY_VERIFY(!pages->findChild<FaderWidget*>());
    QCOMPARE(turn().size(), 1);
    window()->showMinimized(); // no timer goes on there
    QVERIFY(!pages->findChild<FaderWidget*>() && turn().isEmpty());
    window()->showNormal();
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
    QVERIFY(turn().isEmpty());
}

/// The windows of a plugin go with it, even those that are tiles or hidden.
void TestWindows::unloadedPlugin()
{
    const QPointer<ExtendDialog> tile = openMessage(0);
    const QPointer<ExtendDialog> message = openMessage(1);
    titleButton(tile, "Minimize")->click();
    window()->showMinimized();
    simulate(OtherModem);
    QTRY_VERIFY(!tile && !message && !owner("Ctrl+O"));
    window()->showNormal();
}

void TestWindows::callGuard()
{
    enum Answer { Leave, Stay, Close, RemoveModem };
    for (const Answer answer : {Leave, Stay, Close, RemoveModem}) {
        init();
        QVERIFY(window()->close());
        window()->show(); // nothing to ask about
        QVERIFY(CommonUtils::MakeCall("123", UI_CALL_VOICE));
        QVERIFY(!window()->close() && !window()->close());
        QCOMPARE(window()->findChildren<DkMessageBox*>().size(), 1);
        const QPointer<DkMessageBox> question = window()->findChild<DkMessageBox*>();
        if (answer == RemoveModem)
            simulate(OtherModem);
        else if (answer == Close)
            question->window()->close();
        else
            question->buttons().at(answer)->click();
        QTRY_VERIFY(!question);
        QCOMPARE(window()->isVisible(), answer != Leave);
        QCOMPARE(windows("CallWindow").isEmpty(), answer == RemoveModem);
    }
}

/// Each asks once. If one of them is answered with no, all ask again.
void TestWindows::severalGuards()
{
    QVERIFY(CommonUtils::MakeCall("123", UI_CALL_VOICE));
    qobject_cast<QAbstractButton*>(owner("Ctrl+E"))->click();
    windows("ComposeWindow").value(0)->findChild<QPlainTextEdit*>()->setPlainText("text");
    constexpr int leave = 0;
    constexpr int stay = 1;
    for (const int second : {stay, leave}) {
        QVERIFY(!window()->close());
        for (const int answer : {leave, second}) {
            QTRY_COMPARE(window()->findChildren<DkMessageBox*>().size(), 1);
            window()->findChild<DkMessageBox*>()->buttons().at(answer)->click();
        }
        QTRY_VERIFY(!window()->findChild<DkMessageBox*>());
        QCOMPARE(window()->isVisible(), second == stay);
    }
}

int main(int argc, char** argv)
{
    return runTest<TestWindows>(argc, argv, "[system]\nEnableMaxButton=true\n");
}
#include "tst_windows.moc"
