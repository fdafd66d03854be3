// Triple DES, SHA-256, Base64 and hexadecimal digits: published vectors, every implementation that the processor
// can run, bad arguments.
#include "Bytes.h"
#include "DataTable.h"
#include "VectorFile.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Sha256.h"

#include <QtTest>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <utility>

namespace {

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

QByteArray digestOf(const QByteArray& message, int piece)
{
    QByteArray digest(int(Sha256DigestSize), '\0');
    Sha256Context context;
    Sha256_Init(&context);
    for (int at = 0; at < message.size(); at += piece)
        Sha256_Update(&context, bytesOf(message) + at, std::size_t(std::min(piece, message.size() - at)));
    Sha256_Final(&context, bytesOf(digest));
    return digest;
}

QByteArray chained(const QByteArray& in, const QByteArray& key, const QByteArray& iv, bool encrypts)
{
    const auto process = encrypts ? crypto_cipher_encrypt : crypto_cipher_decrypt;
    QByteArray out(in.size(), '\0');
    if (process(makeContext(key, iv).get(), bytesOf(in), bytesOf(out), in.size()) != 0)
        return {};
    return out;
}

QByteArray blockByBlock(const QByteArray& in, const QByteArray& key, bool encrypts)
{
    Des3Schedule schedule;
    des3_key_setup(bytesOf(key), &schedule);
    QByteArray out(in.size(), '\0');
    for (int at = 0; at < in.size(); at += 8)
        (encrypts ? des3_encrypt : des3_decrypt)(bytesOf(in) + at, &schedule, bytesOf(out) + at);
    return out;
}

/// Fills memory that a function must leave unchanged.
constexpr char Guard = '#';

} // namespace

class TestCiphers : public QObject
{
    Q_OBJECT

private slots:
    void tripleDesVectors_data();
    void tripleDesVectors();
    void decryption_data();
    void decryption();
    void chainAndBuffers();
    void contextFaults();
    void sha256Vectors_data();
    void sha256Vectors();
    void sha256Lengths();
    void sha256Paths();
    void base64_data();
    void base64();
    void base64Faults();
    void base64Paths();
    void hexPaths();
};

void TestCiphers::tripleDesVectors_data()
{
    const auto row = dataTable<int>("cases");
    const std::pair<const char*, int> files[] = {
        {"MMT1", 20},   {"MMT2", 20},   {"MMT3", 20},    {"invperm", 128},
        {"permop", 64}, {"subtab", 38}, {"varkey", 112}, {"vartext", 128},
    };
    for (const QString mode : {"CBC", "ECB"}) {
        for (const auto& [name, cases] : files)
            row(QString("%1/T%1%2.rsp").arg(mode, name).toLatin1(), cases);
    }
}

void TestCiphers::tripleDesVectors()
{
    const QString name = QTest::currentDataTag();
    const VectorFile file("ciphers/3DES/" + name);
    QTEST(file.cases.size(), "cases");
    for (const VectorFile::Case& test : file.cases) {
        const QByteArray one = test.bytes("KEYs");
        const QByteArray key =
            one.isEmpty() ? test.bytes("KEY1") + test.bytes("KEY2") + test.bytes("KEY3") : one.repeated(3);
        const bool encrypts = test.section == "[ENCRYPT]";
        const QByteArray in = test.bytes(encrypts ? "PLAINTEXT" : "CIPHERTEXT");
        QCOMPARE((name.startsWith("CBC") ? chained(in, key, test.bytes("IV"), encrypts)
                                         : blockByBlock(in, key, encrypts))
                     .toHex(),
                 test.values.value(encrypts ? "CIPHERTEXT" : "PLAINTEXT"));
    }
}

void TestCiphers::decryption_data()
{
    const auto row = dataTable<int>("blocks");
    for (const int blocks : {1, 2, 3, 4, 63, 100, 127, 128, 129, 255, 256, 257, 511, 512, 513, 1100})
        row(QByteArray::number(blocks), blocks);
}

