// Triple DES, SHA-256, Base64 and hexadecimal digits: published vectors, every implementation that the processor
// can run, invalid arguments.
#include "Bytes.h"
#include "VectorFile.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Sha256.h"

#include <QtEndian>
#include <QtTest>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <random>

namespace {

/// Fills memory that a function must leave unchanged.
constexpr char Guard = '#';

QByteArray randomBytes(int size)
{
    static std::mt19937 generator(4711);
    QByteArray bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [] { return char(generator()); });
    return bytes;
}

using Context = std::unique_ptr<CipherContext, decltype(&crypto_cipher_deinit)>;

Context makeContext(const QByteArray& key, const QByteArray& iv)
{
    return {crypto_cipher_init(CipherTripleDes, bytesOf(iv), bytesOf(key), key.size()), crypto_cipher_deinit};
}

/// Without a vector every block stands alone.
QByteArray tripleDes(const QByteArray& in, const QByteArray& key, const QByteArray& iv, bool encrypts)
{
    QByteArray out(in.size(), '\0');
    if (!iv.isEmpty())
        (encrypts ? crypto_cipher_encrypt : crypto_cipher_decrypt)(makeContext(key, iv).get(), bytesOf(in),
                                                                   bytesOf(out), in.size());
    Des3Schedule schedule;
    des3_key_setup(bytesOf(key), &schedule);
    for (int at = 0; iv.isEmpty() && at < in.size(); at += 8)
        (encrypts ? des3_encrypt : des3_decrypt)(bytesOf(in) + at, &schedule, bytesOf(out) + at);
    return out;
}

} // namespace

class TestCiphers : public QObject
{
    Q_OBJECT

private slots:
    void tripleDesVectors();
    void decryption();
    void chainAndBuffers();
    void sha256Vectors();
    void sha256Lengths();
    void sha256Paths();
    void base64();
    void base64Paths();
    void hexPaths();
    void invalidArguments();
};

void TestCiphers::tripleDesVectors()
{
    QVector<VectorCase> cases;
    for (const char* name : {"MMT1", "MMT2", "MMT3", "invperm", "permop", "subtab", "varkey", "vartext"}) {
        for (const char* mode : {"CBC", "ECB"})
            cases += readVectors(QString("ciphers/3DES/%1/T%1%2.rsp").arg(mode, name));
    }
    QCOMPARE(cases.size(), 2 * (20 + 20 + 20 + 128 + 64 + 38 + 112 + 128));
    for (const VectorCase& test : cases) {
        const QByteArray key =
            test.bytes("KEYs").repeated(3) + test.bytes("KEY1") + test.bytes("KEY2") + test.bytes("KEY3");
        const bool encrypts = test["["] == "[ENCRYPT]";
        const QByteArray in = test.bytes(encrypts ? "PLAINTEXT" : "CIPHERTEXT");
        const QByteArray out = tripleDes(in, key, test.bytes("IV"), encrypts);
        QCOMPARE(out.toHex(), test[encrypts ? "CIPHERTEXT" : "PLAINTEXT"]);
    }
}

// All implementations of decryption undo the one of encryption, in place, and leave the same chain.
void TestCiphers::decryption()
{
#ifdef __x86_64__
    QVERIFY(ProcessorPaths::best(ProcessorPaths::tripleDes())); // else nothing is compared here
#endif
    for (const int blocks : {1, 2, 3, 4, 100, 127, 128, 129, 255, 256, 257, 511, 512, 513, 1100}) {
        const QByteArray plain = randomBytes(8 * blocks), iv = randomBytes(8), key = randomBytes(24);
        const QByteArray crypt = tripleDes(plain, key, iv, true);
        Des3Schedule schedule;
        des3_key_setup(bytesOf(key), &schedule);

        const auto check = [&](const char* name, auto decrypt) {
            QByteArray chain = iv, out = crypt + Guard;
            decrypt(schedule, bytesOf(chain), bytesOf(out), bytesOf(out), std::size_t(blocks));
            QVERIFY2(out == plain + Guard && chain == crypt.right(8), name);
        };
        check("tables", TripleDesCbc::decryptByTables);
        ProcessorPaths::forEachAvailable(ProcessorPaths::tripleDes(), [&](const TripleDesCbc::Path& path) {
            check(path.name, [&](auto&&... rest) { TripleDesCbc::decryptBitsliced(path, rest...); });
        });
    }
}

// Calls continue one chain, whatever their lengths; buffers may overlap in any way.
void TestCiphers::chainAndBuffers()
{
    constexpr int size = 3000;
    const QByteArray plain = randomBytes(size), key = randomBytes(24), iv = randomBytes(8);
    const QByteArray crypt = tripleDes(plain, key, iv, true);
    for (const int shift : {-1000, -8, -3, 0, 1, 16, 1000}) {
        const Context encrypting = makeContext(key, iv), decrypting = makeContext(key, iv);
        for (int at = 0, piece = 8; at < size; at += piece, piece = std::min(3 * piece, size - at)) {
            QByteArray memory(2000 + size, Guard);
            unsigned char* const in = bytesOf(memory) + 1000;
            std::memcpy(in, plain.constData() + at, std::size_t(piece));
            QCOMPARE(crypto_cipher_encrypt(encrypting.get(), in, in + shift, piece), 0);
            QCOMPARE(memory.mid(1000 + shift, piece), crypt.mid(at, piece));
            QCOMPARE(crypto_cipher_decrypt(decrypting.get(), in + shift, in, piece), 0);
            QCOMPARE(memory.mid(1000, piece), plain.mid(at, piece));
        }
    }
}

