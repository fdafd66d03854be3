// Protected data when the random source fails, memory is short or a file cannot be used; and what remains in
// memory afterwards.
#include "Bytes.h"
#include "CoreTest.h"
#include "ErrorCapture.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/ProcessorPaths_p.h"

#include <malloc.h>
#include <pthread.h>
#include <sys/random.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <functional>
#include <new>

namespace {

constexpr int Unlimited = -1;
int drawsLeft = Unlimited;
QVector<std::size_t> drawSizes;

constexpr std::size_t LargeSize = 100000;
std::atomic<int> largeBlocksLeft{Unlimited};

std::atomic<const QByteArray*> secret{nullptr}; ///< looked for in every block that is freed
std::atomic<bool> isSecretFreed{false};

bool contains(const void* memory, std::size_t size, const QByteArray& bytes)
{
    return memmem(memory, size, bytes.constData(), std::size_t(bytes.size())) != nullptr;
}

} // namespace

// These take the place of the system's functions for every library of the process.

Q_DECL_EXPORT ssize_t getrandom(void* buffer, size_t size, unsigned)
{
    if (drawsLeft == 0) {
        errno = EIO;
        return -1;
    }
    drawsLeft -= drawsLeft > 0 ? 1 : 0;
    drawSizes.append(size);
    std::memset(buffer, 'q', size);
    std::memset(buffer, 'r', 1);
    return ssize_t(size);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool OwnsMemory = false; // the sanitizer does
#else
constexpr bool OwnsMemory = true;

extern "C" {
void* __libc_malloc(size_t size);
void __libc_free(void* memory);

Q_DECL_EXPORT void* malloc(size_t size) noexcept
{
    if (size >= LargeSize && largeBlocksLeft != Unlimited && largeBlocksLeft-- == 0) {
        largeBlocksLeft = 0;
        return nullptr;
    }
    return __libc_malloc(size);
}

Q_DECL_EXPORT void free(void* memory) noexcept
{
    const QByteArray* const wanted = secret;
    if (memory && wanted && contains(memory, malloc_usable_size(memory), *wanted))
        isSecretFreed = true;
    __libc_free(memory);
}
}
#endif

namespace {

using Call = std::function<void()>;

/// Whether a call leaves bytes behind, in a block that it freed or on its stack.
bool leavesBehind(const QByteArray& bytes, Call call)
{
    constexpr std::size_t stackSize = 1 << 20;
    alignas(4096) static char stack[stackSize];
    call(); // what is resolved at the first call saves registers on the stack
    std::memset(stack, 0, stackSize);
    pthread_attr_t attributes;
    pthread_t thread = 0;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, stackSize);
    const auto run = [](void* function) -> void* {
        (*static_cast<Call*>(function))();
        return nullptr;
    };
    isSecretFreed = false;
    secret = &bytes;
    const bool hasRun =
        pthread_create(&thread, &attributes, run, &call) == 0 && pthread_join(thread, nullptr) == 0;
    secret = nullptr;
    pthread_attr_destroy(&attributes);
    return !hasRun || isSecretFreed || contains(stack, stackSize, bytes);
}

/// A secret that is longer than what the compiler may keep of it in registers and save on the stack.
const QByteArray Plaintext(1024, '\xA7');
const QByteArray Part = Plaintext.left(256);
const QByteArray PassPhrase = "only for the tests of it";

/// The result of an operation; it is released without a copy when `isKept` is false.
QByteArray converted(void (*operation)(const char*, const char*, char*&), const QByteArray& text,
                     bool isKept = true)
{
    char* result = nullptr;
    operation(text, PassPhrase, result);
    const QByteArray copy(isKept ? result : nullptr);
    CommonUtils::CryptLocalFree(result);
    return copy;
}

} // namespace

class TestProtectedDataFaults : public CoreTest
{
    Q_OBJECT

private slots:
    void failingRandomSource();
    void shortMemory();
    void filesThatFail();
    void nothingIsLeft();

private:
    /// @return the file's path
    QByteArray write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            QTest::qFail("The file cannot be written", __FILE__, __LINE__);
        return QFile::encodeName(file.fileName());
    }
};

// What was drawn before the source failed is kept, and text that was encrypted meanwhile can be decrypted.
void TestProtectedDataFaults::failingRandomSource()
{
    drawSizes.clear();
    drawsLeft = 3;
    QCOMPARE(QByteArray::fromStdString(GetRandomBytes(8)), QByteArray("rrr"));
    QCOMPARE(drawSizes, QVector<std::size_t>(3, 4)); // of four bytes drawn, the first is used
    QCOMPARE(log().lines(QtDebugMsg).size(), 1);
    QVERIFY(log().contains("{time}: {file}: GetRandomBytes: {n}: Error during CryptGenRandom.\n"));

    drawsLeft = 3;
    const QByteArray digits = converted(CommonUtils::Encrypt, "text");
    drawsLeft = Unlimited;
    QVERIFY(digits.startsWith("7272720000000000"));
    QCOMPARE(converted(CommonUtils::Decrypt, digits), QByteArray("text"));
}

