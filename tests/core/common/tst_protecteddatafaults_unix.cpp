// Protected data when the random source fails or a file cannot be used; and what remains in memory afterwards.
#include "Bytes.h"
#include "CoreTest.h"
#include "ErrorCapture.h"
#include "ProtectedString.h"
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
int drawsLeft = Unlimited; ///< until the random source fails
QVector<std::size_t> drawSizes;
bool isInputBroken = false; ///< behind the first piece that is read

constexpr std::size_t StackSize = 1 << 20;
alignas(4096) char stack[StackSize];            ///< of the thread that handles the secret
std::atomic<const QByteArray*> secret{nullptr}; ///< looked for in all that is freed, and on the stack
std::atomic<bool> isLeftBehind{false};

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

Q_DECL_EXPORT size_t fread(void* bytes, size_t size, size_t count, FILE* file)
{
    return isInputBroken && std::ftell(file) > 0 ? 0 : fread_unlocked(bytes, size, count, file);
}

/// The stack keeps no key of a file while the result is written. Later calls would overwrite its place.
Q_DECL_EXPORT size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file)
{
    const QByteArray* const wanted = secret;
    if (file != stderr && wanted && contains(stack, StackSize, *wanted))
        isLeftBehind = true;
    return fwrite_unlocked(bytes, size, count, file);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool OwnsMemory = false; // the sanitizer does
#else
constexpr bool OwnsMemory = true;

extern "C" {
void __libc_free(void* memory);

Q_DECL_EXPORT void free(void* memory) noexcept
{
    const QByteArray* const wanted = secret;
    if (memory && wanted && contains(memory, malloc_usable_size(memory), *wanted))
        isLeftBehind = true;
    __libc_free(memory);
}
}
#endif

namespace {

using Call = std::function<void()>;

/// Whether a call leaves bytes behind, in a block that it freed or on its stack.
bool leavesBehind(const QByteArray& bytes, Call call)
{
    call(); // what is resolved at the first call saves registers on the stack
    std::memset(stack, 0, StackSize);
    pthread_attr_t attributes;
    pthread_t thread = 0;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, StackSize);
    const auto run = [](void* function) -> void* {
        (*static_cast<Call*>(function))();
        return nullptr;
    };
    isLeftBehind = false;
    secret = &bytes;
    const bool hasRun =
        pthread_create(&thread, &attributes, run, &call) == 0 && pthread_join(thread, nullptr) == 0;
    secret = nullptr;
    pthread_attr_destroy(&attributes);
    return !hasRun || isLeftBehind || contains(stack, StackSize, bytes);
}

/// A secret that is longer than what the compiler may keep of it in registers and save on the stack.
const QByteArray Plaintext(1024, '\xA7');
const QByteArray Part = Plaintext.left(256);

} // namespace

