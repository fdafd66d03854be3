// The windows under a real window manager, with real input: an X server and openbox that belong to this test, and
// xdotool as the user's hands.
#include "RunningApplication.h"

#include "../support/Server.h"
#include "ExtendDialog/ExtendDialog.h"
#include "common/CommonUtils.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QWindow>

namespace {

constexpr const char* HasDisplay = "TEST_HAS_DISPLAY";

/// Runs this program again, on a display of its own, which must be there longer than the application.
int runOnDisplay(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    // With "-noreset", because openbox would be thrown out if it came between two of the clients below.
    Server display(
        {"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"});
    while (!display.canReadLine() && display.waitForReadyRead())
        ;
    qputenv("DISPLAY", ':' + display.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv(HasDisplay, "1");
    const Server windowManager({"openbox", "--sm-disable"});
    if (!QTest::qWaitFor([] { return QProcess::execute("xdotool", {"get_desktop"}) == 0; }, 30000))
        qFatal("Xvfb or openbox cannot be started");
    return QProcess::execute(application.applicationFilePath(), application.arguments().mid(1));
}

} // namespace

class TestWindowsX11 : public RunningApplication
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { end(); }
    void dragging();
    void maximising();
    void systemMenu();
    void minimising();
    void dialogs();
    void notificationArea();

private:
    /// Runs xdotool; each text is a command with its arguments.
    static void input(const QStringList& commands);
    static QString moveTo(const QPoint& place)
    {
        return QString("mousemove %1 %2").arg(place.x()).arg(place.y());
    }
    /// Where the X server has the window.
    QRect place() const;
    /// Waits until the window is there for the X server and for itself.
    void expectAt(const QRect& expected) const;

    static void drag(const QPoint& from, const QPoint& distance);
    void click(const char* button) const;

    /// Where nothing but the title bar is.
    QPoint grip() const;
};

void TestWindowsX11::init()
{
    QApplication::setDoubleClickInterval(0); // clicks are single ones at any speed of the machine
    simulate({});
    start();
    QVERIFY(window() && QTest::qWaitForWindowActive(window()));
    window()->setGeometry(100, 80, 900, 560);
    expectAt({100, 80, 900, 560});
}

