// What belongs to a native window: its system menu, its procedure, and sounds that report their end to it.
#include "Silence.h"
#include "TestFiles.h"
#include "common/DkSoundWin.h"
#include "platform/SystemMenu_p.h"
#include "platform/WindowProcedure_p.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

using namespace Platform;

namespace {

constexpr quint32 Question = WM_APP + 1;

WindowProcedure previous = nullptr;
bool isDestroyed = false;

qintptr handleMessage(WId window, quint32 message, quintptr wParam, qintptr lParam)
{
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

// Only the end of the whole sound is reported, then it can be opened again. Windows itself says that the first of two
// commands to play is superseded (Wine: aborted), and that a sound is aborted when it is stopped.
void TestNativeWindow::sound()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("Süd west.wav"));
    writeFile(file, silence());
    DkSound sound(QDir::toNativeSeparators(file));
    QSignalSpy finished(&sound, &DkSound::finished);
    for (int times = 1; times <= 2; ++times) {
        QVERIFY(sound.Play() && sound.Play());
        QCoreApplication::processEvents();
        QVERIFY(sound.IsPlaying());
        QTRY_VERIFY_WITH_TIMEOUT(!sound.IsPlaying(), 10000);
        QCOMPARE(finished.count(), times);
    }
    QVERIFY(sound.Play() && sound.Stop());
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 2);
    const auto window = reinterpret_cast<HWND>(sound.winId());
    SetWindowTextW(window, L"Passed on");
    QCOMPARE(GetWindowTextLengthW(window), 9);
}

QTEST_MAIN(TestNativeWindow)
#include "tst_nativewindow_win.moc"
