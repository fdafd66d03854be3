// Byte strings, protected strings and files, device identities.
#include "CoreTest.h"
#include "ErrorCapture.h"
#include "ProtectedString.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"

#include <QDir>

#include <algorithm>
#include <tuple>
#include <utility>

class TestProtectedData : public CoreTest
{
    Q_OBJECT

private slots:
    void tripleDes();
    void hex();
    void trim();
    void randomBytes();
    void textsComeBack();
    void noResult();
    void files();
    void filesComeBack();
    void fileFaults();
    void imeiTokens();
    void imsi();

private:
    /// Runs FileCrypt() and returns what it wrote to standard error.
    QByteArray fileCrypt(int operation, const QString& input, const QString& output)
    {
        int result = 1;
        const QByteArray error = errorOutput(path("stderr"), [&] {
            result = CommonUtils::FileCrypt(operation, QFile::encodeName(QDir::toNativeSeparators(input)),
                                            QFile::encodeName(output));
        });
        return result == 0 ? error : "not 0";
    }

    /// @return the file's path
    QString write(const QString& name, const QByteArray& content) const
    {
        writeFile(path(name), content);
        return path(name);
    }
};

// Text, key and vector are padded with zeros, the latter two also cut. The result is that of an independent program.
void TestProtectedData::tripleDes()
{
    const std::string half("0123456789abcdef"), iv("vector"), zeros(8, '\0');
    const std::string crypt = des3("Skylume!", half, iv, true);
    QCOMPARE(QByteArray::fromStdString(StrToHex(crypt)), QByteArray("024FE32D0F7C97C5"));
    QVERIFY(crypt == des3("Skylume!", half + zeros + "more", iv + std::string(2, '\0') + "more", true));
    for (const auto& [length, filled] : {std::pair{0, 0}, {1, 8}, {8, 8}, {9, 16}, {5001, 5008}}) {
        const std::string text(std::size_t(length), 'x'),
            padded = text + std::string(std::size_t(filled - length), '\0');
        QVERIFY(des3(des3(text, half, iv, true), half, iv, false) == padded);
    }
}

void TestProtectedData::hex()
{
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"0AFf", "0aff"},
        {"0G1", "0010"}, // the position of a character matters, digit or not
        {"@`/:gG19", "00000019"},
        {QByteArray("1\0\xB1\xE1", 4) + '2', "100020"}};
    for (const auto& [digits, bytes] : rows) {
        QCOMPARE(QByteArray::fromStdString(HexToStr(digits.toStdString())).toHex(), bytes);
        QCOMPARE(QByteArray::fromStdString(StrToHex(QByteArray::fromHex(bytes).toStdString())),
                 bytes.toUpper());
    }
}

void TestProtectedData::trim()
{
    const std::tuple<QByteArray, const char*, const char*, QByteArray> rows[] = {
        {"\t a c \r\n", nullptr, nullptr, "a c"},
        {QByteArray("\0a\0b \0\0", 7), nullptr, nullptr, QByteArray("\0a\0b", 4)}, // zeros at the end only
        {QByteArray("  \0", 3), nullptr, nullptr, ""},
        {QByteArray(3, '\0'), nullptr, nullptr, ""},
        {QByteArray(" abc \0", 6), "", "", " abc "},
        {"xyabcyx", "x", "xy", "yabc"},
        {"abcdd", "abc", "cd", ""}, // the sets meet
        {"xax ", "x", nullptr, "ax"},
        {" xax", nullptr, "x", "xa"},
    };
    for (const auto& [text, left, right, trimmed] : rows)
        QCOMPARE(QByteArray::fromStdString(TrimStr(text.toStdString(), left, right)), trimmed);
}

void TestProtectedData::randomBytes()
{
    for (const auto& [count, size] : {std::pair{-1, 0}, {1, 1}, {8, 8}, {129, 128}, {INT_MAX, 128}})
        QCOMPARE(int(GetRandomBytes(count).size()), size);
    QVERIFY(GetRandomBytes(8) != GetRandomBytes(8));
}

