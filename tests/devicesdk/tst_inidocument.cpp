#include "files/IniDocument.h"

#include <QtTest>

using Entries = QVector<QStringList>;

static Entries entriesOf(const IniDocument& document)
{
    Entries entries;
    document.forEachEntry([&](const QString& section, const QString& key, const QString& value) {
        entries << QStringList{section, key, value};
    });
    return entries;
}

class tst_IniDocument : public QObject
{
    Q_OBJECT

private slots:
    void anyTextSurvives_data();
    void anyTextSurvives();
    void reads_data();
    void reads();
    void changesOnlyWhatDiffers_data();
    void changesOnlyWhatDiffers();
    void dropsBrokenLines();
};

void tst_IniDocument::anyTextSurvives_data()
{
    QTest::addColumn<QString>("text");
    const QStringList texts = {
        "",
        "plain",
        "  blanks \t",
        " ",
        "[a]",
        "]",
        "a]b",
        "#no comment",
        ";no comment",
        "a=b",
        "=",
        R"("quoted, with 100%")",
        R"(back\slash\n\)",
        R"(\u0041\s)",
        "line\nline\r\nline\r",
        "\x01\x1f\x7f",
        QString(QChar(0xd800)),
        QString(QChar(0xdc00)) + "x" + QChar(0xd83d),
        QString::fromUtf8("\xf0\x9f\x93\xb6 \xc3\xa4\xc2\xa0"),
        QString(QChar(0xfeff)) + "mark",
        QString(QChar(0xffff)),
        QString(QChar(0x2028)) + QChar(0x85),
    };
    for (int i = 0; i < texts.size(); ++i)
        QTest::newRow(qPrintable(QString("text %1").arg(i))) << texts[i];
    QTest::newRow("10 MB") << QString(5 * 1024 * 1024, QChar(0x20ac));
}

/// As a section, key and value, together with a neighbour that must not be disturbed.
void tst_IniDocument::anyTextSurvives()
{
    QFETCH(QString, text);
    IniDocument document;
    document.set(text, text, text);
    document.set("neighbour", "key", "value");
    const IniDocument copy(document.toBytes());
    QVERIFY(copy.brokenLines().isEmpty());
    const Entries expected = {{text, text, text}, {"neighbour", "key", "value"}};
    QVERIFY(entriesOf(copy) == expected);
    QCOMPARE(copy.toBytes(), document.toBytes());
}

void tst_IniDocument::reads_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<QVector<int>>("broken");
    const auto row = [](const char* name, const QByteArray& bytes, const Entries& entries,
                        const QVector<int>& broken = {}) {
        QTest::newRow(name) << bytes << entries << broken;
    };
    row("nothing", "", {});
    row("blanks are trimmed", " \t[ s ]\n  k\t = v w \n", {{"s", "k", "v w"}});
    row("comments", "# c\n; k=v\n[s]\n\t#k=v\nk=v # stays\n", {{"s", "k", "v # stays"}});
    row("byte order mark, CR LF, no end", "\xef\xbb\xbf[s]\r\nk=v\r\nl=w",
        {{"s", "k", "v"}, {"s", "l", "w"}});
    row("plain text", "[s]\nk=a,b \"c\" 100% d=e\n", {{"s", "k", "a,b \"c\" 100% d=e"}});
    row("unknown escapes stay", "[s]\nk=C:\\data\\q\\u12\\u0000\\\n",
        {{"s", "k", R"(C:\data\q\u12\u0000\)"}});
    row("before any section", "k=v\n[]\nl=w\n", {{"", "k", "v"}, {"", "l", "w"}});
    row("section twice", "[a]\nk=1\n[b]\nk=2\n[a]\nk=3\n",
        {{"a", "k", "1"}, {"b", "k", "2"}, {"a", "k", "3"}});
    row("no separator", "[s]\nk\nl=w\n", {{"s", "l", "w"}}, {2});
    row("no UTF-8", "[s]\nk=\xff\nl=w\n", {{"s", "l", "w"}}, {2});
    row("cut in a character", "[s]\nk=v\nl=\xc3", {{"s", "k", "v"}}, {3});
    row("zeros", QByteArray("[s]\nk=v\n") + QByteArray(100, '\0'), {{"s", "k", "v"}}, {3});
    row("section not closed", "[s]\nk=v\n[t\nk=w\n[u]\nk=x\n", {{"s", "k", "v"}, {"u", "k", "x"}}, {3, 4});
}

void tst_IniDocument::reads()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Entries, entries);
    const IniDocument document(bytes);
    QCOMPARE(entriesOf(document), entries);
    QTEST(document.brokenLines(), "broken");
    for (const QStringList& entry : entries)
        QVERIFY(document.find(entry[0], entry[1]));
    QVERIFY(!document.find("s", "missing"));
}

void tst_IniDocument::changesOnlyWhatDiffers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("change");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const char* before, const QStringList& change, const char* after) {
        QTest::newRow(name) << QByteArray(before) << change << QByteArray(after);
    };
    row("value", "# c\n[s]\n k = v\nl  =w\n", {"s", "k", "x"}, "# c\n[s]\nk=x\nl  =w\n");
    row("new key", "[s]\nk=v\n\n# of t\n[t]\n", {"s", "l", "w"}, "[s]\nk=v\nl=w\n\n# of t\n[t]\n");
    row("new section", "# c\n[s]\nk=v", {"t", "l", "w"}, "# c\n[s]\nk=v\n\n[t]\nl=w\n");
    row("first entry", "", {"t", "l", "w"}, "[t]\nl=w\n");
    row("the last one counts", "[s]\nk=1\nk=2\n[s]\n", {"s", "k", "3"}, "[s]\nk=1\nk=3\n[s]\n");
    row("CR LF", "[s]\r\nk=v\r\n", {"s", "l", "w"}, "[s]\r\nk=v\r\nl=w\r\n");
    row("no section", "# c\n[s]\n", {"", "k", "v"}, "# c\nk=v\n[s]\n");
}

void tst_IniDocument::changesOnlyWhatDiffers()
{
    QFETCH(QByteArray, before);
    QFETCH(QStringList, change);
    IniDocument document(before);
    document.set(change[0], change[1], change[2]);
    QTEST(document.toBytes(), "after");
    QCOMPARE(*document.find(change[0], change[1]), change[2]);
}

void tst_IniDocument::dropsBrokenLines()
{
    IniDocument document("# c\n[s]\nbroken\nk=v\n[t\nl=w\n# d\n[u]\nm=x\n");
    document.dropBrokenLines();
    document.set("s", "k", "y");
    document.set("u", "m", "z");
    QCOMPARE(document.toBytes(), QByteArray("# c\n[s]\nk=y\n# d\n[u]\nm=z\n"));
}

QTEST_APPLESS_MAIN(tst_IniDocument)
#include "tst_inidocument.moc"
