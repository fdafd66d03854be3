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
    void check();
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
void checkFiles(const Files& files, const QStringList& faults)
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

/// "=" stands before the lines of the English file, which is a sound one if there are none, "+" before those of the German
/// one, "menu" before menus, "!" before what is said of them.
void tst_LangTool::check()
{
    for (const Sample& sample : samplesIn(DATA "/translations.txt")) {
        const QByteArray english = sample.marked("= ").join('\n').toUtf8();
        const QByteArray german = sample.marked("+ ").join('\n').toUtf8();
        const QByteArray menus = sample.marked("menu ").join('\n').toUtf8();
        Files files = {{"P_en-us.lang", language(english.isEmpty() ? CleanText : english)},
                       {"menu.xml", "<qrvldoc>" + menus + "</qrvldoc>"}};
        if (!german.isEmpty())
            files.insert("P_de-de.lang", language(german));
        checkFiles(files, sample.marked("! "));
        QVERIFY2(!QTest::currentTestFailed(), sample.name);
    }
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
    checkFiles({{"P.lang", language(CleanText)}},
               {"P.lang:1: the file's name", "no files for these languages: en-us"});
}

QTEST_GUILESS_MAIN(tst_LangTool)
#include "tst_langtool.moc"