// All implementations of decryption undo the one of encryption, in place as well, and leave the same chain.
void TestCiphers::decryption()
{
    QFETCH(const int, blocks);
    const QByteArray plain = randomBytes(8 * blocks), iv = randomBytes(8), key = randomBytes(24);
    QByteArray crypt(plain.size(), '\0');
    QCOMPARE(crypto_cipher_encrypt(makeContext(key, iv).get(), bytesOf(plain), bytesOf(crypt), plain.size()),
             0);
    Des3Schedule schedule;
    des3_key_setup(bytesOf(key), &schedule);

    const auto check = [&](const char* name, auto decrypt) {
        for (const bool isInPlace : {false, true}) {
            QByteArray chain = iv, out = (isInPlace ? crypt : QByteArray(crypt.size(), '\0')) + Guard;
            const auto* const in = isInPlace ? bytesOf(out) : bytesOf(crypt);
            decrypt(schedule, bytesOf(chain), in, bytesOf(out), std::size_t(blocks));
            QVERIFY2(out == plain + Guard, name);
            QVERIFY2(chain == crypt.right(8), name);
        }
    };
    check("tables", TripleDesCbc::decryptByTables);
    ProcessorPaths::forEachAvailable(ProcessorPaths::tripleDes(), [&check](const TripleDesCbc::Path& path) {
        check(path.name,
              [&path](auto&&... arguments) { TripleDesCbc::decryptBitsliced(path, arguments...); });
    });
}

// Calls continue one chain, whatever their lengths; buffers may overlap in any way.
void TestCiphers::chainAndBuffers()
{
    constexpr int Size = 3000;
    const QByteArray plain = randomBytes(Size), key = randomBytes(24), iv = randomBytes(8);
    QByteArray crypt(Size, '\0');
    const Context whole = makeContext(key, iv);
    QCOMPARE(crypto_cipher_encrypt(whole.get(), bytesOf(plain), bytesOf(crypt), Size), 0);

    for (const int shift : {-1000, -8, -3, 0, 1, 16, 1000}) {
        const Context encrypting = makeContext(key, iv), decrypting = makeContext(key, iv);
        for (int at = 0, piece = 8; at < Size; at += piece, piece = std::min(3 * piece, Size - at)) {
            QByteArray memory(2000 + Size, Guard);
            unsigned char* const in = bytesOf(memory) + 1000;
            std::memcpy(in, plain.constData() + at, std::size_t(piece));
            QCOMPARE(crypto_cipher_encrypt(encrypting.get(), in, in + shift, piece), 0);
            QCOMPARE(memory.mid(1000 + shift, piece), crypt.mid(at, piece));
            QCOMPARE(crypto_cipher_decrypt(decrypting.get(), in + shift, in, piece), 0);
            QCOMPARE(memory.mid(1000, piece), plain.mid(at, piece));
        }
    }
}

void TestCiphers::contextFaults()
{
    const QByteArray key = randomBytes(24), iv = randomBytes(8);
    QVERIFY(!crypto_cipher_init(1, bytesOf(iv), bytesOf(key), 24));
    QVERIFY(!crypto_cipher_init(CipherTripleDes, bytesOf(iv), bytesOf(key), 16));
    QVERIFY(!crypto_cipher_init(CipherTripleDes, nullptr, bytesOf(key), 24));
    QVERIFY(!crypto_cipher_init(CipherTripleDes, bytesOf(iv), nullptr, 24));
    crypto_cipher_deinit(nullptr);

    const Context context = makeContext(key, iv);
    for (const auto process : {crypto_cipher_encrypt, crypto_cipher_decrypt}) {
        QByteArray in(16, 'a'), out(16, Guard);
        for (const int length : {12, 1, -12, -1})
            QCOMPARE(process(context.get(), bytesOf(in), bytesOf(out), length), -1);
        for (const int length : {0, -8, INT_MIN})
            QCOMPARE(process(context.get(), nullptr, nullptr, length), 0);
        QCOMPARE(process(context.get(), nullptr, bytesOf(out), 8), -1);
        QCOMPARE(process(context.get(), bytesOf(in), nullptr, 8), -1);
        QCOMPARE(process(nullptr, bytesOf(in), bytesOf(out), 8), -1);
        QCOMPARE(out, QByteArray(16, Guard));
    }
    Des3Schedule schedule{};
    des3_key_setup(nullptr, &schedule);
    des3_key_setup(bytesOf(key), nullptr);
    QByteArray block(8, Guard);
    for (const auto process : {des3_encrypt, des3_decrypt}) {
        process(nullptr, &schedule, bytesOf(block));
        process(bytesOf(key), nullptr, bytesOf(block));
        process(bytesOf(key), &schedule, nullptr);
    }
    QCOMPARE(block, QByteArray(8, Guard));
}

void TestCiphers::sha256Vectors_data()
{
    const auto row = dataTable<int>("cases");
    row("SHA256ShortMsg.rsp", 65);
    row("SHA256LongMsg.rsp", 64);
}

