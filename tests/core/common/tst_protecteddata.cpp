// Byte strings, protected texts and files, device identities.
#include "CoreTest.h"
#include "DataTable.h"
#include "ErrorCapture.h"
#include "LogOrder.h"
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"

#include <QDir>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

using Result = std::unique_ptr<char, decltype(&CommonUtils::CryptLocalFree)>;

/// What an operation of CommonUtils gives; null for no result.
Result transformed(void (*operation)(const char*, const char*, char*&), const char* text,
                   const char* passPhrase)
{
    char* result = nullptr;
    operation(text, passPhrase, result);
    return {result, CommonUtils::CryptLocalFree};
}

} // namespace

class TestProtectedData : public CoreTest
{
    Q_OBJECT

private slots:
    void des3Lengths_data();
    void des3Lengths();
    void des3Keys();
    void hex_data();
    void hex();
    void trim_data();
    void trim();
    void randomBytes_data();
    void randomBytes();
    void textsComeBack_data();
    void textsComeBack();
    void textsThatAreNoResult();
    void files_data();
    void files();
    void filesComeBack_data();
    void filesComeBack();
    void fileFaults_data();
    void fileFaults();
    void longPathLine();
    void imeiTokens_data();
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

    static QByteArray content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return file.fileName();
    }
};

void TestProtectedData::des3Lengths_data()
{
    const auto row = dataTable<int, int>("length", "filled");
    for (const auto& [length, filled] : {std::pair{0, 0}, {1, 8}, {8, 8}, {9, 16}, {5001, 5008}})
        row(QByteArray::number(length), length, filled);
}

void TestProtectedData::des3Lengths()
{
    QFETCH(const int, length);
    QFETCH(const int, filled);
    const std::string text(std::size_t(length), 'x'), zeros(std::size_t(filled - length), '\0');
    const std::string crypt = des3(text, "key", "iv", true);
    QCOMPARE(int(crypt.size()), filled);
    QVERIFY(filled == 0 || crypt != text + zeros);
    QVERIFY(des3(crypt, "key", "iv", false) == text + zeros);
}

// Keys and vectors are padded with zeros or cut, nothing else. The result is that of an independent program.
void TestProtectedData::des3Keys()
{
    const std::string half("0123456789abcdef"), iv("vector"), zeros(8, '\0');
    const std::string crypt = des3("Skylume!", half, iv, true);
    QCOMPARE(QByteArray::fromStdString(StrToHex(crypt)), QByteArray("024FE32D0F7C97C5"));
    QVERIFY(crypt == des3("Skylume!", half + zeros, iv + zeros, true));
    QVERIFY(crypt == des3("Skylume!", half + zeros + "more", iv + std::string(2, '\0') + "more", true));
    QVERIFY(crypt != des3("Skylume!", half + half.substr(0, 8), iv, true));
    QVERIFY(crypt == des3("Skylume!", "1032547698`cbedg", iv, true)); // the parity bits have no effect
}

void TestProtectedData::hex_data()
{
    const auto add = dataTable<QByteArray, QByteArray>("digits", "bytes");
    const auto row = [&add](const QByteArray& digits, const QByteArray& bytes) {
        add(digits, digits, bytes);
    };
    row("", "");
    row("0AFF", "\x0A\xFF");
    row("0aFf", "\x0A\xFF");
    row("0G1", QByteArray("\0\x10", 2)); // the place of a character counts, digit or not
    row("G1G", QByteArray("\x01\0", 2));
    row("A", "\xA0");
    row("@`/:gG19", QByteArray("\0\0\0\x19", 4));
    row(QByteArray("1\0\xB1\xE1"
                   "2",
                   5),
        QByteArray("\x10\0\x20", 3));
}

void TestProtectedData::hex()
{
    QFETCH(const QByteArray, digits);
    QFETCH(const QByteArray, bytes);
    QCOMPARE(QByteArray::fromStdString(HexToStr(digits.toStdString())), bytes);
    QCOMPARE(QByteArray::fromStdString(StrToHex(bytes.toStdString())), bytes.toHex().toUpper());
}

