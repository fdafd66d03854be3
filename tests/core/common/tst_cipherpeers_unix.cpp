// What OpenSSL and Python make of random data; a random source that fails, and memory that is short.
#include "CoreTest.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"

#include <QCryptographicHash>
#include <QProcess>

#include <openssl/des.h>
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <sys/random.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <random>

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

unsigned char* bytesOf(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

const unsigned char* bytesOf(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

QByteArray openSslTripleDes(const QByteArray& data, QByteArray key, QByteArray iv, bool encrypts)
{
    DES_key_schedule keys[3];
    for (int i = 0; i < 3; ++i)
        DES_set_key_unchecked(reinterpret_cast<const_DES_cblock*>(key.data()) + i, &keys[i]);
    QByteArray out(data.size(), '\0');
    DES_ede3_cbc_encrypt(bytesOf(data), bytesOf(out), data.size(), &keys[0], &keys[1], &keys[2],
                         reinterpret_cast<DES_cblock*>(iv.data()), encrypts);
    return out;
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

class TestCipherPeers : public CoreTest
{
    Q_OBJECT

private slots:
    void likeOpenSsl_data();
    void likeOpenSsl();
    void likePython();
    void failingRandomSource();
    void shortMemory_data();
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
};

void TestCipherPeers::likeOpenSsl_data()
{
    QTest::addColumn<QByteArray>("data");
    std::mt19937 generator(4711);
    for (const int length : {1, 2, 8, 15, 24, 64, 136, 1016, 1024, 2048, 2056, 4096, 5000, 65536}) {
        QByteArray data(length, '\0');
        std::generate(data.begin(), data.end(), [&generator] { return char(generator()); });
        QTest::addRow("%d", length) << data;
    }
}

void TestCipherPeers::likeOpenSsl()
{
    QFETCH(const QByteArray, data);
    const QByteArray key = QCryptographicHash::hash(data, QCryptographicHash::Sha256).left(24),
                     iv = key.left(8);
    QByteArray filled = data;
    filled.append(QByteArray((8 - data.size() % 8) % 8, '\0'));
    for (const bool encrypts : {true, false})
        QCOMPARE(QByteArray::fromStdString(
                     des3(data.toStdString(), key.toStdString(), iv.toStdString(), encrypts)),
                 openSslTripleDes(filled, key, iv, encrypts));

    QByteArray digest(32, '\0'), expected(32, '\0');
    QCOMPARE(sha256(bytesOf(data), unsigned(data.size()), bytesOf(digest)), 0);
    SHA256(bytesOf(data), std::size_t(data.size()), bytesOf(expected));
    QCOMPARE(digest, expected);

    QByteArray text(2 * data.size() + 4, '\0'), expectedText(text), back(data.size(), '\0');
    unsigned length = 1;
    QCOMPARE(cl_base64Encode(bytesOf(data), unsigned(data.size()), bytesOf(text), &length), 0);
    QCOMPARE(int(length), EVP_EncodeBlock(bytesOf(expectedText), bytesOf(data), data.size()));
    QCOMPARE(text, expectedText);
    QCOMPARE(cl_base64Decode(bytesOf(text), 1, bytesOf(back), &length), 0);
    QCOMPARE(back, data);
}

void TestCipherPeers::likePython()
{
    const char* const program = "import base64, hashlib, sys\n"
                                "data = sys.stdin.buffer.read()\n"
                                "for size in range(1, 300):\n"
                                "    part = data[-size:]\n"
                                "    print(part.hex().upper(), base64.b64encode(part).decode(),\n"
                                "          hashlib.sha256(part).hexdigest())\n";
    QByteArray data(300, '\0'), expected;
    std::generate(data.begin(), data.end(),
                  [generator = std::mt19937(4712)]() mutable { return generator(); });
    for (int size = 1; size < data.size(); ++size) {
        const QByteArray part = data.right(size);
        QByteArray text(2 * size + 4, '\0'), digest(32, '\0');
        unsigned length = 1;
        QCOMPARE(cl_base64Encode(bytesOf(part), unsigned(size), bytesOf(text), &length), 0);
        QCOMPARE(sha256(bytesOf(part), unsigned(size), bytesOf(digest)), 0);
        const std::string digits = StrToHex(part.toStdString());
        QVERIFY(HexToStr(digits) == part.toStdString());
        expected += digits.c_str() + (' ' + text.left(int(length)) + ' ' + digest.toHex() + '\n');
    }
    QProcess python;
    python.start("python3", {"-c", program});
    python.write(data);
    python.closeWriteChannel();
    QVERIFY2(python.waitForFinished(), qPrintable(python.errorString()));
    QCOMPARE(python.readAllStandardOutput(), expected);
}

// What was drawn before the source failed is kept, and a text that was enciphered meanwhile comes back.
void TestCipherPeers::failingRandomSource()
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

void TestCipherPeers::shortMemory_data()
{
    QTest::addColumn<int>("operation");
    QTest::newRow("encipher") << 1;
    QTest::newRow("decipher") << 2;
    QTest::newRow("fingerprint") << 3;
}

// Whichever large block cannot be had: the file that would be replaced, the only copy of its content, stays
// as it is.
void TestCipherPeers::shortMemory()
{
    QFETCH(const int, operation);
    const QByteArray text(3 * LargeSize, 'x'), name = QFile::encodeName(path("file"));
    QFile file(path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    file.close();
    if (operation == 2)
        CommonUtils::FileCrypt(1, name, name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();

    const int blocks = blocksTaken([&] {
        CommonUtils::FileCrypt(operation, name, name);
        return file.seek(0) && file.readAll() != before;
    });
    QVERIFY(blocks > 0 && blocks < 20);
    QVERIFY(log().contains("{time}: {file}: FileCrypt: {n}: QRVL_memset fail "));
}

void TestCipherPeers::shortMemoryForStrings()
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

void TestCipherPeers::shortMemoryForTexts()
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
        QVERIFY(log()
                    .firstMissingInOrder({"{time}: {file}: {func}: {n}: QRVL_memset fail ",
                                          "{time}: {file}: {func}: {n}: strncpy  fail"})
                    .isEmpty());
    }
}

void TestCipherPeers::filesThatFail()
{
    CommonUtils::FileCrypt(3, "/proc", QFile::encodeName(path("file"))); // a folder that claims to be empty
    QVERIFY(!QFile::exists(path("file")));

    const QString line = "{time}: {file}: FileCrypt: the result cannot be written";
    log().allow(line);
    const QByteArray input = QFile::encodeName(QCoreApplication::applicationFilePath());
    for (const int operation : {1, 3})
        CommonUtils::FileCrypt(operation, input, "/dev/full");
    QCOMPARE(log().count(line), 2);
}

QTEST_GUILESS_MAIN(TestCipherPeers)
#include "tst_cipherpeers_unix.moc"
