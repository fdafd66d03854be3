// Addresses and links, the other text helpers, texts in widgets, and units.
#include "common/CommonUtils.h"

#include "CoreTest.h"

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
    void splitting();
    void direction();
    void hugeTexts();
    void elided();
    void measured();
    void units();
};

namespace {

/// @param pieces separated by spaces
QString randomText(const QString& pieces, int mostPieces)
{
    const QStringList list = pieces.split(' ');
    QString text;
    for (int i = QRandomGenerator::global()->bounded(mostPieces + 1); i > 0; --i)
        text += list.at(QRandomGenerator::global()->bounded(list.size()));
    return text;
}

} // namespace

/// Compares with the patterns that define the tests, for every UTF-16 unit in the place of "%1" and for words
/// made of what matters.
void TestTexts::addresses()
{
    const std::tuple<bool (*)(QString), QRegExp, QStringList> cases[] = {
        {CommonUtils::CheckForEmailAddr,
         QRegExp(R"(^[\w-]+(\.[\w-]+)*@[\w-]+(\.[\w-]+)+$)"),
         {"%1", "%1@b.c", "a@b%1", "a@b%1@b.c", "a@b.%1"}},
        {CommonUtils::CheckForHttpAddr,
         QRegExp(R"(^[http|https]+://[\0-\0377]*$)", Qt::CaseInsensitive),
         {"%1", "%1://", "s%1://", "http://%1", "http:/%1"}},
        {CommonUtils::CheckForWebAddr,
         QRegExp(R"(^([a-z0-9]+\.)*[a-z0-9]+(\.[a-z]{2,6}){1,2}$)"),
         {"%1.de", "a.b%1", "a.b%1.de", "a.%1", "a.%1.de", "a.abcde%1", "a.abcdef%1"}}};
    for (const auto& [test, pattern, forms] : cases) {
        QStringList words;
        for (int i = 0; i < 20000; ++i)
            words += randomText("a Z 0 . . @ @ - _ :// h tps T | \n \" < \u00E9 \u017F abcdefg", 10);
        for (const QString& form : forms) {
            for (int unit = 0; unit <= 0xFFFF; ++unit)
                words += form.arg(QChar(unit));
        }
        for (const QString& word : qAsConst(words))
            QVERIFY2(test(word) == pattern.exactMatch(word), qPrintable(word));
    }
}

void TestTexts::links()
{
    const QString nul = QChar(0);
    const auto target = [](const QString& scheme, const QString& word) {
        return "<a href = " + scheme + word + '>' + word + "</a>";
    };
    const QPair<QString, QString> cases[] = {
        {"", ""},
        {" a  &w\n\r\n", "&nbsp;a&nbsp;&nbsp;&w&nbsp;\n\r&nbsp;\n"},
        {"<b\n>", "&lt;b&nbsp;\n&gt;"},
        {"a@b.c\nhttp://a", target("mailto:", "a@b.c") + "&nbsp;\nhttp://a"},
        {"\na@b.c w@b.c", "&nbsp;\na@b.c&nbsp;" + target("mailto:", "w@b.c")},
        {"www.a.de\nwww.b.de", target("http://", "www.a.de") + "&nbsp;\n" + target("http://", "www.b.de")},
        {"a.www.de www.A.de WWW.a.de", "a.www.de&nbsp;www.A.de&nbsp;WWW.a.de"},
        {"https://a<\u00E9", target("", "https://a&lt;\u00E9")},
        {"pst://a ftp://a http:// http://<", "pst://a&nbsp;ftp://a&nbsp;http://&nbsp;http://&lt;"},
        {"\u0436@b.c http://a\u0178 ", "\u0436@b.c&nbsp;http://a\u0178&nbsp;"}, // outside 1 to 255
        {nul + "<@b.c http://a" + nul, nul + "&lt;@b.c&nbsp;http://a" + nul}};
    for (const auto& [text, richText] : cases)
        QCOMPARE(CommonUtils::ParseAndCreateHyperLinks(text), richText);

    for (const QString word : {"", "\n", "http://", "ftp://", "ftp://-", "http://\u0436", "http://a\u0436",
                               "mailto:a", " http://a", "\n\nhttp://a", "ftps://a", "http:/a"})
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp(word), word);
    for (const QString word : {"http://a", "HTTPS://9.", "ftp://a", "FTP://\u00E9 \n", "ftp://\u0436"})
        QCOMPARE(CommonUtils::createLinkForHttpAndFtp('\n' + word), '\n' + target("", word));
}