class TestProtectedDataFaults : public CoreTest
{
    Q_OBJECT

private slots:
    void failingRandomSource();
    void filesThatFail();
    void nothingIsLeft();
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

void TestProtectedDataFaults::filesThatFail()
{
    const QByteArray input = QFile::encodeName(path("input"));
    const QString line = "{time}: {file}: FileCrypt: the result cannot be written";
    log().allow(line);
    writeFile(path("input"), QByteArray(160, '0'));
    for (const int operation : {1, 2, 3}) {
        QCOMPARE(errorOutput(path("stderr"), [&] { CommonUtils::FileCrypt(operation, "/proc", input); }),
                 QByteArray("Reading error")); // a folder that claims to be an empty file
        QCOMPARE(contentOf(path("input")).size(), 160);
        CommonUtils::FileCrypt(operation, input, "/dev/full");
        QCOMPARE(log().count(line), operation);
    }
}

// Neither in memory that was released nor on the stack.
void TestProtectedDataFaults::nothingIsLeft()
{
    if (!OwnsMemory)
        QSKIP("The sanitizer allocates the memory");
    const QByteArray digits = converted(CommonUtils::Encrypt, Plaintext), reversed = "815732302451094",
                     ones(24, '\xFF'), plainFile = QFile::encodeName(path("plain")),
                     cryptFile = QFile::encodeName(path("crypt")), output = QFile::encodeName(path("output"));
    writeFile(path("plain"), Plaintext);
    CommonUtils::FileCrypt(1, plainFile, cryptFile);
    alignas(std::string) static unsigned char bytes[4096];
    auto* const token = reinterpret_cast<char*>(bytes);
    const auto check = [](const char* name, const QByteArray& wanted, const Call& call) {
        QVERIFY2(!leavesBehind(wanted, call), name);
    };
    check("pass phrase", QByteArray(PassPhrase, 16), [] { converted(CommonUtils::Encrypt, "text"); });
    check("string", Part, [&] {
        char* result = nullptr;
        CommonUtils::Decrypt(digits, PassPhrase, result);
        CommonUtils::CryptLocalFree(result);
    });
    check("encrypted file", Part, [&] { CommonUtils::FileCrypt(1, plainFile, output); });
    check("decrypted file", Part, [&] { CommonUtils::FileCrypt(2, cryptFile, output); });
    check("file key", "Yx7!mRb2hK5&nGd8", [&] { CommonUtils::FileCrypt(1, plainFile, output); });
    const QByteArray piece(128 * 1024, 'x');
    writeFile(path("plain"), piece + piece);
    Sha256Context unfinished;
    Sha256_Init(&unfinished);
    Sha256_Update(&unfinished, bytesOf(piece), std::size_t(piece.size()));
    const QByteArray state(reinterpret_cast<const char*>(unfinished.state), sizeof unfinished.state);
    isInputBroken = true;
    const QByteArray error = errorOutput(path("stderr"), [&] {
        check("unfinished hash", state, [&] { CommonUtils::FileCrypt(3, plainFile, output); });
    });
    QCOMPARE(error, QByteArray("Reading error").repeated(2));
    isInputBroken = false;
    check("IMEI", reversed, [&] { CommonUtils::Handle_IMEI_Hash("490154203237518", token); });
    check("digest", QCryptographicHash::hash(reversed, QCryptographicHash::Sha256),
          [&] { CommonUtils::Handle_IMEI_Hash("490154203237518", token); });
    check("message", Part.left(48), [&] { sha256(bytesOf(Plaintext), 50, bytes); });
    check("key schedule", QByteArray(128, 0x3f), [&] {
        crypto_cipher_deinit(crypto_cipher_init(CipherTripleDes, bytesOf(Part), bytesOf(ones), ones.size()));
    });
    check("overlapping Base64", Part, [&] {
        unsigned size = 1;
        std::memcpy(bytes, Plaintext.constData(), std::size_t(Plaintext.size()));
        cl_base64Encode(bytes, unsigned(Plaintext.size()), bytes, &size);
    });
    check("random bytes", "rqqq", [&] { new (bytes) std::string(GetRandomBytes(1)); });

    Des3Schedule schedule;
    des3_key_setup(bytesOf(ones), &schedule);
    const std::string crypt = des3(Plaintext.toStdString(), ones.toStdString(), {}, true);
    ProcessorPaths::forEachAvailable(ProcessorPaths::tripleDes(), [&](const TripleDesCbc::Path& path) {
        const auto decrypt = [&] {
            unsigned char chain[8] = {};
            TripleDesCbc::decryptBitsliced(path, schedule, chain,
                                           reinterpret_cast<const unsigned char*>(crypt.data()), bytes, 128);
        };
        check(path.name, Part, decrypt);
        check(path.name, QByteArray(1024, '\xFF'), decrypt);
    });
}

QTEST_GUILESS_MAIN(TestProtectedDataFaults)
#include "tst_protecteddatafaults_unix.moc"