/// The notification area can appear later than the application, or never. Closing the window hides it only if the user
/// wants that; minimising hides other windows, but not the icon.
void TestWindowsX11::notificationArea()
{
    const auto hasIcon = [] {
        return !windows("QSystemTrayIconSys").isEmpty();
    };
    const auto clickIcon = [this] {
        emit window()->findChild<QSystemTrayIcon*>()->activated(QSystemTrayIcon::Trigger);
    };
    const auto restart = [this] {
        end();
        start();
    };
    CommonUtils::SetSettings("mainwindow", "closetotray", "true");
    restart();
    QVERIFY(!window()->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(window()->isVisible(), 60000); // there is no area
    const Server area({"trayer", "--edge", "bottom", "--height", "24"});
    QTRY_VERIFY(hasIcon());
    restart();
    QVERIFY(!window()->isVisible());
    clickIcon();
    QVERIFY(QTest::qWaitForWindowActive(window()));
    const QRect before = place();
    qApp->setQuitOnLastWindowClosed(true);
    QVERIFY(!window()->close() && !window()->close() && !window()->isVisible());
    QVERIFY(!qApp->quitOnLastWindowClosed());
    QCOMPARE(CommonUtils::GetUserSettings("mainwindow", "closetotraytold"), "true");
    QVERIFY(!CommonUtils::GetUserSettings("mainwindow", "geometry").isEmpty());
    clickIcon();
    QVERIFY(window()->isVisible() && qApp->quitOnLastWindowClosed());
    QVERIFY(QTest::qWaitForWindowActive(window()));
    expectAt(before);
    click("Minimize");
    QTRY_VERIFY(window()->isMinimized());
    QTRY_VERIFY(hasIcon());
    window()->showMaximized();
    QTRY_VERIFY(window()->findChild<TitleBar*>()->IsMaximized());
    window()->close();
    QVERIFY(QMetaObject::invokeMethod(owner("Ctrl+Q"), "trigger"));
    QVERIFY(!window()->isVisible());
    QCOMPARE(CommonUtils::GetUserSettings("mainwindow", "maximized"), "true");
    CommonUtils::SetSettings("mainwindow", "closetotray", "false");
    restart();
    QTRY_VERIFY(hasIcon());
    QVERIFY(window()->close());
}

void TestWindowsX11::input(const QStringList& commands)
{
    QProcess tool;
    tool.start("xdotool", commands.join(' ').split(' '));
    QTRY_COMPARE(tool.state(), QProcess::NotRunning); // while this program handles the input
    QCOMPARE(tool.exitCode(), 0);
}

QRect TestWindowsX11::place() const
{
    QProcess tool;
    tool.start("xdotool", {"getwindowgeometry", "--shell", QString::number(window()->winId())});
    tool.waitForFinished();
    const QRegularExpression values("X=(.*)\nY=(.*)\nWIDTH=(.*)\nHEIGHT=(.*)\n");
    const QStringList texts = values.match(tool.readAll()).capturedTexts();
    return {texts.value(1).toInt(), texts.value(2).toInt(), texts.value(3).toInt(), texts.value(4).toInt()};
}

void TestWindowsX11::expectAt(const QRect& expected) const
{
    QTRY_COMPARE(place(), expected);
    QTRY_COMPARE(window()->geometry(), expected);
}

void TestWindowsX11::drag(const QPoint& from, const QPoint& distance)
{
    input({moveTo(from), "mousedown 1", moveTo(from + distance / 2), moveTo(from + distance), "mouseup 1"});
}

void TestWindowsX11::click(const char* button) const
{
    const QWidget* const widget = titleButton(window(), button);
    input({moveTo(widget->mapToGlobal(widget->rect().center())), "click 1"});
}

QPoint TestWindowsX11::grip() const
{
    const QWidget* const button = titleButton(window(), "Minimize");
    return window()->mapToGlobal({window()->width() / 2, button->mapTo(window(), QPoint()).y() - 6});
}

/// By the title bar, and by a corner.
void TestWindowsX11::dragging()
{
    for (const auto& [from, moved] : {std::pair(grip(), QRect(130, 100, 900, 560)),
                                      std::pair(QPoint(131, 112), QRect(160, 120, 870, 540))}) {
        drag(from, {30, 20});
        expectAt(moved);
    }
}

void TestWindowsX11::maximising()
{
    const QRect usual = window()->geometry();
    const QRect available = window()->screen()->availableGeometry();
    QApplication::setDoubleClickInterval(30000);
    for (const QRect& expected : {available, usual}) {
        input({moveTo(grip()), "click --repeat 2 --delay 20 1"});
        expectAt(expected);
    }
    QApplication::setDoubleClickInterval(0);
    for (const auto& [button, expected] : {std::pair("Maximize", available), std::pair("Restore", usual)}) {
        click(button);
        expectAt(expected);
    }
    const auto* const bar = window()->findChild<TitleBar*>();
    for (const bool isRestoredByDesktop : {true, false}) {
        window()->showMaximized();
        expectAt(available);
        QVERIFY(bar->IsMaximized());
        if (isRestoredByDesktop)
            window()->windowHandle()->setWindowState(Qt::WindowNoState);
        else
            click("Restore");
        expectAt(usual);
        QVERIFY(!bar->IsMaximized() && window()->windowHandle()->windowState() == Qt::WindowNoState);
    }
}

void TestWindowsX11::systemMenu()
{
    const auto* const icon = window()->findChild<QLabel*>("Core_LabelTitleIcon");
    const QPoint place = icon->mapToGlobal(icon->rect().center());
    input({moveTo(place), "click 1"});
    QTRY_VERIFY(QApplication::activePopupWidget());
    const QPointer<QWidget> menu = QApplication::activePopupWidget();
    QCOMPARE(menu->actions().size(), 5);
    input({"click 1"}); // closes it, and does not open it again
    QTRY_VERIFY(!menu->isVisible());
    input({"click 1"});
    QTRY_VERIFY(menu->isVisible());
    menu->close();
}

void TestWindowsX11::minimising()
{
    window()->move(100, 0); // where a frame of the desktop would have no room
    const QRect before = window()->geometry();
    expectAt(before);
    click("Minimize");
    QTRY_VERIFY(window()->isMinimized() && !window()->isActiveWindow());
    input({QString("windowactivate --sync %1").arg(window()->winId())});
    QTRY_VERIFY(!window()->isMinimized() && window()->isActiveWindow());
    QTRY_COMPARE(window()->geometry(), before);
}

void TestWindowsX11::dialogs()
{
    choose("About Skylume");
    const QPointer<QWidget> dialog = QApplication::activeModalWidget();
    QVERIFY(dialog && QTest::qWaitForWindowActive(dialog));
    QTRY_COMPARE(QApplication::activeWindow(), dialog);
    input({"key alt+F4"});
    QTRY_VERIFY(!dialog);
    QTRY_VERIFY(window()->isActiveWindow());
    input({"key alt+F4"});
    QTRY_VERIFY(!window()->isVisible());
}

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet(HasDisplay))
        return runOnDisplay(argc, argv);
    const TestHome home("[system]\nEnableMaxButton=true\n");
    char background[] = "--background"; // has no effect unless the user wants that
    char* arguments[] = {argv[0], background};
    int count = 2;
    QApplication application(count, arguments);
    TestWindowsX11 test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windows_x11.moc"