void TestTexts::splitting()
{
    const QString nul = QChar(0);
    for (const QStringList& runs :
         QList<QStringList>{{}, {"a \u00FF\u0001", "\u4F60\u0100" + nul, "."}, {nul, "a", nul}}) {
        bool flag = true;
        QCOMPARE(CommonUtils::SplitAsciiAndUnicodeString(runs.join("")), runs);
        QCOMPARE(CommonUtils::SplitAsciiString(runs.join(""), flag).join("|"), runs.join(""));
        QVERIFY(!flag);
        for (const QString& run : runs)
            QCOMPARE(CommonUtils::isNonAsciiCharPresent(run), run.contains(nul));
    }
    QCOMPARE(CommonUtils::addSpaceToNewLine("a\n\nb "), QString("a \n \nb "));
    for (const auto& [line, params] : {std::pair<QString, QStringList>{" ", {}},
                                       {" a  b\tc ", {"a", "b\tc"}},
                                       {R"(a"b  c"d"")", {"a", "b  c", "d", ""}},
                                       {R"("a" "b" c")", {}}})
        QCOMPARE(CommonUtils::GetParamList(line), params);
}

/// Compares with the definition, which takes cubic time.
void TestTexts::direction()
{
    for (int i = 0; i < 3000; ++i) {
        QString text = randomText("a b 1 \t , , \" ( ) [ ] { } \u05D0 \u0627 \u202D", 40);
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
    log().allow("{file}: {func}: a text of {n} characters would collect too many marks");
    for (const QString pattern : {"x", "word ", "\n<", "http://", "a@b.c ", "www.a.de\n", "a,", "\u0436"}) {
        const QString text = pattern.repeated(1000000 / pattern.size());
        QVERIFY(CommonUtils::ParseAndCreateHyperLinks(text).size() >= text.size());
        QString corrected = text;
        CommonUtils::ParanthesisCorrection(corrected);
        QCOMPARE(corrected, text); // unchanged: too many marks, or none
        QLabel label;
        CommonUtils::ElidedText(&label, text, Qt::ElideNone);
        QCOMPARE(label.text(), text);
        for (const auto mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight}) {
            CommonUtils::ElidedText(&label, text, mode);
            QVERIFY(label.text().size() <= 16 * 1024);
        }
    }
}

void TestTexts::elided()
{
    const QString text = "A text that is rather long";
    QLabel label;
    QPushButton button;
    button.setFont(label.font());
    for (const int room : {50, 0, -1, -1000}) { // beside the text and the margin; negative: too narrow
        const int width = qMax(0, label.fontMetrics().boundingRect(text).width() + room);
        const QString shown = room < 0 ? label.fontMetrics().elidedText(text, Qt::ElideMiddle, width) : text;
        const QString toolTip = room < 0 ? text : QString();
        label.resize(width + 2, 20);
        button.resize(width + 10, 20);
        CommonUtils::LableElidedText(&label, text, Qt::ElideMiddle);
        CommonUtils::AbstractButtonElidedText(&button, text, Qt::ElideMiddle);
        QCOMPARE(QStringList({label.text(), label.toolTip(), button.text(), button.toolTip()}),
                 QStringList({shown, toolTip, shown, toolTip}));
        label.setToolTip("old");
        button.setToolTip("old");
    }
    CommonUtils::LableElidedText(nullptr, text, Qt::ElideRight);
    CommonUtils::AbstractButtonElidedText(nullptr, text, Qt::ElideRight);
    const QString place = "{time}: {file}: ";
    VERIFY_LOGGED_IN_ORDER(place + "LableElidedText: {n}: Entered", place + "ElidedText: {n}: Entered",
                           place + "setElidedTextForWidgetText: {n}: Enter",
                           place + "ElidedText: {n}: NULL == pLabel", place + "LableElidedText: {n}: Exit",
                           place + "AbstractButtonElidedText: {n}: NULL == pButton");
}

void TestTexts::measured()
{
    QWidget widget;
    widget.setFont(QFont("Any", 40));
    QSize size(-1, -1);
    CommonUtils::GetWidgetStringHeightAndWidth(nullptr, "text", size.rheight(), size.rwidth());
    CommonUtils::GetWidgetStringHeightAndWidth(&widget, "", size.rheight(), size.rwidth());
    CommonUtils::GetApplicationStringHeightAndWidth("", size.rheight(), size.rwidth());
    QCOMPARE(size, QSize(-1, -1));
    const QString place = "{time}: {file}: GetWidgetStringHeightAndWidth {n}",
                  last = "{time}: {file}: GetApplicationStringHeightAndWidth {n}";
    VERIFY_LOGGED_IN_ORDER("Enter  : " + place, place + " : Bad input Param",
                           place + " : Empty String in the widget", "End  : " + place,
                           last + " : Empty String in the widget");
    const QFontMetrics large = widget.fontMetrics(), usual(QApplication::font());
    CommonUtils::GetWidgetStringHeightAndWidth(&widget, "text", size.rheight(), size.rwidth());
    QCOMPARE(size, QSize(large.horizontalAdvance("text"), large.height()));
    CommonUtils::GetApplicationStringHeightAndWidth("text", size.rheight(), size.rwidth());
    QCOMPARE(size, QSize(usual.horizontalAdvance("text"), usual.height()));
}

void TestTexts::units()
{
    const QVector<TagUnits> rising{{"B", 1, 0, {}}, {"KB", 1024, 1024, {}}, {"MB", 1048576, 1048576, {}}};
    const QVector<TagUnits> falling{rising[2], rising[1]};
    const quint64 most = std::numeric_limits<quint64>::max();
    const std::tuple<QVector<TagUnits>, quint64, QString> cases[] = {
        {rising, 0, "0.00 B"},
        {rising, 1024, "1024.00 B"},
        {rising, 1025, "1.00 KB"},
        {rising, most, "17592186044416.00 MB"},
        {falling, 2000000, "1953.12 KB"}, // the last in order, and a tie that goes to the even digit
        {falling, 1, "0.00 MB"},          // none qualifies
        {{rising[0]}, 9007199254740993, "9007199254740992.00 B"}, // as a double everywhere
        {{{"B", -1, 0, {}}}, most, "-18446744073709551616.00 B"}, // the longest
        {{{"B", 0, 0, {}}}, 7, "inf B"},
        {{}, 7, ""}};
    for (const auto& [ladder, value, text] : cases)
        QCOMPARE(CommonUtils::SpeedFluxToString(ladder, value, "Plugin"), text);
    QCOMPARE(log().count("{time}: {file}: SpeedFluxToString: Exit"), 9); // none for the empty ladder
    QCOMPARE(CommonUtils::SpeedUnitToString(falling, "Plugin"), QString("MB"));
    QCOMPARE(CommonUtils::SpeedUnitToString({}, "Plugin"), QString());
}

QTEST_MAIN(TestTexts)
#include "tst_texts.moc"
