// Calls of the operating system that give the same results on every system.
#include "platform/LanguageId_p.h"
#include "platform/MediaControl_p.h"
#include "platform/Path_p.h"
#include "platform/RandomSource_p.h"
#include "platform/SystemMenu_p.h"
#include "platform/WindowProcedure_p.h"

#include <QDir>
#include <QtTest>

#include <cstring>
#include <tuple>

using namespace Platform;

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void randomBytes();
    void canonicalPath();
    void languageIds();
    void noSuchWindow();
    void mediaErrors();
};

// Needs acquire(), fills the whole buffer, and writes nothing behind it.
void TestPlatform::randomBytes()
{
    constexpr int size = 64;
    QByteArray bytes(size + 1, '\0'), seen(size, '\0');
    RandomSource source;
    QVERIFY(!source.draw(bytes.data(), size) && !source.release());
    QVERIFY(source.acquire() && !source.acquire());
    for (int draw = 0; draw < 64; ++draw) {
        QVERIFY(source.draw(bytes.data(), size));
        QCOMPARE(bytes.at(size), '\0');
        for (int at = 0; at < size; ++at)
            seen[at] = char(seen.at(at) | bytes.at(at));
    }
    QVERIFY2(seen == QByteArray(size, '\xFF'), "a bit that is never set");
    QVERIFY(source.release() && source.acquire());
}

// Slashes stand for the system's separator; null stands for a path that is refused.
void TestPlatform::canonicalPath()
{
    const QByteArray longest(PathCapacity - 1, 'x');
    const std::tuple<QByteArray, QByteArray> rows[] = {
        {"/one/two", "/one/two"},
        {"/one/two/three/../../four", "/one/four"},
        {"/../../one", "/one"},
        {"/one/..", "/"},
        {"one/./two/../three", "one/three"},
        {"/one..two/.three/four...", "/one..two/.three/four..."},
        {"/Süd west/./é", "/Süd west/é"},
        {"/no/such/folder/../file", "/no/such/file"},
        {longest, longest},
        {longest + 'x', {}},
        {QByteArray("./").repeated(PathCapacity / 2) + 'x', {}}, // too long before the dots are removed
        {{}, {}},
    };
    for (const auto& [path, canonical] : rows) {
        const QByteArray native = QDir::toNativeSeparators(QString::fromUtf8(path)).toLocal8Bit();
        char buffer[PathCapacity];
        std::memset(buffer, '?', sizeof buffer);
        QVERIFY2(canonicalisePath(path.isNull() ? nullptr : native.constData(), buffer) != canonical.isNull(),
                 path);
        QCOMPARE(QDir::fromNativeSeparators(QString::fromLocal8Bit(buffer)).toUtf8(), canonical);
    }
}

// Tests run in the C locale, which is American English on Windows as well.
void TestPlatform::languageIds()
{
    QCOMPARE(userLanguageId(), quint16(0x0409));
    const quint16 system = systemLanguageId();
    QVERIFY2(system == 0 || (system & 0x3ff) != 0, "a number without a language");
}

void TestPlatform::noSuchWindow()
{
    QCOMPARE(systemMenu(0), nullptr);
    QVERIFY(!enableMenuEntry(nullptr, 0xF010, MenuEntryGreyed));
    QCOMPARE(windowProcedure(0), nullptr);
    const MessageHandler handler = [](WId, quint32, quintptr, qintptr) {
        return qintptr(0);
    };
    QVERIFY(!setMessageHandler(0, handler));
}

// A missing file and an unknown device fail with an error that has a text, which is cut to fit the buffer.
void TestPlatform::mediaErrors()
{
    const QString file = QDir::toNativeSeparators(QDir::tempPath() + QStringLiteral("/no such sound.wav"));
    MediaOpenParameters open = {};
    open.elementName = reinterpret_cast<const char16_t*>(file.utf16());
    MediaPlayParameters play = {};
    const quint32 errors[] = {sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement, &open),
                              sendMediaCommand(77, MediaPlay, MediaNotify, &play),
                              sendMediaCommand(77, MediaClose, 0, nullptr)};
    for (const quint32 error : errors) {
        char16_t text[256] = {};
        char16_t start[] = u"#####";
        QVERIFY(error != 0);
        QVERIFY(mediaErrorText(error, text, 256));
        QVERIFY(mediaErrorText(error, start, 5));
        QVERIFY(QString::fromUtf16(text).size() > 4);
        QCOMPARE(QString::fromUtf16(start), QString::fromUtf16(text, 4));
    }
    char16_t text[256] = {};
    QVERIFY(!mediaErrorText(99999, text, 256));
}

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
