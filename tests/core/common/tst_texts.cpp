// Addresses and links, the other text helpers, texts in widgets, and units.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "DataTable.h"
#include "LogOrder.h"

#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegExp>

#include <array>
#include <cstdio>
#include <limits>

using AddressTest = bool (*)(QString);
Q_DECLARE_METATYPE(AddressTest)

class TestTexts : public CoreTest
{
    Q_OBJECT

private slots:
    void addresses_data();
    void addresses();
    void linksLikeTheSlowWay();
    void urls();
    void splitting();
    void parameters();
    void directionLikeTheSlowWay();
    void hugeTexts_data();
    void hugeTexts();
    void elided_data();
    void elided();
    void elidedWithoutWidget();
    void measured();
    void units();
    void decimals();
};

namespace {

QString randomText(const QString& characters, int maxLength)
{
    QString text;
    for (int i = QRandomGenerator::global()->bounded(maxLength + 1); i > 0; --i)
        text += characters.at(QRandomGenerator::global()->bounded(characters.size()));
    return text;
}

} // namespace

/// The patterns are the definition of the tests; every UTF-16 unit, and words of what makes a difference.
void TestTexts::addresses_data()
{
    // Each character in turn takes the place of "%1".
    const auto row = dataTable<AddressTest, QRegExp, QStringList>("test", "pattern", "forms");
    row("e-mail", CommonUtils::CheckForEmailAddr, QRegExp(R"(^[\w-]+(\.[\w-]+)*@[\w-]+(\.[\w-]+)+$)"),
        {"%1", "%1@b.c", "a@b%1", "a@b%1@b.c", "a@b.%1"});
    row("http", CommonUtils::CheckForHttpAddr,
        QRegExp(R"(^[http|https]+://[\0-\0377]*$)", Qt::CaseInsensitive),
        {"%1", "%1://", "s%1://", "http://%1", "http:/%1"});
    row("web", CommonUtils::CheckForWebAddr, QRegExp(R"(^([a-z0-9]+\.)*[a-z0-9]+(\.[a-z]{2,6}){1,2}$)"),
        {"%1.de", "a.b%1", "a.b%1.de", "a.%1", "a.%1.de"});
}

void TestTexts::addresses()
{
    QFETCH(AddressTest, test);
    QFETCH(QRegExp, pattern);
    QFETCH(QStringList, forms);
    QStringList words;
    for (const QString& form : forms) {
        for (int unit = 0; unit <= 0xFFFF; ++unit)
            words += form.arg(QChar(unit));
    }
    const QString characters =
        QString::fromUtf8("aazzZ009..@@-_://hHtTpPsS|w\n \"<\xC3\xA9\xC5\xBF\xD0\xB6") + QChar(0) +
        QChar(0xD800) + QChar(255) + QChar(256);
    for (int i = 0; i < 20000; ++i)
        words += randomText("ahtps", 2) + randomText(characters, 3) + randomText("tp:/@.", 3) +
                 randomText(characters, 4) + randomText("abcdefg.", 7);
    int accepted = 0;
    for (const QString& word : qAsConst(words)) {
        const bool expected = pattern.exactMatch(word);
        QVERIFY2(test(word) == expected, qPrintable(word));
        accepted += expected;
    }
    QVERIFY2(accepted > 100, qPrintable(QString::number(accepted)));
}

namespace {

/// Step by step as it is meant.
QString slowLinks(const QString& text)
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

} // namespace

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

void TestTexts::urls()
{
    for (const char* word : {"", "\n", "http://", "ftp://", "ftp://-", "http://\xD0\xB6", "http://a\xD0\xB6",
                             "mailto:a", " http://a", "\n\nhttp://a", "ftps://a", "http:/a"})
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word), QString(word));
    for (const char* word : {"http://a", "HTTPS://9.", "ftp://a", "FTP://\xC3\xA9 \n",
                             "ftp://\xD0\xB6\xD0\xB6", "http://\xC3\xA9"}) {
        const QString link = QString("<a href = %1>%1</a>").arg(word);
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word), link);
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp(QString("\n") + word), "\n" + link);
    }
}

void TestTexts::splitting()
{
    const QString plain = QString::fromUtf8("a\n\nb \xC3\xBF\x01");
    const QString nul = QChar(0);
    const QString other = QString::fromUtf8("\xE4\xBD\xA0") + QChar(256) + nul;
    const QList<QStringList> cases = {{}, {plain}, {other}, {plain, other, "."}, {nul, "a", nul}};
    for (const QStringList& runs : cases) {
        const QString text = runs.join("");
        QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), runs);
        QCOMPARE(CommonUtils::isNonAsciiCharPresent(text), text.contains(nul));
        bool flag = true;
        QCOMPARE(CommonUtils::SplitAsciiString(text, flag),
                 text.isEmpty() ? QStringList() : QStringList(text));
        QVERIFY(!flag);
    }
    QCOMPARE(CommonUtils::addSpaceToNewLine("a\n\nb "), QString("a \n \nb "));
}

