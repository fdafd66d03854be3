// What the system is told about the main window's own frame.
#include "RunningApplication.h"

#include "TitleBar/TitleBar.h"

#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QScreen>

#include <tuple>

#include <windows.h>

namespace {

constexpr QRect Usual(60, 50, 780, 560);

} // namespace

class TestWindowsWin : public RunningApplication
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void style();
    void places();
    void commands();

private:
    HWND handle() const { return reinterpret_cast<HWND>(window()->winId()); }
    LRESULT send(UINT message, WPARAM wParam, LPARAM lParam = 0) const
    {
        return SendMessageW(handle(), message, wParam, lParam);
    }
    TitleBar* titleBar() const { return window()->findChild<TitleBar*>(); }
};

void TestWindowsWin::initTestCase()
{
    simulate({});
    start();
    QVERIFY(window() && QTest::qWaitForWindowExposed(window()));
}

void TestWindowsWin::init()
{
    window()->setGeometry(Usual);
}

/// The system snaps windows with these properties, and draws no frame around them.
void TestWindowsWin::style()
{
    constexpr LONG wanted = WS_THICKFRAME | WS_MAXIMIZEBOX | WS_MINIMIZEBOX | WS_SYSMENU;
    QCOMPARE(GetWindowLongW(handle(), GWL_STYLE) & wanted, wanted);
    RECT whole;
    RECT contents;
    GetWindowRect(handle(), &whole);
    GetClientRect(handle(), &contents);
    QCOMPARE(QRect(whole.left, whole.top, contents.right, contents.bottom), Usual);
    QCOMPARE(QSize(whole.right - whole.left, whole.bottom - whole.top), Usual.size());
    QVERIFY(send(WM_NCACTIVATE, FALSE) && send(WM_NCACTIVATE, TRUE));
}

/// Where the system moves the window; when it is maximised, nowhere.
void TestWindowsWin::places()
{
    const std::tuple<const char*, QPoint, int> rows[] = {
        {"", {400, 8}, HTCAPTION}, // the title bar
        {"", {0, 300}, HTCLIENT},  // the edge
        {"", {400, 300}, HTCLIENT},
        {"Core_LabelTitleIcon", {5, 5}, HTCLIENT},
        {"Core_ButtonClose", {5, 5}, HTCLIENT},
        {"mainMenu", {5, 5}, HTCLIENT},
    };
    for (const auto& [part, place, expected] : rows) {
        const auto* const widget = *part ? window()->findChild<QWidget*>(part) : window();
        const auto answer = [&, point = place] {
            const QPoint onScreen = widget->mapToGlobal(point);
            return int(send(WM_NCHITTEST, 0, MAKELPARAM(onScreen.x(), onScreen.y())));
        };
        QCOMPARE(answer(), expected);
        titleBar()->showMax();
        QCOMPARE(answer(), HTCLIENT);
        titleBar()->showRestore();
    }
}

/// The entries of the system's menu do what the buttons of the title bar do.
void TestWindowsWin::commands()
{
    const QRect available = window()->screen()->availableGeometry();
    for (const auto& [command, expected] : {std::pair(SC_RESTORE, Usual),
                                            {SC_MAXIMIZE, available},
                                            {SC_MAXIMIZE, available},
                                            {SC_RESTORE, Usual}}) {
        send(WM_SYSCOMMAND, WPARAM(command));
        QCOMPARE(window()->geometry(), expected);
        QCOMPARE(titleBar()->IsMaximized(), expected == available);
    }
    send(WM_SYSCOMMAND, SC_MINIMIZE);
    QTRY_VERIFY(window()->isMinimized());
    send(WM_SYSCOMMAND, SC_RESTORE);
    QTRY_VERIFY(!window()->isMinimized());
    QCOMPARE(window()->geometry(), Usual);
    for (int times = 1; times <= 2; ++times) {
        ShowWindow(handle(), SW_MAXIMIZE); // as the keys of the desktop do
        QTRY_VERIFY(titleBar()->IsMaximized());
        QCOMPARE(window()->geometry(), available);
        send(WM_SYSCOMMAND, SC_RESTORE);
        QCOMPARE(window()->geometry(), Usual);
        QVERIFY(!titleBar()->IsMaximized() && !IsZoomed(handle()));
    }
}

int main(int argc, char** argv)
{
    return runTest<TestWindowsWin>(argc, argv, "[system]\nEnableMaxButton=true\n");
}
#include "tst_windows_win.moc"
