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

WindowProcedure previous = nullptr;
QVector<quintptr> notifications;
bool isDestroyed = false;

qintptr handleMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
    if (message == MediaNotification)
        notifications.append(wParam);
    isDestroyed = isDestroyed || message == WM_NCDESTROY;
    return message == Question ? qintptr(wParam) + lParam
                               : callWindowProcedure(previous, window, message, wParam, lParam);
}

WId makeWindow(DWORD style)
{
    return reinterpret_cast<WId>(CreateWindowExW(0, L"STATIC", L"Test", style, 0, 0, 200, 100, nullptr,
                                                 nullptr, GetModuleHandleW(nullptr), nullptr));
}

} // namespace

class TestNativeWindow : public QObject
{
    Q_OBJECT

private slots:
    void systemMenuEntries();
    void messageHandler();
    void sound();
};

void TestNativeWindow::systemMenuEntries()
{
    void* const menu = systemMenu(makeWindow(WS_OVERLAPPEDWINDOW));
    QVERIFY(menu);
    for (const uint entry : {0xF000u, 0xF010u, 0xF020u, 0xF030u, 0xF120u}) { // size, move, minimize ...
        for (const MenuEntryState state : {MenuEntryGreyed, MenuEntryEnabled, MenuEntryGreyed}) {
            QVERIFY(enableMenuEntry(menu, entry, state));
            const UINT shown = GetMenuState(static_cast<HMENU>(menu), entry, MF_BYCOMMAND);
            QCOMPARE(shown & uint(MF_GRAYED | MF_DISABLED), uint(state));
        }
    }
    QVERIFY(!enableMenuEntry(menu, 0x1230, MenuEntryGreyed));
    QVERIFY(!systemMenu(makeWindow(WS_POPUP)));
}

// The handler answers what it knows, passes the rest on, and sees the window's last message.
void TestNativeWindow::messageHandler()
{
    const WId window = makeWindow(WS_OVERLAPPEDWINDOW);
    const auto handle = reinterpret_cast<HWND>(window);
    previous = windowProcedure(window);
    QVERIFY(setMessageHandler(window, &handleMessage));
    QVERIFY(setMessageHandler(window, &handleMessage)); // a sound that is played twice
    QCOMPARE(SendMessageW(handle, Question, 40, 2), LRESULT(42));
    SetWindowTextW(handle, L"Passed on");
    QCOMPARE(GetWindowTextLengthW(handle), 9);
    DestroyWindow(handle);
    QVERIFY(isDestroyed);
}

// The end of a sound comes as a message to the window whose handler was installed; a sound that is closed
// before its end reports something else than success.
void TestNativeWindow::sound()
{
    const QByteArray header = QByteArray::fromHex("52494646e45d000057415645666d742010000000"
                                                  "01000100401f0000401f000001000800"
                                                  "64617461c05d0000"); // one channel, 8000 bytes a second
    const WId window = makeWindow(WS_OVERLAPPEDWINDOW);
    previous = windowProcedure(window);
    QVERIFY(setMessageHandler(window, &handleMessage));
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("Süd west.wav")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(header + QByteArray(3 * 8000, char(0x80))) > 0);
    file.close();
    const QString name = QDir::toNativeSeparators(file.fileName());
    for (const bool endsEarly : {true, false}) {
        MediaOpenParameters open = {};
        open.callback = window;
        open.elementName = reinterpret_cast<const char16_t*>(name.utf16());
        QCOMPARE(sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement | 0x8, &open), 0u);
        MediaPlayParameters play = {};
        play.callback = window;
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
