// Addresses and links, the other text helpers, texts in widgets, and units.
#include "common/CommonUtils.h"

#include "CoreTest.h"

#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegExp>

#include <array>
#include <cstdio>
#include <limits>

class TestTexts : public CoreTest
{
    Q_OBJECT

private slots:
    void addresses();
    void links_data();
    void links();
    void linksLikeTheSlowWay();
    void urls_data();
    void urls();
    void splitting_data();
    void splitting();
    void parameters_data();
    void parameters();
    void directionLikeTheSlowWay();
    void hugeTexts_data();
    void hugeTexts();
    void elided_data();
    void elided();
    void measured();
    void units_data();
    void units();
    void decimals();
};

static QString randomText(const QString& characters, int maxLength)
{
    QString text;
    for (int i = QRandomGenerator::global()->bounded(maxLength + 1); i > 0; --i)
        text += characters.at(QRandomGenerator::global()->bounded(characters.size()));
    return text;
}

/// The patterns are the definition of the tests; every UTF-16 unit, and words of what makes a difference.
void TestTexts::addresses()
{
    struct Address
    {
        bool (*test)(QString);
        QRegExp pattern;
        QStringList begins; ///< made longer by each character in turn, with and without `end`
        QString end;
        int accepted = 0;
    };
    Address addresses[] = {{CommonUtils::CheckForEmailAddr,
                            QRegExp(R"(^[\w-]+(\.[\w-]+)*@[\w-]+(\.[\w-]+)+$)"),
                            {"", "a@b", "a@b."},
                            "@b.c"},
                           {CommonUtils::CheckForHttpAddr,
                            QRegExp(R"(^[http|https]+://[\0-\0377]*$)", Qt::CaseInsensitive),
                            {"", "s", "http://", "http:/"},
                            "://"},
                           {CommonUtils::CheckForWebAddr,
                            QRegExp(R"(^([a-z0-9]+\.)*[a-z0-9]+(\.[a-z]{2,6}){1,2}$)"),
                            {"", "a.b", "a."},
                            ".de"}};
    const QString characters =
        QString::fromUtf8("aazzZ009..@@-_://hHtTpPsS|w\n \"<\xC3\xA9\xC5\xBF\xD0\xB6") + QChar(0) +
        QChar(0xD800) + QChar(255) + QChar(256);
    for (Address& address : addresses) {
        const auto check = [&address](const QString& word) {
            const bool expected = address.pattern.exactMatch(word);
            address.accepted += expected;
            QVERIFY2(address.test(word) == expected, qPrintable(address.pattern.pattern() + ": " + word));
        };
        for (const QString& begin : address.begins) {
            for (int unit = 0; unit <= 0xFFFF && !QTest::currentTestFailed(); ++unit) {
                check(begin + QChar(unit));
                check(begin + QChar(unit) + address.end);
            }
        }
        for (int i = 0; i < 20000 && !QTest::currentTestFailed(); ++i)
            check(randomText("ahtps", 2) + randomText(characters, 3) + randomText("tp:/@.", 3) +
                  randomText(characters, 4) + randomText("abcdefg.", 7));
        QVERIFY2(address.accepted > 100, qPrintable(QString::number(address.accepted)));
    }
}

void TestTexts::links_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rich");
    const auto row = [](const char* name, const char* text, const char* rich) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(rich);
    };
    row("nothing", "", "");
    row("blanks", " a  b ", "&nbsp;a&nbsp;&nbsp;b&nbsp;");
    row("lines", "a\nb\n\n c\r\n", "a&nbsp;\nb&nbsp;\n&nbsp;\n&nbsp;c\r&nbsp;\n");
    row("escaped", "a<b>&c\" https://a<b", "a&lt;b&gt;&c\"&nbsp;<a href = https://a&lt;b>https://a&lt;b</a>");
    row("e-mail", "\xC3\xA9@b.c, a-b.c@d.e\na@b.c",
        "\xC3\xA9@b.c,&nbsp;<a href = mailto:a-b.c@d.e>a-b.c@d.e</a>&nbsp;\na@b.c");
    row("host", "www.a1.de WWW.a.de www.a_b.de\nwww.de",
        "<a href = http://www.a1.de>www.a1.de</a>&nbsp;WWW.a.de&nbsp;www.a_b.de&nbsp;\n"
        "<a href = http://www.de>www.de</a>");
    row("address", "Http://x.Y/?a&b http:// pst://a ftp://a\nhttp://a",
        "<a href = "
        "Http://x.Y/?a&b>Http://x.Y/?a&b</a>&nbsp;http://&nbsp;pst://a&nbsp;ftp://a&nbsp;\nhttp://a");
    row("other scripts", "http://a/\xD0\xB6 \xD0\xB6<@b.c", "http://a/\xD0\xB6&nbsp;\xD0\xB6&lt;@b.c");
    QTest::newRow("NUL and surrogate") << QString("http://a") + QChar(0) + " http://a" + QChar(0xDC00)
                                       << QString("http://a") + QChar(0) + "&nbsp;http://a" + QChar(0xDC00);
}

