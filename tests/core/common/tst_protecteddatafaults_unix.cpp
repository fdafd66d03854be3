// What becomes of protected data when the random source fails, memory is short or a file refuses.
#include "CoreTest.h"
#include "ErrorCapture.h"
#include "LogOrder.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"

#include <sys/random.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr int Unlimited = -1;
int drawsLeft = Unlimited;

constexpr std::size_t LargeSize = 100000;
std::atomic<int> largeBlocksLeft{Unlimited};

void* allocated(std::size_t size)
{
    if (size >= LargeSize && largeBlocksLeft != Unlimited && largeBlocksLeft-- == 0) {
        largeBlocksLeft = 0;
        return nullptr;
    }
    return std::malloc(size);
}

void* allocatedOrThrown(std::size_t size)
{
    void* const memory = allocated(size);
    return memory ? memory : throw std::bad_alloc();
}

} // namespace

/// Takes the place of the system's function for every library of the process.
Q_DECL_EXPORT ssize_t getrandom(void* buffer, size_t size, unsigned)
{
    if (drawsLeft == 0) {
        errno = EIO;
        return -1;
    }
    drawsLeft -= drawsLeft > 0 ? 1 : 0;
    std::memset(buffer, 'r', size);
    return ssize_t(size);
}

// These take the place of the standard library's, of every form that another one might pair with a form of
// ours.
void* operator new(std::size_t size)
{
    return allocatedOrThrown(size);
}
void* operator new[](std::size_t size)
{
    return allocatedOrThrown(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocated(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocated(size);
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

class TestProtectedDataFaults : public CoreTest
{
    Q_OBJECT

private slots:
    void failingRandomSource();
    void shortMemory();
    void shortMemoryForStrings();
    void shortMemoryForTexts();
    void filesThatFail();

private:
    /// How many large blocks a call takes: it is repeated with one more each time until it says that it
    /// succeeded.
    template <typename Call>
    static int blocksTaken(Call call)
    {
        for (int blocks = 0;; ++blocks) {
            largeBlocksLeft = blocks;
            const bool hasSucceeded = call();
            largeBlocksLeft = Unlimited;
            if (hasSucceeded || blocks == 20)
                return blocks;
        }
    }

    /// @return the file's path
    QByteArray write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            QTest::qFail("The file cannot be written", __FILE__, __LINE__);
        return QFile::encodeName(file.fileName());
    }
};

// What was drawn before the source failed is kept, and a text that was enciphered meanwhile comes back.
void TestProtectedDataFaults::failingRandomSource()
{
    drawsLeft = 3;
    QCOMPARE(QByteArray::fromStdString(GetRandomBytes(8)), QByteArray("rrr"));
    QCOMPARE(log().lines(QtDebugMsg).size(), 1);
    QVERIFY(log().contains("{time}: {file}: GetRandomBytes: {n}: Error during CryptGenRandom.\n"));

    drawsLeft = 3;
    char *digits = nullptr, *text = nullptr;
    CommonUtils::Encrypt("text", "key", digits);
    drawsLeft = Unlimited;
    QVERIFY(QByteArray(digits).startsWith("7272720000000000"));
    CommonUtils::Decrypt(digits, "key", text);
    QCOMPARE(QByteArray(text), QByteArray("text"));
    CommonUtils::CryptLocalFree(digits);
    CommonUtils::CryptLocalFree(text);
}

// Whichever large block cannot be had: the file that would be replaced, the only copy of its content, stays
// as it is.
void TestProtectedDataFaults::shortMemory()
{
    const QByteArray text(3 * LargeSize, 'x');
    for (const int operation : {1, 2, 3}) {
        const QByteArray name = write("file", text);
        if (operation == 2)
            CommonUtils::FileCrypt(1, name, name);
        QFile file(path("file"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();

        QByteArray errors;
        const int blocks = blocksTaken([&] {
            errors += errorOutput(path("stderr"), [&] { CommonUtils::FileCrypt(operation, name, name); });
            return file.seek(0) && file.readAll() != before;
        });
        QVERIFY(blocks > 0 && blocks < 20);
        QCOMPARE(errors, QByteArray("Memory errorReading error").repeated(blocks));
    }
    QVERIFY(log().contains("{time}: {file}: FileCrypt: {n}: QRVL_memset fail "));
}

void TestProtectedDataFaults::shortMemoryForStrings()
{
    log().allow("{time}: {file}: {func}: memory is short");
    const std::string text(3 * LargeSize, '0');
    for (const auto call : {+[](const std::string& s) { return des3(s, "key", "iv", true); },
                            +[](const std::string& s) { return StrToHex(s); },
                            +[](const std::string& s) { return HexToStr(s); },
                            +[](const std::string& s) {
                                return TrimStr(s);
                            }})
        QCOMPARE(blocksTaken([&] { return !call(text).empty(); }), 1);
    QVERIFY(log().contains("{time}: {file}: StrToHex: {n}: sprintf_s fail"));
}

void TestProtectedDataFaults::shortMemoryForTexts()
{
    const QByteArray text(3 * LargeSize, '0');
    for (const auto operation : {CommonUtils::Encrypt, CommonUtils::Decrypt}) {
        log().clear();
        const auto call = [&] {
            char* result = nullptr;
            operation(text, "key", result);
            CommonUtils::CryptLocalFree(result);
            return result != nullptr;
        };
        QCOMPARE(blocksTaken(call), 1);
        VERIFY_LOGGED_IN_ORDER("{time}: {file}: {func}: {n}: QRVL_memset fail ",
                               "{time}: {file}: {func}: {n}: strncpy  fail");
    }
}

void TestProtectedDataFaults::filesThatFail()
{
    const QByteArray output = QFile::encodeName(path("file")), protectedText(160, '0');
    for (const int operation : {1, 2, 3}) // a folder that claims to be an empty file
        QCOMPARE(errorOutput(path("stderr"), [&] { CommonUtils::FileCrypt(operation, "/proc", output); }),
                 QByteArray("Reading error"));
    QVERIFY(!QFile::exists(path("file")));

    const QString line = "{time}: {file}: FileCrypt: the result cannot be written";
    log().allow(line);
    const QByteArray input = write("file", protectedText);
    for (const int operation : {1, 2, 3})
        CommonUtils::FileCrypt(operation, input, "/dev/full");
    QCOMPARE(log().count(line), 3);
}

QTEST_GUILESS_MAIN(TestProtectedDataFaults)
#include "tst_protecteddatafaults_unix.moc"