// Whichever large block cannot be had: there is no result, and the file that would be replaced, the only copy of
// its content, stays as it is.
void TestProtectedDataFaults::shortMemory()
{
    if (!OwnsMemory)
        QSKIP("The sanitizer allocates the memory");
    const QByteArray text(3 * LargeSize, '0'), name = write("file", text);
    QByteArray errors;
    const auto run = [&](int operation, int blocks) {
        errors += errorOutput(path("stderr"), [&] {
            largeBlocksLeft = blocks;
            CommonUtils::FileCrypt(operation, name, name);
            largeBlocksLeft = Unlimited;
        });
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    for (const int operation : {1, 2, 3}) {
        write("file", text);
        const QByteArray before = operation == 2 ? run(1, Unlimited) : text;
        int blocks = 0;
        while (blocks < 20 && run(operation, blocks) == before)
            ++blocks;
        QCOMPARE(blocks, operation == 3 ? 1 : 2);
    }
    QCOMPARE(errors.count("Memory error"), 5);
    QCOMPARE(errors.count("Memory errorReading error"), 3);
    for (const auto operation : {CommonUtils::Encrypt, CommonUtils::Decrypt}) {
        for (const int blocks : {0, 1}) {
            char* result = nullptr;
            largeBlocksLeft = blocks;
            operation(text, PassPhrase, result);
            largeBlocksLeft = Unlimited;
            QVERIFY(!result);
        }
    }
    log().allow("{time}: {file}: {func}: memory is short");
    const std::string string = text.toStdString();
    largeBlocksLeft = 0;
    const std::size_t size = HexToStr(string).size();
    largeBlocksLeft = Unlimited;
    QCOMPARE(size, std::size_t(0));
    QCOMPARE(log().count("{time}: {file}: Encrypt: {n}: strncpy  fail"), 2);
    QCOMPARE(log().count("{time}: {file}: Decrypt: {n}: QRVL_memset fail "), 3);
    QCOMPARE(log().count("{time}: {file}: FileCrypt: {n}: QRVL_memset fail "), 5);
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

// Neither in memory that was released nor on the stack.
void TestProtectedDataFaults::nothingIsLeft()
{
    if (!OwnsMemory)
        QSKIP("The sanitizer allocates the memory");
    const QByteArray digits = converted(CommonUtils::Encrypt, Plaintext),
                     plainFile = write("plain", Plaintext), cryptFile = QFile::encodeName(path("crypt")),
                     output = QFile::encodeName(path("output")), reversed = "815732302451094",
                     ones(24, '\xFF');
    CommonUtils::FileCrypt(1, plainFile, cryptFile);
    alignas(std::string) static unsigned char bytes[4096];
    auto* const token = reinterpret_cast<char*>(bytes);
    const struct
    {
        const char* name;
        QByteArray secret;
        Call call;
    } rows[] = {
        {"pass phrase", PassPhrase.left(16),
         [] {
             converted(CommonUtils::Encrypt, "text");
         }},
        {"string", Part,
         [&] {
             converted(CommonUtils::Decrypt, digits, false);
         }},
        {"encrypted file", Part,
         [&] {
             CommonUtils::FileCrypt(1, plainFile, output);
         }},
        {"decrypted file", Part,
         [&] {
             CommonUtils::FileCrypt(2, cryptFile, output);
         }},
        {"file key", "Yx7!mRb2hK5&nGd8",
         [&] {
             CommonUtils::FileCrypt(1, plainFile, output);
         }},
        {"IMEI", reversed,
         [&] {
             CommonUtils::Handle_IMEI_Hash("490154203237518", token);
         }},
        {"digest", QCryptographicHash::hash(reversed, QCryptographicHash::Sha256),
         [&] {
             CommonUtils::Handle_IMEI_Hash("490154203237518", token);
         }},
        {"message", Part.left(48),
         [&] {
             sha256(bytesOf(Plaintext), 50, bytes);
         }},
        {"key schedule", QByteArray(128, 0x3f),
         [&] {
             crypto_cipher_deinit(
                 crypto_cipher_init(CipherTripleDes, bytesOf(Part), bytesOf(ones), ones.size()));
         }},
        {"overlapping Base64", Part,
         [&] {
             unsigned size = 1;
             std::memcpy(bytes, Plaintext.constData(), std::size_t(Plaintext.size()));
             cl_base64Encode(bytes, unsigned(Plaintext.size()), bytes, &size);
         }},
        {"random bytes", "rqqq",
         [&] {
             new (bytes) std::string(GetRandomBytes(1));
         }},
    };
    for (const auto& row : rows)
        QVERIFY2(!leavesBehind(row.secret, row.call), row.name);

    Des3Schedule schedule;
    des3_key_setup(bytesOf(ones), &schedule);
    QByteArray crypt = Plaintext, chain(8, '\0');
    CipherContext* const context =
        crypto_cipher_init(CipherTripleDes, bytesOf(chain), bytesOf(ones), ones.size());
    crypto_cipher_encrypt(context, bytesOf(crypt), bytesOf(crypt), crypt.size());
    crypto_cipher_deinit(context);
    ProcessorPaths::forEachAvailable(ProcessorPaths::tripleDes(), [&](const TripleDesCbc::Path& path) {
        const auto decrypt = [&] {
            TripleDesCbc::decryptBitsliced(path, schedule, bytesOf(chain), bytesOf(crypt), bytes, 128);
        };
        QVERIFY2(!leavesBehind(Part, decrypt), path.name);
        QVERIFY2(!leavesBehind(QByteArray(1024, '\xFF'), decrypt), path.name);
    });
}

QTEST_GUILESS_MAIN(TestProtectedDataFaults)
#include "tst_protecteddatafaults_unix.moc"