void TestTexts::links()
{
    QFETCH(QString, text);
    QTEST(CommonUtils::ParseAndCreateHyperLinks(text), "rich");
}

/// Step by step as it is meant.
static QString slowLinks(const QString& text)
{
    QStringList words = CommonUtils::addSpaceToNewLine(text).split(' ');
    for (QString& word : words) {
        word.replace('<', "&lt;").replace('>', "&gt;");
        const QString lineFeed = word.startsWith('\n') ? "\n" : "";
        const QString host = word.mid(lineFeed.size());
        if (CommonUtils::isNonAsciiCharPresent(word))
            continue;
        if (CommonUtils::CheckForEmailAddr(word))
            word = "<a href = mailto:" + word + '>' + word + "</a>";
        else if (host.startsWith("www.") && CommonUtils::CheckForWebAddr(host))
            word = lineFeed + "<a href = http://" + host + '>' + host + "</a>";
        else if (CommonUtils::CheckForHttpAddr(word))
            word = CommonUtils::createLinkForHttpAndFtp(word);
    }
    return words.join("&nbsp;");
}

void TestTexts::linksLikeTheSlowWay()
{
    const QStringList pieces = {" ",      "\n",     "<",      ">",          "a",        "@",
                                ".",      "www.",   ".de",    "http://",    ":",        "https://a",
                                "ftp://", "a@b.c",  QChar(0), QChar(0x416), " www.a",   "\nwww.a",
                                "\r",     "pst://", " w",     "\nhttp://",  QChar(233), "&"};
    for (int i = 0; i < 50000; ++i) {
        QString text;
        for (int n = QRandomGenerator::global()->bounded(9); n > 0; --n)
            text += pieces.at(QRandomGenerator::global()->bounded(pieces.size()));
        QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), slowLinks(text));
    }
}

void TestTexts::urls_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("isLink");
    for (const char* word : {"http://a", "HTTPS://9.", "ftp://a", "FTP://\xC3\xA9 \n",
                             "ftp://\xD0\xB6\xD0\xB6", "\nhttp://a", "http://\xC3\xA9"})
        QTest::newRow(word) << QString::fromUtf8(word) << true;
    for (const char* word : {"", "\n", "http://", "ftp://", "ftp://-", "http://\xD0\xB6", "http://a\xD0\xB6",
                             "mailto:a", " http://a", "\n\nhttp://a", "ftps://a", "http:/a"})
        QTest::newRow(word) << QString::fromUtf8(word) << false;
}

void TestTexts::urls()
{
    QFETCH(QString, word);
    QFETCH(bool, isLink);
    const QString prefix = word.startsWith('\n') ? "\n" : "";
    const QString target = word.mid(prefix.size());
    QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word),
             isLink ? prefix + "<a href = " + target + '>' + target + "</a>" : word);
}

void TestTexts::splitting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("runs");
    const QString nul = QChar(0);
    const QString han = QString::fromUtf8("\xE4\xBD\xA0\xE5\xA5\xBD");
    QTest::newRow("nothing") << QString() << QStringList();
    QTest::newRow("one run") << QString::fromUtf8("\xC3\xA9\x01")
                             << QStringList(QString::fromUtf8("\xC3\xA9\x01"));
    QTest::newRow("runs") << "a b" + han + nul + '.' << QStringList({"a b", han + nul, "."});
    QTest::newRow("limits") << nul + QChar(255) + QChar(256) << QStringList({nul, QChar(255), QChar(256)});
}

void TestTexts::splitting()
{
    QFETCH(QString, text);
    QFETCH(QStringList, runs);
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), runs);
    for (const QString& run : qAsConst(runs))
        QCOMPARE(CommonUtils::isNonAsciiCharPresent(run), run[0].unicode() == 0 || run[0].unicode() > 255);
    QCOMPARE(CommonUtils::isNonAsciiCharPresent(text), runs.size() > 1);
    bool flag = true;
    QCOMPARE(CommonUtils::SplitAsciiString(text, flag), text.isEmpty() ? QStringList() : QStringList(text));
    QVERIFY(!flag);
    QCOMPARE(CommonUtils::addSpaceToNewLine(text + "\n\na"), text.replace("\n", " \n") + " \n \na");
}

