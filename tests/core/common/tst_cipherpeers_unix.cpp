// What OpenSSL and Python make of random data.
#include "Bytes.h"
#include "DataTable.h"
#include "common/ByteStrings.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QtTest>

#include <openssl/des.h>
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <algorithm>
#include <random>

class TestCipherPeers : public QObject
{
    Q_OBJECT

private slots:
    void likeOpenSsl_data();
    void likeOpenSsl();
    void likePython();
};

namespace {

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

void TestCipherPeers::likeOpenSsl_data()
{
    const auto row = dataTable<QByteArray>("data");
    std::mt19937 generator(4711);
    for (const int length : {1, 2, 8, 15, 24, 64, 136, 1016, 1024, 2048, 2056, 4096, 5000, 65536}) {
        QByteArray data(length, '\0');
        std::generate(data.begin(), data.end(), [&generator] { return char(generator()); });
        row(QByteArray::number(length), data);
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

QTEST_GUILESS_MAIN(TestCipherPeers)
#include "tst_cipherpeers_unix.moc"
