// What belongs to a native window: its system menu, its procedure, and sounds that report their end to it.
#include "platform/MediaControl_p.h"
#include "platform/SystemMenu_p.h"
#include "platform/WindowProcedure_p.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

using namespace Platform;

namespace {

constexpr quint32 Question = WM_APP + 1;
constexpr quint32 Unhandled = WM_APP + 2;

WindowProcedure previous = nullptr;
QVector<quintptr> notifications;
int questions = 0;
bool isDestroyed = false;

qintptr handleMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
    if (message == MediaNotification)
        notifications.append(wParam);
    if (message == Question) {
        ++questions;
        return qintptr(wParam) + lParam;
    }
    isDestroyed = isDestroyed || message == WM_NCDESTROY;
    return callWindowProcedure(previous, window, message, wParam, lParam);
}

HWND makeWindow(DWORD style)
{
    return CreateWindowExW(0, L"STATIC", L"Test", style, 0, 0, 200, 100, nullptr, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

} // namespace

class TestNativeWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void systemMenuEntries();
    void messageHandler();
    void sound();

private:
    QTemporaryDir m_folder;
    HWND m_handle = nullptr;
    WId m_window = 0;
};

void TestNativeWindow::init()
{
    notifications.clear();
    questions = 0;
    isDestroyed = false;
    m_handle = makeWindow(WS_OVERLAPPEDWINDOW);
    QVERIFY(m_handle);
    m_window = reinterpret_cast<WId>(m_handle);
    previous = windowProcedure(m_window);
    QVERIFY(previous);
}

void TestNativeWindow::cleanup()
{
    DestroyWindow(m_handle);
}

void TestNativeWindow::systemMenuEntries()
{
    void* const menu = systemMenu(m_window);
    QVERIFY(menu);
    QCOMPARE(systemMenu(m_window), menu);
    for (const uint entry : {0xF000u, 0xF010u, 0xF020u, 0xF030u, 0xF120u}) { // size, move, minimize ...
        for (const MenuEntryState state : {MenuEntryGreyed, MenuEntryEnabled, MenuEntryGreyed}) {
            QVERIFY(enableMenuEntry(menu, entry, state));
            const UINT shown = GetMenuState(static_cast<HMENU>(menu), entry, MF_BYCOMMAND);
            QCOMPARE(shown & uint(MF_GRAYED | MF_DISABLED), uint(state));
        }
    }
    QVERIFY(!enableMenuEntry(menu, 0x1230, MenuEntryGreyed));
    const HWND bare = makeWindow(WS_POPUP);
    QVERIFY(!systemMenu(reinterpret_cast<WId>(bare)));
    DestroyWindow(bare);
}

// The handler answers what it knows, passes the rest on, and sees the window's last message.
void TestNativeWindow::messageHandler()
{
    QCOMPARE(SendMessageW(m_handle, Question, 40, 2), LRESULT(0));
    QVERIFY(setMessageHandler(m_window, &handleMessage));
    QVERIFY(setMessageHandler(m_window, &handleMessage)); // a sound that is played twice
    QVERIFY(windowProcedure(m_window) != previous);
    QCOMPARE(SendMessageW(m_handle, Question, 40, 2), LRESULT(42));
    QCOMPARE(SendMessageW(m_handle, Unhandled, 40, 2), LRESULT(0));
    QCOMPARE(questions, 1);
    SetWindowTextW(m_handle, L"Passed on");
    wchar_t title[20];
    QCOMPARE(GetWindowTextW(m_handle, title, 20), 9);
    DestroyWindow(m_handle);
    QVERIFY(isDestroyed);
}

namespace {

// A silent wave file of three seconds: one channel, eight bits, 8000 samples a second.
QByteArray silence()
{
    const QByteArray header = QByteArray::fromHex("52494646e45d000057415645666d742010000000"
                                                  "01000100401f0000401f000001000800"
                                                  "64617461c05d0000");
    return header + QByteArray(3 * 8000, char(0x80));
}

} // namespace

// The end of a sound comes as a message to the window whose handler was installed; a sound that is closed
// before its end reports something else than success.
void TestNativeWindow::sound()
{
    QVERIFY(setMessageHandler(m_window, &handleMessage));
    QFile file(m_folder.filePath(QStringLiteral("Süd west.wav")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(silence()) > 0);
    file.close();
    const QString name = QDir::toNativeSeparators(file.fileName());
    for (const bool endsEarly : {true, false}) {
        MediaOpenParameters open = {};
        open.callback = m_window;
        open.elementName = reinterpret_cast<const char16_t*>(name.utf16());
        QCOMPARE(sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement | 0x8, &open), 0u);
        MediaPlayParameters play = {};
        play.callback = m_window;
        QCOMPARE(sendMediaCommand(open.deviceId, MediaPlay, MediaNotify, &play), 0u);
        if (!endsEarly)
            QTRY_COMPARE_WITH_TIMEOUT(notifications, QVector<quintptr>{MediaSuccessful}, 10000);
        QCOMPARE(sendMediaCommand(open.deviceId, MediaClose, 0, nullptr), 0u);
        QTest::qWait(200);
        QCOMPARE(notifications.contains(MediaSuccessful), !endsEarly);
        QVERIFY(sendMediaCommand(open.deviceId, MediaPlay, MediaNotify, &play) != 0);
        notifications.clear();
    }
}

QTEST_MAIN(TestNativeWindow)
#include "tst_nativewindow_win.moc"