void TestCiphers::sha256Vectors()
{
    const VectorFile file("hashes/SHA2/" + QString(QTest::currentDataTag()));
    int cases = 0;
    for (const VectorFile::Case& test : file.cases) {
        if (!test.values.contains("Msg"))
            continue;
        ++cases;
        const QByteArray message = test.bytes("Msg").left(test.values.value("Len").toInt() / 8);
        const QByteArray expected = test.values.value("MD");
        for (const int piece : {1, 3, 63, 64, 65, 1 << 20})
            QCOMPARE(digestOf(message, piece).toHex(), expected);
        QByteArray digest(int(Sha256DigestSize), Guard);
        QCOMPARE(sha256(bytesOf(message), unsigned(message.size()), bytesOf(digest)),
                 message.isEmpty() ? -1 : 0);
        QCOMPARE(digest, message.isEmpty() ? QByteArray(int(Sha256DigestSize), Guard)
                                           : QByteArray::fromHex(expected));
    }
    QTEST(cases, "cases");
    QCOMPARE(sha256(bytesOf(QByteArray("abc")), 3, nullptr), -1);
}

// The last block ends with the length in bits, all 64 of them.
void TestCiphers::sha256Lengths()
{
    Sha256Context context, compressed;
    Sha256_Init(&context);
    Sha256_Init(&compressed);
    Sha256_Init(nullptr);
    Sha256_Update(nullptr, context.block, 1);
    Sha256_Update(&context, nullptr, 1);
    Sha256_Final(nullptr, context.block);
    Sha256_Final(&context, nullptr);
    context.length = 0x0123456789abce00 / 8; // as if so many bytes had been hashed
    QByteArray digest(int(Sha256DigestSize), '\0'), expected;
    Sha256_Final(&context, bytesOf(digest));
    const QByteArray block =
        QByteArray(1, '\x80').leftJustified(56, '\0') + QByteArray::fromHex("0123456789abce00");
    Sha256Blocks::compressPortable(compressed.state, bytesOf(block), 1);
    for (const quint32 word : compressed.state)
        expected += QByteArray::number(word, 16).rightJustified(8, '0');
    QCOMPARE(digest.toHex(), expected);
}

void TestCiphers::sha256Paths()
{
    const QByteArray blocks = randomBytes(64 * 7), start = randomBytes(32);
    ProcessorPaths::forEachAvailable(ProcessorPaths::sha256(), [&](const Sha256Blocks::Path& path) {
        for (std::size_t count = 0; count <= 7; ++count) {
            std::uint32_t expected[8], state[8];
            std::memcpy(expected, start.constData(), sizeof expected);
            std::memcpy(state, start.constData(), sizeof state);
            Sha256Blocks::compressPortable(expected, bytesOf(blocks), count);
            path.compress(state, bytesOf(blocks), count);
            QVERIFY2(std::equal(state, state + 8, expected), path.name);
        }
    });
}

void TestCiphers::base64_data()
{
    const auto add = dataTable<QByteArray, QByteArray>("text", "bytes");
    const auto row = [&add](const char* text, const char* digits) {
        add(text, text, digits ? QByteArray::fromHex(digits) : QByteArray());
    };
    row("Zg==", "66"); // from RFC 4648
    row("Zm8=", "666f");
    row("Zm9v", "666f6f");
    row("Zm9vYg==", "666f6f62");
    row("Zm9vYmE=", "666f6f6261");
    row("Zm9vYmFy", "666f6f626172");
    row("AA==", "00");
    row("++++////", "fbefbeffffff");
    // What only decoding accepts
    row("QUJDRA", "414243"); // no padding: the tail is ignored
    row("QUJDRA=", "4142");  // one "=" too few: no second group, but a byte is taken off
    row("QUJDRA===", "41424344");
    row("QUJD=", "4142");
    row("QUJD==", "41");
    row("QUJDREVG=UJD", "4142434445");
    row("QQ==QUJD", "41");
    row("QU!D", "010503"); // outside the alphabet: three values in 18 bits
    row("!!!!", "000000");
    row("!UJD", "014243");
    row("Q\n\r\t", "000010");
    row("\xC4\xD6\xDC\xFF", "000000");
    row("QUJD!\xE4JDQUJD", "414243000243414243");
    row("Q!==", "01");
    for (const char* text : {"Q", "QUJ", "Q=", "QQ=", "=", "==", "====", "=QUJD", ""})
        row(text, nullptr);
}