void TestProtectedData::trim_data()
{
    using Bytes = QByteArray;
    const auto row = dataTable<Bytes, Bytes, Bytes, Bytes>("text", "left", "right", "trimmed");
    row("blanks", "\t abc \r\n", {}, {}, "abc");
    row("inside", "a b", {}, {}, "a b");
    row("blanks only", "   ", {}, {}, "");
    row("empty", "", {}, {}, "");
    row("zeros at the end", QByteArray("abc \0\0", 6), {}, {}, "abc");
    row("zeros elsewhere", QByteArray("\0a\0b\0", 5), {}, {}, QByteArray("\0a\0b", 4));
    row("zeros only", QByteArray(3, '\0'), {}, {}, "");
    row("blanks and zeros", QByteArray("  \0", 3), {}, {}, "");
    row("no characters", QByteArray(" abc \0", 6), "", "", " abc ");
    row("other characters", "xyabcyx", "x", "xy", "yabc");
    row("sets that meet", "abcdd", "abc", "cd", "");
}

void TestProtectedData::trim()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, left); // null: blanks
    QFETCH(const QByteArray, right);
    const auto set = [](const QByteArray& characters) {
        return characters.isNull() ? nullptr : characters.constData();
    };
    QTEST(QByteArray::fromStdString(TrimStr(text.toStdString(), set(left), set(right))), "trimmed");
}

void TestProtectedData::randomBytes_data()
{
    const auto row = dataTable<int, int>("count", "size");
    for (const auto& [count, size] :
         {std::pair{-1, 0}, {0, 0}, {1, 1}, {8, 8}, {129, 128}, {INT_MAX, 128}, {INT_MIN, 0}})
        row(QByteArray::number(count), count, size);
}

void TestProtectedData::randomBytes()
{
    QFETCH(const int, count);
    const std::string bytes = GetRandomBytes(count);
    QTEST(int(bytes.size()), "size");
    QVERIFY(bytes.size() < 8 || bytes != GetRandomBytes(count));
}

void TestProtectedData::textsComeBack_data()
{
    const auto row = dataTable<QByteArray>("text");
    for (const int length : {0, 7, 8, 9, 1000, 300001})
        row(QByteArray::number(length), QByteArray(length, 'x'));
    row("bytes of all kinds", " \t\x01\x7F\xC3\xA4\xFF \n");
}

void TestProtectedData::textsComeBack()
{
    QFETCH(const QByteArray, text);
    const Result first = transformed(CommonUtils::Encrypt, text, "pass phrase"),
                 second = transformed(CommonUtils::Encrypt, text, "pass phrase");
    const QByteArray digits(first.get());
    QCOMPARE(digits.size(), 16 + (text.size() + 7) / 8 * 16);
    QCOMPARE(QByteArray::fromHex(digits).toHex().toUpper(), digits);
    QVERIFY(digits != second.get());
    const std::string bytes = HexToStr(first.get());
    QCOMPARE(QByteArray(des3(bytes.substr(8), "pass phrase", bytes.substr(0, 8), false).c_str()), text);

    const auto decrypted = [](const QByteArray& from, const char* passPhrase) {
        return QByteArray(transformed(CommonUtils::Decrypt, from, passPhrase).get());
    };
    QCOMPARE(decrypted(digits.toLower(), "pass phrase"), text);
    QVERIFY(text.isEmpty() || decrypted(digits, "Pass phrase") != text);
    for (const int size : {15, 16, 17, 31, digits.size() - 1}) { // truncated
        const std::string cut = HexToStr(digits.left(size).toStdString());
        QCOMPARE(decrypted(digits.left(size), "pass phrase"),
                 QByteArray(des3(cut.substr(8), "pass phrase", bytes.substr(0, 8), false).c_str()));
    }
}