void TestTexts::parameters_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("params");
    const auto row = [](const char* line, const QStringList& params) {
        QTest::newRow(line) << QString(line) << params;
    };
    row("", {});
    row("  ", {});
    row(" a  b\tc ", {"a", "b\tc"});
    row("a \"b  c\" d", {"a", "b  c", "d"});
    row(R"(a"b"c"")", {"a", "b", "c", ""});
    row(R"("" " ")", {"", " "});
    row("a \"b", {});
    row("\"", {});
    row(R"("a" "b" c")", {});
}

void TestTexts::parameters()
{
    QFETCH(QString, line);
    QTEST(CommonUtils::GetParamList(line), "params");
}

/// Step by step as it is meant, which takes time that grows with the third power of the text.
static QString slowDirection(QString text)
{
    const int size = text.size();
    for (int i = 1; i < size; ++i) {
        const QChar sign = text[i];
        const QChar::Direction before = text[i - 1].direction();
        if (QString(",\"()[]{}").contains(sign) && (before == QChar::DirL || before == QChar::DirR))
            text.replace(sign, QString(sign) + QChar(before == QChar::DirL ? 0x202D : 0x202E));
    }
    return text;
}

void TestTexts::directionLikeTheSlowWay()
{
    const QString characters = QString("aa1 ,,\"()[]{}") + QChar(0x05D0) + QChar(0x0627) + QChar(0x202D);
    for (int i = 0; i < 3000; ++i) {
        QString text = randomText(characters, 40);
        const QString expected = slowDirection(text);
        CommonUtils::ParanthesisCorrectionForHeAndAr(text);
        QCOMPARE(text, expected);
    }
}

void TestTexts::hugeTexts_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("size");
    QTest::newRow("one word of 10 MB") << "x" << 5000000;
    QTest::newRow("a million words in 10 MB") << "word " << 5000000;
    for (const char* pattern : {"\n", "<", "http://", "a.", "a@b.c ", "www.a.de\n", "a,", "\"", "\xD0\xB6"})
        QTest::newRow(pattern) << QString::fromUtf8(pattern) << 500000;
}

/// It is enough that each operation ends and keeps all of it; a label shows the beginning.
void TestTexts::hugeTexts()
{
    QFETCH(QString, pattern);
    QFETCH(int, size);
    log().allow(
        "{file}: ParanthesisCorrectionForHeAndAr: a text of {n} characters would collect too many marks");
    const QString text = pattern.repeated(size / pattern.size());
    const QString rich = CommonUtils::ParseAndCreateHyperLinks(text);
    QVERIFY(rich.size() >= text.size());
    for (const auto test :
         {CommonUtils::CheckForEmailAddr, CommonUtils::CheckForHttpAddr, CommonUtils::CheckForWebAddr})
        QCOMPARE(test(text), test == CommonUtils::CheckForHttpAddr && pattern == "http://");
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), QStringList(text));
    CommonUtils::GetParamList(text);
    QString corrected = text;
    CommonUtils::ParanthesisCorrection(corrected);
    QCOMPARE(corrected.remove(QChar(0x202D)), text);
    for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight}) {
        QLabel label;
        label.resize(100, 20);
        CommonUtils::ElidedText(&label, text, mode);
        QVERIFY(label.text().size() <= 16 * 1024); // much less if it is not line feeds alone
        QCOMPARE(label.toolTip(), text);
        CommonUtils::ElidedText(&label, text, Qt::ElideNone);
        QCOMPARE(label.text(), text);
    }
}

void TestTexts::elided_data()
{
    QTest::addColumn<bool>("isButton");
    QTest::addColumn<int>("room"); // what is left of the margin beside the text; negative: too narrow
    for (const bool isButton : {false, true}) {
        const QByteArray widget = isButton ? "button" : "label";
        for (const int room : {50, 0, -1, -1000})
            QTest::newRow(widget + ' ' + QByteArray::number(room)) << isButton << room;
    }
}

void TestTexts::elided()
{
    QFETCH(bool, isButton);
    QFETCH(int, room);
    QLabel label;
    QPushButton button;
    QWidget& widget = isButton ? static_cast<QWidget&>(button) : label;
    const QString text = "A text that is rather long";
    const int width = widget.fontMetrics().boundingRect(text).width() + room;
    widget.resize(qMax(0, width) + (isButton ? 10 : 2), 20);
    widget.setToolTip("old");
    isButton ? CommonUtils::AbstractButtonElidedText(&button, text, Qt::ElideMiddle)
             : CommonUtils::LableElidedText(&label, text, Qt::ElideMiddle);

    const QString shown = isButton ? button.text() : label.text();
    QCOMPARE(shown,
             room >= 0 ? text : widget.fontMetrics().elidedText(text, Qt::ElideMiddle, qMax(0, width)));
    QCOMPARE(shown == text, room >= 0);
    QCOMPARE(widget.toolTip(), room >= 0 ? "" : text);

    CommonUtils::LableElidedText(nullptr, text, Qt::ElideRight);
    CommonUtils::AbstractButtonElidedText(nullptr, text, Qt::ElideRight);
    const QString place = "{time}: {file}: ";
    QCOMPARE(log().firstMissingInOrder(
                 {place + "LableElidedText: {n}: Entered", place + "ElidedText: {n}: Entered",
                  place + "ElidedText: {n}: NULL == pLabel", place + "LableElidedText: {n}: Exit",
                  place + "AbstractButtonElidedText: {n}: NULL == pButton"}),
             QString());
    QCOMPARE(log().count(place + "setElidedTextForWidgetText: {n}: Enter"), int(isButton));
}

