// Addresses and links, the other text helpers, texts in widgets, and units.
#include "common/CommonUtils.h"

#include "CoreTest.h"
#include "LogOrder.h"

#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegExp>

#include <limits>

class TestTexts : public CoreTest
{
    Q_OBJECT

private slots:
    void addresses();
    void links();
    void urls();
    void splitting();
    void direction();
    void hugeTexts();
    void elided();
    void measured();
    void units();
};

namespace {

QString randomText(const QStringList& pieces, int mostPieces)
{
    QString text;
    for (int i = QRandomGenerator::global()->bounded(mostPieces + 1); i > 0; --i)
        text += pieces.at(QRandomGenerator::global()->bounded(pieces.size()));
    return text;
}

} // namespace

/// Compares with the patterns that define the tests, for every UTF-16 unit in the place of "%1" and for words
/// made of what matters.
void TestTexts::addresses()
{
    const struct
    {
        bool (*test)(QString);
        QRegExp pattern;
        QStringList forms;
    } cases[] = {{CommonUtils::CheckForEmailAddr,
                  QRegExp(R"(^[\w-]+(\.[\w-]+)*@[\w-]+(\.[\w-]+)+$)"),
                  {"%1", "%1@b.c", "a@b%1", "a@b%1@b.c", "a@b.%1"}},
                 {CommonUtils::CheckForHttpAddr,
                  QRegExp(R"(^[http|https]+://[\0-\0377]*$)", Qt::CaseInsensitive),
                  {"%1", "%1://", "s%1://", "http://%1", "http:/%1"}},
                 {CommonUtils::CheckForWebAddr,
                  QRegExp(R"(^([a-z0-9]+\.)*[a-z0-9]+(\.[a-z]{2,6}){1,2}$)"),
                  {"%1.de", "a.b%1", "a.b%1.de", "a.%1", "a.%1.de", "a.abcde%1", "a.abcdef%1"}}};
    const QStringList pieces =
        QString::fromUtf8("a Z 0 . . @ @ - _ :// h tps T | \n \" < \xC3\xA9 \xC5\xBF abcdefg").split(' ');
    for (const auto& row : cases) {
        QStringList words;
        for (const QString& form : row.forms) {
            for (int unit = 0; unit <= 0xFFFF; ++unit)
                words += form.arg(QChar(unit));
        }
        for (int i = 0; i < 20000; ++i)
            words += randomText(pieces, 10);
        for (const QString& word : qAsConst(words))
            QVERIFY2(row.test(word) == row.pattern.exactMatch(word), qPrintable(word));
    }
}

namespace {

/// The definition, step by step.
QString expectedLinks(const QString& text)
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

void TestTexts::links()
{
    const QStringList pieces = {" ",      "\n",     "<",      ">",          "a",        "@",
                                ".",      "www.",   ".de",    "http://",    ":",        "https://a",
                                "ftp://", "a@b.c",  QChar(0), QChar(0x416), " www.a",   "\nwww.a",
                                "\r",     "pst://", " w",     "\nhttp://",  QChar(233), "&"};
    for (int i = 0; i < 50000; ++i) {
        const QString text = randomText(pieces, 8);
        QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), expectedLinks(text));
    }
}

void TestTexts::urls()
{
    for (const char* word : {"", "\n", "http://", "ftp://", "ftp://-", "http://\xD0\xB6", "http://a\xD0\xB6",
                             "mailto:a", " http://a", "\n\nhttp://a", "ftps://a", "http:/a"})
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word), QString(word));
    for (const char* word :
         {"http://a", "HTTPS://9.", "ftp://a", "FTP://\xC3\xA9 \n", "ftp://\xD0\xB6\xD0\xB6"}) {
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
    for (const QStringList& runs :
         QList<QStringList>{{}, {plain}, {other}, {plain, other, "."}, {nul, "a", nul}}) {
        const QString text = runs.join("");
        QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), runs);
        QCOMPARE(CommonUtils::isNonAsciiCharPresent(text), text.contains(nul));
        bool flag = true;
        QCOMPARE(CommonUtils::SplitAsciiString(text, flag), runs.isEmpty() ? runs : QStringList(text));
        QVERIFY(!flag);
    }
    QCOMPARE(CommonUtils::addSpaceToNewLine("a\n\nb "), QString("a \n \nb "));
    const QVector<QPair<QString, QStringList>> cases = {{"  ", {}},
                                                        {" a  b\tc ", {"a", "b\tc"}},
                                                        {R"(a"b  c"d"")", {"a", "b  c", "d", ""}},
                                                        {R"("" " ")", {"", " "}},
                                                        {"a \"b", {}},
                                                        {R"("a" "b" c")", {}}};
    for (const auto& [line, params] : cases)
        QCOMPARE(CommonUtils::GetParamList(line), params);
}

/// Compares with the definition, which takes cubic time.
void TestTexts::direction()
{
    const QStringList pieces = {"a", "b", "1", " ", ",", ",",           "\"",          "(",
                                ")", "[", "]", "{", "}", QChar(0x05D0), QChar(0x0627), QChar(0x202D)};
    for (int i = 0; i < 3000; ++i) {
        QString text = randomText(pieces, 40);
        QString expected = text;
        for (int position = 1; position < text.size(); ++position) {
            const QChar sign = expected[position];
            const QChar::Direction before = expected[position - 1].direction();
            if (QString(",\"()[]{}").contains(sign) && (before == QChar::DirL || before == QChar::DirR))
                expected.replace(sign, QString(sign) + QChar(before == QChar::DirL ? 0x202D : 0x202E));
        }
        i % 2 ? CommonUtils::ParanthesisCorrection(text) : CommonUtils::ParanthesisCorrectionForHeAndAr(text);
        QCOMPARE(text, expected);
    }
}