// Also when output and input overlap. The stated lengths do not matter, nothing terminates the output.
void TestCiphers::base64()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, bytes); // null: no result
    const auto check = [](auto code, const QByteArray& in, int length, const QByteArray& out) {
        for (const int shift : {0, 1, 40}) {
            QByteArray memory = (in + '\0').leftJustified(100, Guard);
            const QByteArray expected = QByteArray(memory).replace(shift, out.size(), out);
            unsigned size = 1;
            QCOMPARE(code(bytesOf(memory), length, bytesOf(memory) + shift, &size), out.isNull() ? -1 : 0);
            QCOMPARE(int(size), out.size());
            QCOMPARE(memory, expected);
        }
    };
    check(cl_base64Decode, text, -1, bytes);
    if (bytes.toBase64() == text && !text.isEmpty())
        check(cl_base64Encode, bytes, bytes.size(), text);
}

void TestCiphers::base64Faults()
{
    const auto check = [](auto code) {
        QByteArray in("QUJD"), out(8, Guard);
        const auto coded = [code](const QByteArray* from, int length, QByteArray* to, unsigned size) {
            const int result =
                code(from ? bytesOf(*from) : nullptr, length, to ? bytesOf(*to) : nullptr, &size);
            return std::pair(result, size);
        };
        QCOMPARE(coded(nullptr, 4, &out, 8), std::pair(1, 0u));
        QCOMPARE(coded(&in, 4, nullptr, 8), std::pair(1, 0u));
        QCOMPARE(coded(&in, 0, &out, 8), std::pair(1, 0u));
        QCOMPARE(coded(&in, 4, &out, 0), std::pair(6, 0u));
        QCOMPARE(code(bytesOf(in), 4, bytesOf(out), nullptr), 1);
        QCOMPARE(out, QByteArray(8, Guard));
    };
    check(cl_base64Encode);
    check(cl_base64Decode);
}

// Every implementation gives what the portable one does and writes nothing outside, for clean and dirty texts.
void TestCiphers::base64Paths()
{
    const auto decode = [](const Base64Groups::Path* path, const QByteArray& text, QByteArray& bytes) {
        Base64Groups::decode(path, bytesOf(text), bytesOf(bytes),
                             std::size_t(bytes.size() - 1)); // behind them is the guard
    };
    ProcessorPaths::forEachAvailable(ProcessorPaths::base64(), [&decode](const Base64Groups::Path& path) {
        for (int size = 0; size < 200; ++size) {
            const int textSize = (size + 2) / 3 * 4;
            const QByteArray bytes = randomBytes(size);
            QByteArray expected(textSize, '\0'), text(textSize + 1, Guard), back(size + 1, Guard);
            Base64Groups::encode(nullptr, bytesOf(bytes), std::size_t(size), bytesOf(expected));
            Base64Groups::encode(&path, bytesOf(bytes), std::size_t(size), bytesOf(text));
            QVERIFY2(text == expected + Guard, path.name);
            decode(&path, expected, back);
            QVERIFY2(back == bytes + Guard, path.name);

            for (const int clean : {1, 4, 40}) { // from every character on average to few
                for (int at = 0; at < textSize - 2; at += 1 + quint8(randomBytes(1).at(0)) % clean) {
                    const char character = randomBytes(1).at(0);
                    expected[at] = character == '=' ? '!' : character; // the first one ends the text
                }
                QByteArray portable(size + 1, Guard), dirty(size + 1, Guard);
                decode(nullptr, expected, portable);
                decode(&path, expected, dirty);
                QVERIFY2(dirty == portable, path.name);
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
            const QByteArray bytes = randomBytes(size), expected = bytes.toHex().toUpper() + Guard;
            QByteArray digits(2 * size + 1, Guard);
            Hex::encode(&path, bytesOf(bytes), std::size_t(size), digits.data());
            const bool isBack = decoded(&path, digits.left(2 * size)) == bytes + Guard &&
                                decoded(&path, digits) == bytes + '\0' + Guard; // "#" counts as 0
            QByteArray inPlace = QByteArray(size, Guard) + bytes + Guard;
            Hex::encode(&path, bytesOf(inPlace) + size, std::size_t(size), inPlace.data());
            QVERIFY2(digits == expected && inPlace == expected && isBack, path.name);
        }
    });
}

QTEST_APPLESS_MAIN(TestCiphers)
#include "tst_ciphers.moc"
