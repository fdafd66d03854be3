// What belongs to a native window: its system menu, its procedure, and sounds that report their end to it.
#include "platform/MediaControl.h"
#include "platform/SystemMenu.h"
#include "platform/WindowProcedure.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>
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

} // namespace

class TestNativeWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void systemMenuEntries_data();
    void systemMenuEntries();
    void noSystemMenu();
    void messageHandler();
    void soundToItsEnd();
    void soundStopped();

private:
    QString soundFile(const QString& name, int seconds) const;
    quint32 openSound(const QString& file) const;

    QTemporaryDir m_folder;
    HWND m_handle = nullptr;
    WId m_window = 0;
};

void TestNativeWindow::init()
{
    notifications.clear();
    questions = 0;
    isDestroyed = false;
    m_handle = CreateWindowExW(0, L"STATIC", L"Test", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
    QVERIFY(m_handle);
    m_window = reinterpret_cast<WId>(m_handle);
    previous = windowProcedure(m_window);
    QVERIFY(previous);
}

void TestNativeWindow::cleanup()
{
    DestroyWindow(m_handle);
}

void TestNativeWindow::systemMenuEntries_data()
{
    QTest::addColumn<uint>("entry");
    QTest::newRow("size") << 0xF000u;
    QTest::newRow("move") << 0xF010u;
    QTest::newRow("minimize") << 0xF020u;
    QTest::newRow("maximize") << 0xF030u;
    QTest::newRow("restore") << 0xF120u;
}

void TestNativeWindow::systemMenuEntries()
{
    QFETCH(const uint, entry);
    void* const menu = systemMenu(m_window);
    QVERIFY(menu);
    QCOMPARE(systemMenu(m_window), menu);
    for (const MenuEntryState state : {MenuEntryGreyed, MenuEntryEnabled, MenuEntryGreyed}) {
        QVERIFY(enableMenuEntry(menu, entry, state));
        const UINT shown = GetMenuState(static_cast<HMENU>(menu), entry, MF_BYCOMMAND);
        QCOMPARE(shown & uint(MF_GRAYED | MF_DISABLED), uint(state));
    }
    QVERIFY(!enableMenuEntry(menu, 0x1230, MenuEntryGreyed));
}

void TestNativeWindow::noSystemMenu()
{
    const HWND bare = CreateWindowExW(0, L"STATIC", L"Bare", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
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

// A silent wave file: one channel, eight bits, 8000 samples a second.
QString TestNativeWindow::soundFile(const QString& name, int seconds) const
{
    const quint32 samples = 8000 * quint32(seconds);
    const auto number = [](auto value) {
        value = qToLittleEndian(value);
        return QByteArray(reinterpret_cast<const char*>(&value), int(sizeof value));
    };
    const QByteArray format = number(quint16(1)) + number(quint16(1)) + number(quint32(8000)) +
                              number(quint32(8000)) + number(quint16(1)) + number(quint16(8));
    const QByteArray chunks = "WAVEfmt " + number(quint32(format.size())) + format + "data" +
                              number(samples) + QByteArray(int(samples), char(0x80));
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("RIFF" + number(quint32(chunks.size())) + chunks);
    return QDir::toNativeSeparators(file.fileName());
}

quint32 TestNativeWindow::openSound(const QString& file) const
{
    MediaOpenParameters open = {};
    open.callback = m_window;
    open.elementName = reinterpret_cast<const char16_t*>(file.utf16());
    const quint32 error = sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement | 0x8, &open);
    return error == 0 ? open.deviceId : 0;
}

// The end of a sound comes as a message to the window whose handler was installed.
void TestNativeWindow::soundToItsEnd()
{
    QVERIFY(setMessageHandler(m_window, &handleMessage));
    const quint32 device = openSound(soundFile(QStringLiteral("Süd west.wav"), 1));
    QVERIFY(device != 0);
    MediaPlayParameters play = {};
    play.callback = m_window;
    QCOMPARE(sendMediaCommand(device, MediaPlay, MediaNotify, &play), 0u);
    QTRY_COMPARE_WITH_TIMEOUT(notifications, QVector<quintptr>{MediaSuccessful}, 10000);
    QCOMPARE(sendMediaCommand(device, MediaClose, 0, nullptr), 0u);
}

// A sound that is closed before its end reports something else than success.
void TestNativeWindow::soundStopped()
{
    QVERIFY(setMessageHandler(m_window, &handleMessage));
    const quint32 device = openSound(soundFile(QStringLiteral("long.wav"), 600));
    QVERIFY(device != 0);
    MediaPlayParameters play = {};
    play.callback = m_window;
    QCOMPARE(sendMediaCommand(device, MediaPlay, MediaNotify, &play), 0u);
    QCOMPARE(sendMediaCommand(device, MediaClose, 0, nullptr), 0u);
    QTest::qWait(200);
    QVERIFY(!notifications.contains(MediaSuccessful));
    QVERIFY(sendMediaCommand(device, MediaPlay, MediaNotify, &play) != 0);
}

QTEST_MAIN(TestNativeWindow)
#include "tst_nativewindow_win.moc"