void TestProtectedData::textsThatAreNoResult()
{
    for (const char* const text : {"", "0", "12345678901234"}) {
        log().clear();
        QVERIFY(!transformed(CommonUtils::Decrypt, text, "key"));
        QCOMPARE(log().lines(QtDebugMsg), QStringList("out of range exception"));
    }
    for (const auto operation : {CommonUtils::Encrypt, CommonUtils::Decrypt}) {
        QVERIFY(!transformed(operation, nullptr, "key"));
        QVERIFY(!transformed(operation, "1234567890123456", nullptr));
    }
    CommonUtils::CryptLocalFree(nullptr);
}

void TestProtectedData::files_data()
{
    const auto row =
        dataTable<int, QByteArray, QByteArray, QString>("operation", "content", "output", "line");
    const QString failure = "{time}: {file}: FileCrypt:Hashing Fail",
                  empty = "{time}: {file}: FileCrypt:size is negative";
    const QByteArray ofAbc = "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=",
                     zeros = QByteArray(43, 'A') + '=';
    row("fingerprint", 3, "abc", ofAbc, "");
    row("fingerprint up to a zero", 3, QByteArray("abc\0def", 7), ofAbc, "");
    row("fingerprint of nothing", 3, QByteArray("\0abc", 4), zeros, failure);
    row("fingerprint of an empty file", 3, "", zeros, empty);
    row("nothing to decrypt", 2, "", "", empty);
    row("too short to decrypt", 2, "12345678901234", "", "out of range exception");
    row("encrypted long ago", 2, "30313233343536372928FF830B0DEAA2", "Skylume", "");
    for (const int operation : {0, 4, -1})
        row("operation " + QByteArray::number(operation), operation, "abc", {},
            QString("{time}: {file}: FileCrypt: %1 : Invalid operation parameter").arg(operation));
}

void TestProtectedData::files()
{
    QFETCH(const int, operation);
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArray, output); // null: the old one
    QFETCH(const QString, line);
    const QString input = write("in put", content), result = write("output", "old");
    QCOMPARE(fileCrypt(operation, path("./sub/../in put"), result), QByteArray());
    QVERIFY(log().contains("{n} : {*} : {file} : FileCrypt : PathCanonicalizeA worked, path : " +
                           QDir::toNativeSeparators(input)));
    QVERIFY(line.isEmpty() || log().contains(line));
    QCOMPARE(TestProtectedData::content(result), output.isNull() ? QByteArray("old") : output);
}

void TestProtectedData::filesComeBack_data()
{
    constexpr int Piece = 128 * 1024; // what is worked on at a time
    const auto row = dataTable<QByteArray, int>("text", "read");
    row("short", "text\r\nwith lines\n\x1A", 18);
    row("up to a zero", QByteArray("text\0more", 9), 4);
    row("empty", "", 0);
    row("long", QByteArray("0123456789\n").repeated(100000), 1100000);
    row("whole pieces", QByteArray(2 * Piece, 'x'), 2 * Piece);
    row("zero at a piece's end", QByteArray(Piece - 1, 'x') + '\0' + QByteArray(2 * Piece, 'y'), Piece - 1);
}

// Through the same file, which is replaced, and never the same twice.
void TestProtectedData::filesComeBack()
{
    QFETCH(const QByteArray, text);
    QFETCH(const int, read); // the length of what counts of it
    const QString file = write("file", text), other = path("other");
    QCOMPARE(fileCrypt(1, file, other), QByteArray());
    QCOMPARE(fileCrypt(1, file, file), QByteArray());
    QCOMPARE(content(file).size(), 16 + (read + 7) / 8 * 16);
    QVERIFY(content(file) != content(other));
    QCOMPARE(fileCrypt(2, file, file), QByteArray());
    QCOMPARE(content(file), text.left(read));

    // What is changed in the vector changes in the first block, here into a zero.
    QByteArray digits = content(other), byte = QByteArray::fromHex(digits.mid(6, 2));
    byte[0] = char(byte.at(0) ^ text.leftJustified(4, '\0').at(3));
    QCOMPARE(fileCrypt(2, write("file", digits.replace(6, 2, byte.toHex())), file), QByteArray());
    QCOMPARE(content(file), text.left(std::min(read, 3)));
}