void TestTexts::parameters()
{
    const QVector<QPair<QString, QStringList>> cases = {{"  ", {}},
                                                        {" a  b\tc ", {"a", "b\tc"}},
                                                        {R"(a"b  c"d"")", {"a", "b  c", "d", ""}},
                                                        {R"("" " ")", {"", " "}},
                                                        {"a \"b", {}},
                                                        {R"("a" "b" c")", {}}};
    for (const auto& [line, params] : cases)
        QCOMPARE(CommonUtils::GetParamList(line), params);
}

namespace {

/// Step by step as it is meant, which takes time that grows with the third power of the text.
QString slowDirection(QString text)
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

} // namespace

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
    const auto row = dataTable<QString, int>("pattern", "size");
    row("one word of 10 MB", "x", 5000000);
    row("a million words in 10 MB", "word ", 5000000);
    for (const char* pattern : {"\n", "<", "http://", "a.", "a@b.c ", "www.a.de\n", "a,", "\"", "\xD0\xB6"})
        row(pattern, pattern, 500000);
}

/// It is enough that each operation ends and keeps all of it; a label shows the beginning.
void TestTexts::hugeTexts()
{
    QFETCH(QString, pattern);
    QFETCH(int, size);
    log().allow(
        "{file}: ParanthesisCorrectionForHeAndAr: a text of {n} characters would collect too many marks");
    const QString text = pattern.repeated(size / pattern.size());
    QVERIFY(CommonUtils::ParseAndCreateHyperLinks(text).size() >= text.size());
    for (const auto test :
         {CommonUtils::CheckForEmailAddr, CommonUtils::CheckForHttpAddr, CommonUtils::CheckForWebAddr})
        QCOMPARE(test(text), test == CommonUtils::CheckForHttpAddr && pattern == "http://");
    QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), QStringList(text));
    CommonUtils::GetParamList(text);
    QString corrected = text;
    CommonUtils::ParanthesisCorrection(corrected);
    QCOMPARE(corrected.remove(QChar(0x202D)), text);
    for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone}) {
        QLabel label;
        label.resize(100, 20);
        CommonUtils::ElidedText(&label, text, mode);
        if (mode == Qt::ElideNone)
            QCOMPARE(label.text(), text);
        else
            QVERIFY(label.text().size() <= 16 * 1024); // much less if it is not line feeds alone
        QCOMPARE(label.toolTip(), text);
    }
}

void TestTexts::elided_data()
{
    const auto row = dataTable<bool>("isButton");
    row("label", false);
    row("button", true);
}

void TestTexts::elided()
{
    QFETCH(bool, isButton);
    QLabel label;
    QPushButton button;
    QWidget& widget = isButton ? static_cast<QWidget&>(button) : label;
    const QString text = "A text that is rather long";
    for (const int room : {50, 0, -1, -1000}) { // beside the text and the margin; negative: too narrow
        const int width = qMax(0, widget.fontMetrics().boundingRect(text).width() + room);
        widget.resize(width + (isButton ? 10 : 2), 20);
        isButton ? CommonUtils::AbstractButtonElidedText(&button, text, Qt::ElideMiddle)
                 : CommonUtils::LableElidedText(&label, text, Qt::ElideMiddle);
        const QString shown = isButton ? button.text() : label.text();
        const QString cut = widget.fontMetrics().elidedText(text, Qt::ElideMiddle, width);
        QCOMPARE(shown, room >= 0 ? text : cut);
        QCOMPARE(shown == text, room >= 0);
        QCOMPARE(widget.toolTip(), room >= 0 ? "" : text);
        widget.setToolTip("old");
    }
    QCOMPARE(log().count("{time}: {file}: setElidedTextForWidgetText: {n}: Enter"), isButton ? 4 : 0);
}

void TestTexts::elidedWithoutWidget()
{
    CommonUtils::LableElidedText(nullptr, "text", Qt::ElideRight);
    CommonUtils::AbstractButtonElidedText(nullptr, "text", Qt::ElideRight);
    const QString place = "{time}: {file}: ";
    VERIFY_LOGGED_IN_ORDER(place + "LableElidedText: {n}: Entered", place + "ElidedText: {n}: Entered",
                           place + "ElidedText: {n}: NULL == pLabel", place + "LableElidedText: {n}: Exit",
                           place + "AbstractButtonElidedText: {n}: NULL == pButton");
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

void TestTexts::units()
{
    const TagUnits base{"B", 1, 0, {}};
    const TagUnits kilo{"KB", 1024, 1024, {}};
    const TagUnits mega{"MB", 1048576, 1048576, {}};
    const QVector<TagUnits> rising{base, kilo, mega};
    const QVector<TagUnits> falling{mega, kilo};
    const quint64 most = std::numeric_limits<quint64>::max();
    const struct
    {
        QVector<TagUnits> ladder;
        quint64 value;
        QString text;
    } cases[] = {
        {rising, 0, "0.00 B"},
        {rising, 1024, "1024.00 B"},
        {rising, 1025, "1.00 KB"},
        {rising, 1048577, "1.00 MB"},
        {rising, most, "17592186044416.00 MB"},
        {falling, 2000000, "1953.12 KB"}, // the last in order, and a tie that goes to the even digit
        {falling, 1, "0.00 MB"},          // none qualifies
        {{base}, 9007199254740993, "9007199254740992.00 B"}, // as a double, also where registers are wider
        {{}, 7, ""},
        {{{"B", -2, 0, {}}}, 7, "-3.50 B"},
        {{{"B", 0, 0, {}}}, 7, "inf B"},
    };
    for (const auto& row : cases)
        QCOMPARE(CommonUtils::SpeedFluxToString(row.ladder, row.value, "Plugin"), row.text);
    QCOMPARE(CommonUtils::SpeedUnitToString(falling, "Plugin"), QString("MB"));
    QCOMPARE(CommonUtils::SpeedUnitToString({}, "Plugin"), QString());
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
