#include "RunTool.h"
#include "Samples.h"

#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

using Files = QMap<QString, QByteArray>; // content by name

class tst_LangTool : public QObject
{
    Q_OBJECT

private slots:
    void checkAgainstReference();
    void checkShortcuts();
    void newLanguage();
    void refuses();
};

namespace {

const QString Tool = "skylume-lang";
const QByteArray CleanText = R"(<item name="IDS_A">one %1</item>)";

QByteArray language(const QByteArray& items)
{
    return "<language>\n" + items + "\n</language>\n";
}

/// Checks a folder of these files and compares the reported faults.
void check(const Files& files, const QStringList& faults)
{
    const QTemporaryDir folder;
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        writeFile(folder.filePath(file.key()), file.value());
    const QByteArray output = runTool(Tool, {"check", folder.path()}, faults.isEmpty() ? 0 : 1);
    for (const QString& fault : faults)
        QVERIFY2(output.contains(fault.toUtf8()), fault.toUtf8() + " is not in: " + output);
    QVERIFY2(output.count('\n') == (faults.isEmpty() ? 0 : faults.size() + 1), output);
}

} // namespace

/// A German file beside a sound English one: "+" stands before its lines, "!" before what is said of it.
void tst_LangTool::checkAgainstReference()
{
    for (const Sample& sample : samplesIn(DATA "/translations.txt")) {
        const QByteArray german = language(sample.marked("+ ").join('\n').toUtf8());
        check({{"P_en-us.lang", language(CleanText)}, {"P_de-de.lang", german}}, sample.marked("! "));
    }
}

void tst_LangTool::checkShortcuts()
{
    // German texts know other words for the keys than all others.
    const QByteArray save = R"(<item name="IDS_S">Save (Ctrl+S)</item>)";
    check({{"P_en-us.lang", language(save)}, {"P_de-de.lang", language(save)}},
          {R"(P_de-de.lang:2: "IDS_S" has no shortcut that can be read)"});
    check({{"P_en-us.lang", language(R"(<item name="IDS_S">To the Alternative</item>)")}},
          {R"(P_en-us.lang:2: "IDS_S" ends with an unknown shortcut, "Alternative")"});

    // Two texts with one shortcut are a fault only where both stand in one menu.
    const QByteArray pair = save + "\n" + R"(<item name="IDS_T">Send (Ctrl+S)</item>)";
    const auto inMenus = [&pair](const QByteArray& between) {
        const QByteArray menu = R"(<qrvldoc><menu parent="null" name="M"><item type="ITEM" id="IDS_S"/>)" +
                                between + R"(<item type="ITEM" id="IDS_T"/></menu></qrvldoc>)";
        return Files{{"P_en-us.lang", language(pair)}, {"menu.xml", menu}};
    };
    check(inMenus({}), {R"("IDS_S" in line 2, and both are in the menu "M")"});
    check(inMenus(R"(</menu><menu parent="Sub">)"), {});
    check({{"P_en-us.lang", language(QByteArray(pair).replace("IDS_", "IDS_MENU_"))}}, // a menu in code
          {R"(P_en-us.lang:3: "IDS_MENU_T" has the shortcut Ctrl+S of "IDS_MENU_S" in line 2)"});
}

// A language that does not exist yet; one text is translated, another is removed from the reference. Comments
// survive, wherever they are, and can always be read again.
void tst_LangTool::newLanguage()
{
    const QTemporaryDir folder;
    const QString linguist = folder.filePath("X_pt-br.ts");
    const QString translated = folder.filePath("P_pt-br.lang");
    const QByteArray second = "  <item name=\"IDS_B\">two</item>\n  <!-- behind -->\n  <!-- last -->";
    const QByteArray first = "  <!-- one -->\n  <!-- two -->\n  " + CleanText + '\n';
    writeFile(folder.filePath("P_en-us.lang"), language(first + second));
    QCOMPARE(runTool(Tool, {"to-ts", translated, "--output", linguist}, 0), QByteArray());
    QByteArray content = contentOf(linguist);
    QVERIFY(content.contains(R"(language="pt_BR" sourcelanguage="en_US")"));
    QVERIFY(content.contains("<message id=\"IDS_A\">") && content.count("type=\"unfinished\"") == 2);
    content.replace(content.indexOf(" type=\"unfinished\">"), 19, ">um %1").replace("\n\ntwo", "\n\n--> -");
    writeFile(linguist, content);
    QCOMPARE(runTool(Tool, {"from-ts", linguist, "--output", translated}, 0), QByteArray());
    content = first + second.mid(second.indexOf('\n') + 1);
    content.replace("two", "- -> -").replace("one %1", "um %1");
    QVERIFY2(contentOf(translated).endsWith(language(content)), contentOf(linguist));

    writeFile(folder.filePath("P_en-us.lang"), language(second));
    runTool(Tool, {"to-ts", translated}, 0);
    QVERIFY(contentOf(folder.filePath("P_pt-br.ts"))
                .contains("<translation type=\"vanished\">um %1</translation>"));
    runTool(Tool, {"from-ts", folder.filePath("P_pt-br.ts")}, 0);
    QVERIFY(!contentOf(translated).contains("<item"));
}

void tst_LangTool::refuses()
{
    const std::tuple<QStringList, int, QByteArray> rows[] = {
        {{}, 2, "there is no command"},
        {{"check"}, 2, "needs paths"},
        {{"to-ts", "a_b.lang", "c_d.lang"}, 2, "needs one file"},
        {{"check", SHIPPED_PLUGINS "/XFramePlugin/splash"}, 1, "splash:1: there are no language files"},
        {{"check", "--languages", "de-de,x", SHIPPED_PLUGINS "/HelpPlugin"}, 1, "these languages: x\n"},
        {{"to-ts", "none_x.lang"}, 1, "none_en-us.lang:1: "},
        {{"from-ts", "none_x.ts"}, 1, "none_x.ts: "},
        {{"from-ts", "none.ts"}, 2, "--output is needed"},
    };
    for (const auto& [arguments, exitCode, message] : rows) {
        const QByteArray output = runTool(Tool, arguments, exitCode);
        QVERIFY2(output.contains(message), output);
    }
    check({{"P.lang", language(CleanText)}},
          {"P.lang:1: the file's name", "no files for these languages: en-us"});
}

QTEST_GUILESS_MAIN(tst_LangTool)
#include "tst_langtool.moc"