// In one call, which refuses an empty message, and in pieces.
void TestCiphers::sha256Vectors()
{
    const QVector<VectorCase> cases =
        readVectors("hashes/SHA2/SHA256ShortMsg.rsp") + readVectors("hashes/SHA2/SHA256LongMsg.rsp");
    QCOMPARE(cases.size(), 65 + 64);
    for (const VectorCase& test : cases) {
        const QByteArray message = test.bytes("Msg").left(test["Len"].toInt() / 8);
        const int size = message.size();
        QByteArray digest(int(Sha256DigestSize), Guard);
        QCOMPARE(sha256(bytesOf(message), unsigned(size), bytesOf(digest)), size == 0 ? -1 : 0);
        QCOMPARE(digest, size == 0 ? QByteArray(digest.size(), Guard) : test.bytes("MD"));
        for (const int piece : {1, 3, 63, 64, 65}) {
            Sha256Context context;
            Sha256_Init(&context);
            for (int at = 0; at < size; at += piece)
                Sha256_Update(&context, bytesOf(message) + at, std::size_t(std::min(piece, size - at)));
            Sha256_Final(&context, bytesOf(digest));
            QCOMPARE(digest, test.bytes("MD"));
        }
    }
}

// The last block ends with the length in bits, all 64 of them.
void TestCiphers::sha256Lengths()
{
    Sha256Context context, compressed;
    Sha256_Init(&context);
    compressed = context;
    context.length = 0x0123456789abce00 / 8; // as if so many bytes had been hashed
    QByteArray digest(int(Sha256DigestSize), '\0'), expected = digest;
    Sha256_Final(&context, bytesOf(digest));
    const QByteArray block = "\x80" + QByteArray(55, '\0') + QByteArray::fromHex("0123456789abce00");
    Sha256Blocks::compressPortable(compressed.state, bytesOf(block), 1);
    qToBigEndian<quint32>(compressed.state, 8, expected.data());
    QCOMPARE(digest, expected);
}

void TestCiphers::sha256Paths()
{
    const QByteArray blocks = randomBytes(64 * 7);
    ProcessorPaths::forEachAvailable(ProcessorPaths::sha256(), [&](const Sha256Blocks::Path& path) {
        for (std::size_t count = 0; count <= 7; ++count) {
            std::array<std::uint32_t, 8> expected{1, 2, 3, 4, 5, 6, 7, 8}, state = expected;
            Sha256Blocks::compressPortable(expected.data(), bytesOf(blocks), count);
            path.compress(state.data(), bytesOf(blocks), count);
            QVERIFY2(state == expected, path.name);
        }
    });
}

// Also when output and input overlap. The stated lengths do not matter, nothing terminates the output.
void TestCiphers::base64()
{
    const auto check = [](auto code, const QByteArray& in, int length, const QByteArray& out) {
        for (const int shift : {0, 4, 40}) {
            QByteArray memory = (in + '\0').leftJustified(100, Guard);
            const QByteArray expected = QByteArray(memory).replace(shift, out.size(), out);
            unsigned size = 1;
            const int result = code(bytesOf(memory), length, bytesOf(memory) + shift, &size);
            QVERIFY2(result == (out.isEmpty() ? -1 : 0) && int(size) == out.size() && memory == expected, in);
        }
    };
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"Zm9vYg==", "666f6f62"}, // from RFC 4648
        {"Zm9vYmE=", "666f6f6261"},
        // What only decoding accepts
        {"QUJDRA", "414243"}, // no padding: the tail is ignored
        {"QUJDRA=", "4142"},  // one "=" too few: no second group, but a byte is taken off
        {"QUJDRA===", "41424344"},
        {"QUJD==", "41"},
        {"QUJDREVG=UJD", "4142434445"},
        {"QU!D", "010503"}, // outside the alphabet: three values in 18 bits
        {"QUJD!\xE4JDQUJD", "414243000243414243"},
        {"Q!==", "01"},
    };
    for (const auto& [text, digits] : rows) {
        const QByteArray bytes = QByteArray::fromHex(digits);
        for (const int length : {-1, 1})
            check(cl_base64Decode, text, length, bytes);
        if (bytes.toBase64() == text)
            check(cl_base64Encode, bytes, bytes.size(), text);
    }
    for (const char* text : {"QUJ", "Q=", "QQ=", "=", "==", "====", "=QUJD", ""})
        check(cl_base64Decode, text, -1, {});
}