void TestProtectedData::textsComeBack()
{
    for (const QByteArray& text : {QByteArray(), QByteArray(7, 'x'), QByteArray(8, 'x'), QByteArray(9, 'x'),
                                   QByteArray(300001, 'x'), QByteArray(" \t\x01\x7F\xC3\xA4\xFF \n")}) {
        const QByteArray digits = converted(CommonUtils::Encrypt, text);
        QCOMPARE(digits.size(), 16 + (text.size() + 7) / 8 * 16);
        QCOMPARE(QByteArray::fromHex(digits).toHex().toUpper(), digits);
        QVERIFY(digits != converted(CommonUtils::Encrypt, text));
        QCOMPARE(converted(CommonUtils::Decrypt, digits.toLower()), text);
        for (const int size : {15, 16, 17, 31, digits.size()}) { // truncated
            const std::string cut = HexToStr(digits.left(size).toStdString());
            QCOMPARE(converted(CommonUtils::Decrypt, digits.left(size)),
                     QByteArray(des3(cut.substr(8), PassPhrase, cut.substr(0, 8), false).c_str()));
        }
    }
}

void TestProtectedData::noResult()
{
    for (const char* const text : {"", "12345678901234"})
        QVERIFY(converted(CommonUtils::Decrypt, text).isNull());
    QVERIFY(!converted(CommonUtils::Decrypt, "123456789012345").isNull());
    QCOMPARE(log().lines(), QStringList({"out of range exception", "out of range exception"}));
    for (const auto operation : {CommonUtils::Encrypt, CommonUtils::Decrypt}) {
        QVERIFY(converted(operation, nullptr).isNull());
        QVERIFY(converted(operation, "1234567890123456", nullptr).isNull());
    }
}

void TestProtectedData::files()
{
    const QString prefix = "{time}: {file}: FileCrypt:", empty = prefix + "size is negative";
    const QByteArray ofAbc = "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=",
                     zeros = QByteArray(43, 'A') + '=';
    const std::tuple<int, QByteArray, QByteArray, QStringList> rows[] = {
        {3, "abc", ofAbc, {}},
        {3, QByteArray("abc\0", 4) + QByteArray(300000, 'x'), ofAbc, {}},
        {3, QByteArray("\0abc", 4), zeros, {prefix + "Hashing Fail"}},
        {3, "", zeros, {empty, prefix + "Hashing Fail"}},
        {2, "", "", {empty, "out of range exception"}},
        {2, "30313233343536372928FF830B0DEAA2", "Skylume", {}}, // encrypted long ago
        {4, "abc", "old", {prefix + " 4 : Invalid operation parameter"}},
    };
    for (const auto& [operation, content, output, lines] : rows) {
        const QString input = write("in put", content), result = write("output", "old"),
                      canonical = "{n} : {*} : {file} : FileCrypt : PathCanonicalizeA worked, path : " +
                                  QDir::toNativeSeparators(input);
        log().clear();
        QCOMPARE(fileCrypt(operation, path("./sub/../in put"), result), QByteArray());
        QCOMPARE(contentOf(result), output);
        QCOMPARE(log().firstMissingInOrder(QStringList(canonical) + lines), QString());
        QCOMPARE(log().lines().size(), 1 + lines.size());
    }
}

// Through the same file, which is replaced, and never the same twice.
void TestProtectedData::filesComeBack()
{
    constexpr int piece = 128 * 1024; // converted at a time
    const std::pair<QByteArray, int> rows[] = {
        {"text\r\nwith lines\n\x1A", 18},
        {QByteArray("text\0more", 9), 4},
        {"", 0},
        {QByteArray("0123456789\n").repeated(100000), 1100000},
        {QByteArray(2 * piece, 'x'), 2 * piece},
        {QByteArray(piece - 1, 'x') + '\0' + QByteArray(2 * piece, 'y'), piece - 1},
    };
    for (const auto& [text, size] : rows) { // up to the first zero
        const QString file = write("file", text), other = path("other");
        QCOMPARE(fileCrypt(1, file, other), QByteArray());
        QCOMPARE(fileCrypt(1, file, file), QByteArray());
        QCOMPARE(contentOf(file).size(), 16 + (size + 7) / 8 * 16);
        QVERIFY(contentOf(file) != contentOf(other));
        QCOMPARE(fileCrypt(2, file, file), QByteArray());
        QCOMPARE(contentOf(file), text.left(size));

        // What is changed in the vector changes in the first block, here into a zero.
        QByteArray digits = contentOf(other), byte = QByteArray::fromHex(digits.mid(6, 2));
        byte[0] = char(byte.at(0) ^ text.leftJustified(4, '\0').at(3));
        QCOMPARE(fileCrypt(2, write("file", digits.replace(6, 2, byte.toHex())), file), QByteArray());
        QCOMPARE(contentOf(file), text.left(std::min(size, 3)));
    }
}

