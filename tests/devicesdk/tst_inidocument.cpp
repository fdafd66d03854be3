#include "files/IniDocument.h"

#include <QtTest>

#include <tuple>

namespace {

/// As "section|key|value".
QStringList entriesOf(const IniDocument& document)
{
    QStringList entries;
    document.forEachEntry([&](const QString& section, const QString& key, const QString& value) {
        entries << section + '|' + key + '|' + value;
    });
    return entries;
}

} // namespace

class tst_IniDocument : public QObject
{
    Q_OBJECT

private slots:
    void anyTextSurvives();
    void reads();
    void changesOnlyWhatDiffers();
};

/// As a section, key and value, together with a neighbour that must not be disturbed.
void tst_IniDocument::anyTextSurvives()
{
    QStringList texts = {QString(1024 * 1024, QChar(0x20ac))};
    for (const char16_t* text : {u"\xd800", u"\xdc00x\xd83d", u"\xfeff mark", u"\xffff\x2028\x85"})
        texts.append(QStringView(text).toString()); // fromUtf16() would drop the mark
    for (const char* text : {"", "  blanks \t", " ", "[a]", "]", "a]b", "#no comment", ";no comment", "a=b",
                             "=", R"("quoted, with 100%")", R"(back\slash\n\)", R"(\u0041\s)",
                             "line\nline\r\nline\r", "\x01\x1f\x7f", "\xf0\x9f\x93\xb6 \xc3\xa4\xc2\xa0"})
        texts.append(QString::fromUtf8(text));
    for (const QString& text : qAsConst(texts)) {
        IniDocument document;
        document.set(text, text, text);
        document.set("neighbour", "key", "value");
        const IniDocument copy(document.toBytes());
        const QStringList expected = {text + '|' + text + '|' + text, "neighbour|key|value"};
        QVERIFY2(copy.brokenLines().isEmpty() && entriesOf(copy) == expected, qPrintable(text));
        QCOMPARE(copy.toBytes(), document.toBytes());
    }
}

void tst_IniDocument::reads()
{
    const std::tuple<const char*, QByteArray, QStringList, QVector<int>> rows[] = {
        {"nothing", "", {}, {}},
        {"blanks are trimmed", " \t[ s ]\n  k\t = v w \n", {"s|k|v w"}, {}},
        {"comments", "# c\n; k=v\n[s]\n\t#k=v\nk=v # stays\n", {"s|k|v # stays"}, {}},
        {"mark, CR LF, no end", "\xef\xbb\xbf[s]\r\nk=v\r\nl=w", {"s|k|v", "s|l|w"}, {}},
        {"plain text", "[s]\nk=a,b \"c\" 100% d=e\n", {"s|k|a,b \"c\" 100% d=e"}, {}},
        {"unknown escapes", "[s]\nk=C:\\d\\q\\u12\\u0000\\\n", {R"(s|k|C:\d\q\u12\u0000\)"}, {}},
        {"before any section", "k=v\n[]\nl=w\n", {"|k|v", "|l|w"}, {}},
        {"section twice", "[a]\nk=1\n[b]\n[a]\nk=3\n", {"a|k|1", "a|k|3"}, {}},
        {"no separator", "[s]\nk\nl=w\n", {"s|l|w"}, {2}},
        {"no UTF-8", "[s]\nk=\xff\nl=w\n", {"s|l|w"}, {2}},
        {"cut in a character", "[s]\nk=v\nl=\xc3", {"s|k|v"}, {3}},
        {"zeros", QByteArray("[s]\nk=v\n") + QByteArray(100, '\0'), {"s|k|v"}, {3}},
        {"open section", "[s]\nk=v\n[t\nk=w\n[u]\nk=x\n", {"s|k|v", "u|k|x"}, {3, 4}},
    };
    for (const auto& [name, bytes, entries, brokenLines] : rows) {
        const IniDocument document(bytes);
        QVERIFY2(entriesOf(document) == entries && document.brokenLines() == brokenLines, name);
    }
}

void tst_IniDocument::changesOnlyWhatDiffers()
{
    const std::tuple<const char*, QByteArray, QStringList, QByteArray> rows[] = {
        {"value", "# c\n[s]\n k = v\nl  =w\n", {"s", "k", "x"}, "# c\n[s]\nk=x\nl  =w\n"},
        {"new key", "[s]\nk=v\n\n# of t\n[t]\n", {"s", "l", "w"}, "[s]\nk=v\nl=w\n\n# of t\n[t]\n"},
        {"new section", "# c\n[s]\nk=v", {"t", "l", "w"}, "# c\n[s]\nk=v\n\n[t]\nl=w\n"},
        {"first entry", "", {"t", "l", "w"}, "[t]\nl=w\n"},
        {"the last one counts", "[s]\nk=1\nk=2\n[s]\n", {"s", "k", "3"}, "[s]\nk=1\nk=3\n[s]\n"},
        {"CR LF", "[s]\r\nk=v\r\n", {"s", "l", "w"}, "[s]\r\nk=v\r\nl=w\r\n"},
        {"no section", "# c\n[s]\n", {"", "k", "v"}, "# c\nk=v\n[s]\n"},
        {"broken lines", "# c\n[s]\nx\nk=v\n[t\nl=w\n# d\n", {"s", "k", "y"}, "# c\n[s]\nk=y\n# d\n"},
    };
    for (const auto& [name, before, change, after] : rows) {
        IniDocument document(before);
        document.dropBrokenLines();
        document.set(change[0], change[1], change[2]);
        QVERIFY2(document.toBytes() == after, name);
        QCOMPARE(*document.find(change[0], change[1]), change[2]);
    }
}

QTEST_APPLESS_MAIN(tst_IniDocument)
#include "tst_inidocument.moc"