void TestTexts::measured()
{
    QWidget widget;
    QFont font = QApplication::font();
    font.setPixelSize(40);
    widget.setFont(font);
    int height = -1;
    int width = -1;
    CommonUtils::GetWidgetStringHeightAndWidth(nullptr, "text", height, width);
    CommonUtils::GetWidgetStringHeightAndWidth(&widget, "", height, width);
    CommonUtils::GetApplicationStringHeightAndWidth("", height, width);
    QVERIFY(height == -1 && width == -1);
    QCOMPARE(log().count("{time}: {file}: {func} {n} : Empty String in the widget"), 2);
    QCOMPARE(log().count("{time}: {file}: GetWidgetStringHeightAndWidth {n} : Bad input Param"), 1);
    QCOMPARE(log().count("Enter  : {time}: {file}: {func} {n}"), 3);
    QCOMPARE(log().count("End  : {time}: {file}: {func} {n}"), 3);

    CommonUtils::GetWidgetStringHeightAndWidth(&widget, "text", height, width);
    QVERIFY(height == QFontMetrics(font).height() && width == QFontMetrics(font).horizontalAdvance("text"));
    CommonUtils::GetApplicationStringHeightAndWidth("text", height, width);
    QVERIFY(height == QFontMetrics(QApplication::font()).height() && height < 40);
}

void TestTexts::units_data()
{
    QTest::addColumn<int>("ladder");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](int ladder, quint64 value, const char* text) {
        QTest::addRow("%d: %llu", ladder, value) << ladder << value << QString(text);
    };
    row(0, 0, "0.00 B");
    row(0, 1024, "1024.00 B");
    row(0, 1025, "1.00 KB");
    row(0, 1536, "1.50 KB");
    row(0, 1048576, "1024.00 KB");
    row(2, 9007199254740993, "9007199254740992.00 B"); // as a double, also where registers are wider
    row(0, 1048577, "1.00 MB");
    row(0, std::numeric_limits<quint64>::max(), "17592186044416.00 MB");
    row(1, 2000000, "1953.12 KB"); // falling: the last in order, and a tie that goes to the even digit
    row(1, 1, "0.00 MB");          // none qualifies
    row(2, std::numeric_limits<quint64>::max(), "18446744073709551616.00 B");
    row(2, 7, "7.00 B");
    row(3, 7, "");
    row(4, 7, "-3.50 B");
    row(5, 7, "inf B");
}

void TestTexts::units()
{
    QFETCH(int, ladder);
    QFETCH(quint64, value);
    const TagUnits base{"B", 1, 0, {}};
    const TagUnits kilo{"KB", 1024, 1024, {}};
    const TagUnits mega{"MB", 1048576, 1048576, {}};
    const QVector<QVector<TagUnits>> ladders = {{base, kilo, mega}, {mega, kilo},     {base}, {},
                                                {{"B", -2, 0, {}}}, {{"B", 0, 0, {}}}};
    QTEST(CommonUtils::SpeedFluxToString(ladders[ladder], value, "Plugin"), "text");
    QCOMPARE(CommonUtils::SpeedUnitToString(ladders[ladder], "Plugin"),
             ladders[ladder].isEmpty() ? QString() : ladders[ladder][0].name);
}

/// The decimals are those of the C library, which takes its time.
void TestTexts::decimals()
{
    QRandomGenerator& random = *QRandomGenerator::global();
    for (int i = 0; i < 300000; ++i) {
        const quint64 value = random.generate64() >> random.bounded(64);
        // Divisors of two make ties.
        const int divisor =
            i % 2 ? 1 << random.bounded(31) : 1 + random.bounded(std::numeric_limits<int>::max());
        std::array<char, 64> expected{};
        std::snprintf(expected.data(), expected.size(), "%.2f u", double(value) / divisor);
        QCOMPARE(CommonUtils::SpeedFluxToString({{"u", divisor, 0, {}}}, value, {}),
                 QString(expected.data()));
    }
}

QTEST_MAIN(TestTexts)
#include "tst_texts.moc"
