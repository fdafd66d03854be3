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
#include <utility>

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
    QByteArray bytes(65, '\0'), seen = bytes;
    RandomSource source;
    QVERIFY(!source.draw(bytes.data(), 64) && !source.release());
    QVERIFY(source.acquire() && !source.acquire());
    for (int draw = 0; draw < 64; ++draw) {
        QVERIFY(source.draw(bytes.data(), 64));
        for (int at = 0; at < bytes.size(); ++at)
            seen[at] = char(seen.at(at) | bytes.at(at));
    }
    QCOMPARE(seen, QByteArray(64, '\xFF') + '\0'); // no bit was always 0
    QVERIFY(source.release() && source.acquire());
}

// Slashes stand for the system's separator.
void TestPlatform::canonicalPath()
{
    const QByteArray longest(PathCapacity - 1, 'x');
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"/one/two/three/../../four", "/one/four"},
        {"/../../one", "/one"},
        {"/one/..", "/"},
        {"one/./two/../three", "one/three"},
        {"/one..two/.three/four...", "/one..two/.three/four..."},
        {"/Süd west/./é", "/Süd west/é"},
        {longest, longest},
        {longest + 'x', {}},
        {QByteArray("./").repeated(PathCapacity / 2) + 'x', {}}, // too long before the dots are removed
    };
    char buffer[PathCapacity];
    for (const auto& [path, canonical] : rows) {
        const QByteArray native = QDir::toNativeSeparators(QString::fromUtf8(path)).toLocal8Bit();
        std::memset(buffer, '?', sizeof buffer);
        QCOMPARE(canonicalisePath(native, buffer), !canonical.isNull());
        QCOMPARE(QDir::fromNativeSeparators(QString::fromLocal8Bit(buffer)).toUtf8(), canonical);
    }
    QVERIFY(!canonicalisePath(nullptr, buffer));
}

// Tests run in the C locale, which is American English on Windows as well.
void TestPlatform::languageIds()
{
    QCOMPARE(userLanguageId(), quint16(0x0409));
}

void TestPlatform::noSuchWindow()
{
    QVERIFY(!systemMenu(0) && !enableMenuEntry(nullptr, 0xF010, MenuEntryGreyed));
    QVERIFY(!windowProcedure(0) && !setMessageHandler(0, nullptr));
}

// A missing file and an unknown device fail with an error that has a text, which is cut to fit the buffer.
void TestPlatform::mediaErrors()
{
    MediaOpenParameters open = {};
    open.elementName = u"no such sound.wav";
    char16_t text[256] = {}, start[] = u"#####";
    for (const quint32 error : {sendMediaCommand(0, MediaOpen, MediaWait | MediaOpenElement, &open),
                                sendMediaCommand(77, MediaClose, 0, nullptr)}) {
        QVERIFY(error != 0 && mediaErrorText(error, text, 256) && mediaErrorText(error, start, 5));
        QVERIFY(QString::fromUtf16(text).size() > 4);
        QCOMPARE(QString::fromUtf16(start), QString::fromUtf16(text, 4));
    }
    QVERIFY(!mediaErrorText(99999, text, 256));
}

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