void TestProtectedData::fileFaults()
{
    const std::tuple<QString, QString, QByteArray> rows[] = {
        {path("missing"), "output", "File error"},
        {"", "output", "File error"},
        {path(QString(300, 'x')), "output", "File error"},
        {write("input", "abc"), "no/output", ""},
        {path("input"), ".", ""}, // a folder
    };
    for (const auto& [input, output, error] : rows) {
        for (const int operation : {1, 2, 3})
            QCOMPARE(fileCrypt(operation, input, path(output)), error);
    }
    QVERIFY(!QFile::exists(path("output")));
    log().clear();
    QCOMPARE(errorOutput(path("stderr"), [] { CommonUtils::FileCrypt(1, nullptr, nullptr); }),
             QByteArray("File error"));
    fileCrypt(3, "/" + QString(250, 'x'), path("output"));
    VERIFY_LOGGED_IN_ORDER("{n} : {*} : {file} : FileCrypt : Path canonicalization failed",
                           "{n} : {*} : {file} : FileCrypt : PathCanonicalizeA worked, path : {*}");
    QCOMPARE(log().lines().last().size(), 255);
}

void TestProtectedData::imeiTokens()
{
    const QString reverse = "[Handle_imei_reverse]", hash = "[Handle_imei_hash]",
                  success = reverse + "out success.\n", done = hash + "get out sucess.\n";
    const std::tuple<QByteArray, QByteArray, QStringList> rows[] = {
        {"490154203237518", "wYNik1fcPTKAPBB7kjipsZYV64i9oJ53Ll2WIf4d/Io=", {success, done}},
        {QByteArray(22, 'x') + 'y', "H8+RASTj8d0eRzCdlPAJd/HW2w1F7vaPTKLxdJl6ytg=", {success, done}},
        {QByteArray(24, 'x'), "", {reverse + "out_para_len error.\n", hash + "reverse imei failed.\n"}},
        {"", "", {success, hash + "hash imei failed.\n"}},
    };
    for (const auto& [imei, token, lines] : rows) {
        QByteArray buffer(60, '#');
        log().clear();
        QCOMPARE(CommonUtils::Handle_IMEI_Hash(imei, buffer.data()), !token.isEmpty());
        QCOMPARE(log().lines(), QStringList(reverse + "enter.\n") + lines);
        QCOMPARE(buffer, token.leftJustified(60, '#'));
    }
    log().clear();
    char token[45] = "";
    QVERIFY(!CommonUtils::Handle_IMEI_Hash(nullptr, token) && !CommonUtils::Handle_IMEI_Hash("1", nullptr));
    QCOMPARE(log().lines(), QStringList({hash + "null para.\n", hash + "null para.\n"}));
}

void TestProtectedData::imsi()
{
    const QString failure = "<========= {time}: {file}: getIMSI: QRVL_DevSrv_GetImsiInfo success";
    service().setImsi("262011234567890\xC3\xA4");
    QCOMPARE(CommonUtils::getIMSI(), QString::fromUtf8("262011234567890\xC3\xA4"));
    QVERIFY(!log().contains(failure));
    service().setResult("QRVL_DevSrv_GetImsiInfo", 3);
    QCOMPARE(CommonUtils::getIMSI(), QString());
    VERIFY_LOGGED_IN_ORDER("{file}: getIMSI: called", failure);
}

QTEST_GUILESS_MAIN(TestProtectedData)
#include "tst_protecteddata.moc"