void TestProtectedData::fileFaults_data()
{
    const auto row = dataTable<QString, QString, QByteArray>("input", "output", "error");
    row("no such file", "missing", "output", "File error");
    row("no name", "", "output", "File error");
    row("too long a name", QString(300, 'x'), "output", "File error");
    row("no such folder to write to", "input", "no/output", "");
    row("a folder to write to", "input", ".", "");
}

void TestProtectedData::fileFaults()
{
    QFETCH(const QString, input);
    QFETCH(const QString, output);
    QFETCH(const QByteArray, error);
    write("input", "abc");
    for (const int operation : {1, 2, 3})
        QCOMPARE(fileCrypt(operation, input.isEmpty() ? input : path(input), path(output)), error);
    QCOMPARE(errorOutput(path("stderr"), [] { CommonUtils::FileCrypt(1, nullptr, nullptr); }),
             QByteArray("File error"));
    QVERIFY(log().contains("{n} : {*} : {file} : FileCrypt : Path canonicalization failed"));
    QVERIFY(!QFile::exists(path("output")));
}

void TestProtectedData::longPathLine()
{
    fileCrypt(3, "/" + QString(250, 'x'), path("output"));
    const QStringList lines =
        log().lines("{n} : {*} : {file} : FileCrypt : PathCanonicalizeA worked, path : {*}");
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().size(), 255);
}

void TestProtectedData::imeiTokens_data()
{
    const auto row = dataTable<QByteArray, QByteArray, QStringList>("imei", "token", "lines");
    const QStringList begin{"[Handle_imei_reverse]enter.\n"},
        reversed = begin + QStringList{"[Handle_imei_reverse]out success.\n"},
        done = reversed + QStringList{"[Handle_imei_hash]get out sucess.\n"};
    row("15 digits", "490154203237518", "wYNik1fcPTKAPBB7kjipsZYV64i9oJ53Ll2WIf4d/Io=", done);
    row("longest", QByteArray(22, 'x') + 'y', "H8+RASTj8d0eRzCdlPAJd/HW2w1F7vaPTKLxdJl6ytg=", done);
    row("too long", QByteArray(24, 'x'), "",
        begin + QStringList{"[Handle_imei_reverse]out_para_len error.\n",
                            "[Handle_imei_hash]reverse imei failed.\n"});
    row("empty", "", "", reversed + QStringList{"[Handle_imei_hash]hash imei failed.\n"});
    row("null", {}, "", {"[Handle_imei_hash]null para.\n"});
}

void TestProtectedData::imeiTokens()
{
    QFETCH(const QByteArray, imei);
    QFETCH(const QByteArray, token);
    QByteArray buffer(60, '#');
    QCOMPARE(CommonUtils::Handle_IMEI_Hash(imei.isNull() ? nullptr : imei.constData(), buffer.data()),
             !token.isEmpty());
    QTEST(log().lines(QtDebugMsg), "lines");
    QCOMPARE(buffer, token.leftJustified(60, '#'));
    QVERIFY(!CommonUtils::Handle_IMEI_Hash("1", nullptr));
}

void TestProtectedData::imsi()
{
    const QString failure = "<========= {time}: {file}: getIMSI: QRVL_DevSrv_GetImsiInfo success";
    QCOMPARE(CommonUtils::getIMSI(), QString());
    service().setImsi("262011234567890\xC3\xA4");
    QCOMPARE(CommonUtils::getIMSI(), QString::fromUtf8("262011234567890\xC3\xA4"));
    QCOMPARE(log().lines(QtDebugMsg).size(), 2);
    service().setResult("QRVL_DevSrv_GetImsiInfo", 3);
    QCOMPARE(CommonUtils::getIMSI(), QString());
    VERIFY_LOGGED_IN_ORDER("{file}: getIMSI: called", "{file}: getIMSI: called", failure);
}

QTEST_GUILESS_MAIN(TestProtectedData)
#include "tst_protecteddata.moc"