/// All operations take linear time.
void TestTexts::hugeTexts()
{
    log().allow(
        "{file}: ParanthesisCorrectionForHeAndAr: a text of {n} characters would collect too many marks");
    for (const QString pattern :
         {"x", "word ", "\n", "<", "http://", "a.", "a@b.c ", "www.a.de\n", "a,", "\"", "\xD0\xB6"}) {
        const QString text = pattern.repeated(1000000 / pattern.size());
        QVERIFY(CommonUtils::ParseAndCreateHyperLinks(text).size() >= text.size());
        QVERIFY(!CommonUtils::CheckForEmailAddr(text) && !CommonUtils::CheckForWebAddr(text));
        QCOMPARE(CommonUtils::CheckForHttpAddr(text), pattern == "http://");
        QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(text), QStringList(text));
        CommonUtils::GetParamList(text);
        QString corrected = text;
        CommonUtils::ParanthesisCorrection(corrected);
        QCOMPARE(corrected, text); // unchanged: too many marks, or none
        for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone}) {
            QLabel label;
            label.resize(100, 20);
            CommonUtils::ElidedText(&label, text, mode);
            QVERIFY(mode == Qt::ElideNone ? label.text() == text : label.text().size() <= 16 * 1024);
            QCOMPARE(label.toolTip(), text);
        }
    }
}

void TestTexts::elided()
{
    const QString text = "A text that is rather long";
    QLabel label;
    QPushButton button;
    for (const int room : {50, 0, -1, -1000}) { // beside the text and the margin; negative: too narrow
        const int width = qMax(0, label.fontMetrics().boundingRect(text).width() + room);
        const QString shown = room >= 0 ? text : label.fontMetrics().elidedText(text, Qt::ElideMiddle, width);
        button.setFont(label.font());
        label.resize(width + 2, 20);
        button.resize(width + 10, 20);
        label.setToolTip("old");
        button.setToolTip("old");
        CommonUtils::LableElidedText(&label, text, Qt::ElideMiddle);
        CommonUtils::AbstractButtonElidedText(&button, text, Qt::ElideMiddle);
        QCOMPARE(QStringList({label.text(), button.text()}), QStringList({shown, shown}));
        QCOMPARE(shown == text, room >= 0);
        QCOMPARE(label.toolTip(), room >= 0 ? "" : text);
        QCOMPARE(button.toolTip(), label.toolTip());
    }
    CommonUtils::LableElidedText(nullptr, text, Qt::ElideRight);
    CommonUtils::AbstractButtonElidedText(nullptr, text, Qt::ElideRight);
    const QString begin = "{time}: {file}: ";
    const QStringList both = {begin + "LableElidedText: {n}: Entered",
                              begin + "ElidedText: {n}: Entered",
                              begin + "ElidedText: {n}: Exit",
                              begin + "LableElidedText: {n}: Exit",
                              begin + "AbstractButtonElidedText: {n}: Entered",
                              begin + "setElidedTextForWidgetText: {n}: Enter",
                              begin + "AbstractButtonElidedText: {n}: Exit"};
    const QStringList null = {both[0], both[1], begin + "ElidedText: {n}: NULL == pLabel",
                              both[3], both[4], begin + "AbstractButtonElidedText: {n}: NULL == pButton"};
    QCOMPARE(log().firstMissingInOrder(both + both + both + both + null), QString());
    QCOMPARE(log().lines().size(), 4 * both.size() + null.size());
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
    const QString place = "{time}: {file}: GetWidgetStringHeightAndWidth {n}";
    const QString application = "{time}: {file}: GetApplicationStringHeightAndWidth {n}";
    VERIFY_LOGGED_IN_ORDER("Enter  : " + place, place + " : Bad input Param", "End  : " + place,
                           "Enter  : " + place, place + " : Empty String in the widget", "End  : " + place,
                           "Enter  : " + application, application + " : Empty String in the widget",
                           "End  : " + application);

    CommonUtils::GetWidgetStringHeightAndWidth(&widget, "text", height, width);
    QVERIFY(height == QFontMetrics(font).height() && width == QFontMetrics(font).horizontalAdvance("text"));
    CommonUtils::GetApplicationStringHeightAndWidth("text", height, width);
    QVERIFY(height == QFontMetrics(QApplication::font()).height() && height < 40);
    QVERIFY(width == QFontMetrics(QApplication::font()).horizontalAdvance("text"));
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
        {{{"B", -1, 0, {}}}, most, "-18446744073709551616.00 B"}, // the longest
        {{}, 7, ""},
        {{{"B", 0, 0, {}}}, 7, "inf B"},
    };
    for (const auto& row : cases)
        QCOMPARE(CommonUtils::SpeedFluxToString(row.ladder, row.value, "Plugin"), row.text);
    QCOMPARE(log().count("{time}: {file}: SpeedFluxToString: Entered"), 11);
    QCOMPARE(log().count("{time}: {file}: SpeedFluxToString: Exit"), 10); // none for the empty ladder
    QCOMPARE(CommonUtils::SpeedUnitToString(falling, "Plugin"), QString("MB"));
    QCOMPARE(CommonUtils::SpeedUnitToString({}, "Plugin"), QString());
}

QTEST_MAIN(TestTexts)
#include "tst_texts.moc"