// Every implementation gives what the portable one does and writes nothing outside, for clean and dirty strings.
void TestCiphers::base64Paths()
{
    const auto decoded = [](const Base64Groups::Path* path, const QByteArray& text, int size) {
        QByteArray bytes(size + 1, Guard);
        Base64Groups::decode(path, bytesOf(text), bytesOf(bytes), std::size_t(size));
        return bytes;
    };
    ProcessorPaths::forEachAvailable(ProcessorPaths::base64(), [&decoded](const Base64Groups::Path& path) {
        for (int size = 0; size < 200; ++size) {
            const QByteArray bytes = randomBytes(size), expected = bytes.toBase64() + Guard;
            QByteArray text(expected.size(), Guard);
            Base64Groups::encode(&path, bytesOf(bytes), std::size_t(size), bytesOf(text));
            QVERIFY2(text == expected && decoded(&path, text, size) == bytes + Guard, path.name);
            for (const int clean : {1, 4, 40}) { // from every character on average to few
                for (int at = 0; at < text.size() - 3; at += 1 + quint8(randomBytes(1).at(0)) % clean)
                    text[at] = randomBytes(1).replace('=', '!').at(0); // the first "=" ends the text
                QVERIFY2(decoded(&path, text, size) == decoded(nullptr, text, size), path.name);
            }
        }
    });
}

// All pairs of characters, digits or not, and every length.
void TestCiphers::hexPaths()
{
    QByteArray allPairs;
    for (int pair = 0; pair < 256 * 256; ++pair)
        allPairs.append(char(pair >> 8)).append(char(pair));
    const auto decoded = [](const Hex::Path* path, const QByteArray& digits) {
        QByteArray bytes((digits.size() + 1) / 2 + 1, Guard);
        Hex::decode(path, digits.constData(), std::size_t(digits.size()), bytesOf(bytes));
        return bytes;
    };
    ProcessorPaths::forEachAvailable(ProcessorPaths::hex(), [&](const Hex::Path& path) {
        QVERIFY2(decoded(&path, allPairs) == decoded(nullptr, allPairs), path.name);
        for (int size = 0; size < 70; ++size) {
            const QByteArray bytes = randomBytes(size), digits = bytes.toHex().toUpper();
            QByteArray text = QByteArray(size, Guard) + bytes + Guard; // converted in place
            Hex::encode(&path, bytesOf(text) + size, std::size_t(size), text.data());
            QVERIFY2(text == digits + Guard && decoded(&path, digits) == bytes + Guard &&
                         decoded(&path, digits + 'A') == bytes + '\xA0' + Guard,
                     path.name);
        }
    });
}

void TestCiphers::invalidArguments()
{
    const QByteArray bytes = randomBytes(24), guard(32, Guard);
    QByteArray out = guard;
    const unsigned char* const in = bytesOf(bytes);
    QVERIFY(!crypto_cipher_init(1, in, in, 24) && !crypto_cipher_init(CipherTripleDes, in, in, 16));
    QVERIFY(!crypto_cipher_init(CipherTripleDes, nullptr, in, 24));
    QVERIFY(!crypto_cipher_init(CipherTripleDes, in, nullptr, 24));
    crypto_cipher_deinit(nullptr);
    const Context context = makeContext(bytes, bytes);
    for (const auto process : {crypto_cipher_encrypt, crypto_cipher_decrypt}) {
        for (const int length : {12, -12, 0, -8, INT_MIN})
            QCOMPARE(process(context.get(), in, bytesOf(out), length), length % 8 == 0 ? 0 : -1);
        QCOMPARE(process(context.get(), nullptr, bytesOf(out), 8), -1);
        QCOMPARE(process(context.get(), in, nullptr, 8), -1);
        QCOMPARE(process(nullptr, in, bytesOf(out), 8), -1);
    }
    des3_key_setup(in, nullptr);
    for (const auto process : {des3_encrypt, des3_decrypt})
        process(in, nullptr, bytesOf(out));
    QVERIFY(sha256(nullptr, 3, bytesOf(out)) == -1 && sha256(in, 3, nullptr) == -1);
    Sha256Context context256{};
    Sha256_Final(&context256, nullptr);
    Sha256_Final(nullptr, bytesOf(out));
    const auto checkBase64 = [&](auto code) {
        unsigned sizes[] = {8, 8, 8, 0};
        QVERIFY(code(nullptr, 4, bytesOf(out), &sizes[0]) == 1 && sizes[0] == 0);
        QVERIFY(code(in, 4, nullptr, &sizes[1]) == 1 && sizes[1] == 0);
        QVERIFY(code(in, 0, bytesOf(out), &sizes[2]) == 1 && sizes[2] == 0);
        QCOMPARE(code(in, 4, bytesOf(out), &sizes[3]), 6);
        QVERIFY(code(in, 4, bytesOf(out), nullptr) == 1 && code(in, 0, bytesOf(out), &sizes[3]) == 1);
    };
    checkBase64(cl_base64Encode);
    checkBase64(cl_base64Decode);
    unsigned size = 8;
    QVERIFY(cl_base64Encode(in, 0xc0000000, bytesOf(out), &size) == -1 && size == 0); // gives 4 GiB
    QCOMPARE(out, guard);
}

QTEST_APPLESS_MAIN(TestCiphers)
#include "tst_ciphers.moc"
