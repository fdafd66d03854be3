// What only computes: the length of a message in parts, its links, the list of conversations.
#include "ConversationModel.h"
#include "DataTable.h"
#include "MessageLength.h"
#include "MessageText.h"

#include <QTextCursor>
#include <QTextDocument>

class TestMessageRules : public QObject
{
    Q_OBJECT

private slots:
    void length_data();
    void length();
    void links_data();
    void links();
    void movedMessage();
};

void TestMessageRules::length_data()
{
    const auto row = dataTable<QString, QVector<int>>("text", "length"); // characters, parts, left
    row("nothing", "", {0, 0, 160});
    row("one part", QString(160, 'a'), {160, 1, 0});
    row("three parts", QString(307, 'a'), {307, 3, 152});
    row("basic table", QStringLiteral("Ñàé\n€"), {5, 1, 154});
    row("undivided escape", QStringLiteral("€").repeated(153), {153, 3, 151});
    row("two parts of UCS-2", QStringLiteral("ж").repeated(71), {71, 2, 134 - 71});
    row("mixed", QString(133, 'a') + QStringLiteral("中文"), {135, 3, 66});
    row("emoji", QStringLiteral("😀").repeated(35), {35, 1, 0});
    row("undivided emoji", QStringLiteral("😀").repeated(67), {67, 3, 65});
    row("half an emoji", QString(QChar(0xd83d)), {1, 1, 69});
}

void TestMessageRules::length()
{
    QFETCH(QString, text);
    const MessageLength length = messageLength(text);
    QTEST(QVector<int>({length.characters, length.parts, length.left}), "length");
}

void TestMessageRules::links_data()
{
    const auto row = dataTable<QString, QStringList>("text", "targets");
    row("full stop, brackets", "See www.b.de. (www.b.de)", {"http://www.b.de", "http://www.b.de"});
    row("several signs", "\"www.b.de\"?!, me@a.example;", {"http://www.b.de", "mailto:me@a.example"});
    row("typographic", QStringLiteral("«https://b.de/x» „www.b.de“ www.c.de。"),
        {"https://b.de/x", "http://www.b.de", "http://www.c.de"});
    row("own brackets", "https://b.de/A_(b) (https://b.de/A_(b)).",
        {"https://b.de/A_(b)", "https://b.de/A_(b)"});
    row("own quotes", "https://b.de/?a=\"1\"", {"https://b.de/?a=\"1\""});
    row("lines", "www.b.de\r\n\r\n  www.c.de", {"http://www.b.de", "http://www.c.de"});
    row("markup", "<b>&amp;</b> \"a\" 'b' <www.b.de>", {"http://www.b.de"});
    row("signs only", "... (!) \" ", {});
    row("many brackets", "www.b.de" + QString(200000, ')'), {"http://www.b.de"}); // as in several messages
}

void TestMessageRules::links()
{
    QFETCH(QString, text);
    QTextDocument document;
    document.setHtml(richMessage(text));
    QCOMPARE(document.toPlainText(), QString(text).remove('\r'));
    QStringList targets;
    QTextCursor cursor(&document);
    while (cursor.movePosition(QTextCursor::NextCharacter))
        if (const QString target = cursor.charFormat().anchorHref();
            targets.isEmpty() || targets.last() != target)
            targets.append(target);
    targets.removeAll(QString());
    QTEST(targets, "targets");
}

/// Another message has taken the place of a known one.
void TestMessageRules::movedMessage()
{
    ConversationModel model;
    Message message;
    for (const char* address : {"Dora", "Bank"}) {
        message.address = address;
        model.put(Messages{message});
    }
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.rowOf("Bank"), 0);
}

QTEST_MAIN(TestMessageRules)
#include "tst_messagerules.moc"
