// What OpenSSL makes of random data, and a random source that fails.
#include "CoreTest.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"

#include <openssl/des.h>
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <sys/random.h>

#include <cstring>
#include <random>

namespace {

constexpr int Unlimited = -1;
int drawsLeft = Unlimited;

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

class TestCipherPeers : public CoreTest
{
    Q_OBJECT

private slots:
    void likeOpenSsl_data();
    void likeOpenSsl();
    void failingRandomSource();
};

void TestCipherPeers::likeOpenSsl_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {8, 16, 24, 64, 136, 1016, 1024, 2048, 2056, 4096, 5000, 65536})
        QTest::addRow("%d", length) << length;
}

void TestCipherPeers::likeOpenSsl()
{
    QFETCH(const int, length);
    std::mt19937 generator{unsigned(length)};
    const auto random = [&generator](int size) {
        std::string bytes(std::size_t(size), '\0');
        for (char& byte : bytes)
            byte = char(generator());
        return bytes;
    };
    const auto bytesOf = [](auto& text) {
        return reinterpret_cast<const unsigned char*>(text.data());
    };
    for (int round = 0; round < 10; ++round) {
        const std::string data = random(length);
        std::string key = random(24);
        DES_key_schedule keys[3];
        for (int i = 0; i < 3; ++i)
            DES_set_key_unchecked(reinterpret_cast<const_DES_cblock*>(&key[std::size_t(8 * i)]), &keys[i]);
        for (const bool encrypts : {true, false}) {
            std::string expected(data.size(), '\0'), iv = random(8), chain = iv;
            DES_ede3_cbc_encrypt(bytesOf(data), reinterpret_cast<unsigned char*>(&expected[0]), length,
                                 &keys[0], &keys[1], &keys[2], reinterpret_cast<DES_cblock*>(&chain[0]),
                                 encrypts);
            QVERIFY(des3(data, key, iv, encrypts) == expected);
        }

        unsigned char digest[32], expectedDigest[32];
        const std::size_t size = data.size() - std::size_t(round % 7);
        QCOMPARE(sha256(bytesOf(data), unsigned(size), digest), 0);
        SHA256(bytesOf(data), size, expectedDigest);
        QVERIFY(std::memcmp(digest, expectedDigest, 32) == 0);

        std::string text(data.size() * 2, '\0'), expectedText(data.size() * 2, '\0'), back(data.size(), '\0');
        unsigned written = 1, read = 1;
        QCOMPARE(cl_base64Encode(bytesOf(data), unsigned(size), reinterpret_cast<unsigned char*>(&text[0]),
                                 &written),
                 0);
        QCOMPARE(int(written), EVP_EncodeBlock(reinterpret_cast<unsigned char*>(&expectedText[0]),
                                               bytesOf(data), int(size)));
        QVERIFY(text == expectedText);
        QCOMPARE(cl_base64Decode(bytesOf(text), 1, reinterpret_cast<unsigned char*>(&back[0]), &read), 0);
        QVERIFY(back.substr(0, read) == data.substr(0, size));
    }
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

QTEST_GUILESS_MAIN(TestCipherPeers)
#include "tst_cipherpeers_unix.moc"
