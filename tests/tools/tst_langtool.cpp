#include <QDir>
#include <QDirIterator>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using Files = QMap<QString, QByteArray>; // content by name
Q_DECLARE_METATYPE(Files)

class tst_LangTool : public QObject
{
    Q_OBJECT

private slots:
    void check_data();
    void check();
    void linguistAndBack();
    void newLanguage();
    void refuses_data();
    void refuses();
};

static const QByteArray CleanText = R"(<item name="IDS_A">one %1</item>)";

static QByteArray language(const QByteArray& items)
{
    return "<language>\n" + items + "\n</language>\n";
}

static bool write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

static QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Runs the tool; its standard output and error.
static QByteArray run(const QStringList& arguments, int exitCode)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QCoreApplication::applicationDirPath() + "/../../app/" LANGUAGE_TOOL, arguments);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != exitCode)
        qCritical("The tool ended with %d", tool.exitCode());
    return tool.readAll().replace("\r\n", "\n");
}

void tst_LangTool::check_data()
{
    QTest::addColumn<Files>("files");
    QTest::addColumn<QByteArrayList>("faults");
    const auto row = [](const char* name, const Files& files, const QByteArrayList& faults) {
        QTest::newRow(name) << files << faults;
    };
    /// A German file beside a sound English one.
    const auto german = [&](const char* name, const QByteArray& items, const QByteArrayList& faults) {
        row(name, {{"P_en-us.lang", language(CleanText)}, {"P_de-de.lang", language(items)}}, faults);
    };
    german("sound", R"(<item name="IDS_A">%1 eins</item>)", {});
    german(
        "missing and surplus", R"(<item name="IDS_B">zwei</item>)",
        {R"(P_de-de.lang:2: "IDS_B" is unknown to the reference)", R"(P_de-de.lang:2: "IDS_A" is missing)"});
    german("twice", CleanText + "\n\n" + CleanText, {R"(P_de-de.lang:4: "IDS_A" is there twice)"});
    german("no identifier", CleanText + "\n<item>x</item>",
           {R"(P_de-de.lang:3: the text "x" has no identifier)"});
    german(
        "no text", R"(<item name="IDS_A"/>)",
        {R"(P_de-de.lang:2: "IDS_A" has no text)", R"(P_de-de.lang:2: "IDS_A" has the placeholders none)"});
    german("element in text", R"(<item name="IDS_A">%1 <b>fett</b></item>)",
           {R"(P_de-de.lang:2: there is an element "b" within a text)"});
    german("broken", CleanText + "\n<item name=\"IDS_B\">",
           {"P_de-de.lang:4: broken XML in column", R"("IDS_B" is unknown)"});
    german("placeholder", R"(<item name="IDS_A">eins %2</item>)",
           {"has the placeholders %2, the reference has %1"});
    german("surplus shortcut", R"(<item name="IDS_A">%1 (Strg+A)</item>)", {"has a shortcut, the reference"});
    german("unknown shortcut", R"(<item name="IDS_A">%1 (Strg+5)</item>)", {"has a shortcut, the reference"});

    // German texts know other words for the keys than all others.
    const QByteArray save = R"(<item name="IDS_S">Save (Ctrl+S)</item>)";
    row("foreign shortcut", {{"P_en-us.lang", language(save)}, {"P_de-de.lang", language(save)}},
        {R"(P_de-de.lang:2: "IDS_S" has no shortcut that can be read)"});
    row("shortcut of nothing",
        {{"P_en-us.lang", language(R"(<item name="IDS_S">To the Alternative</item>)")}},
        {R"(P_en-us.lang:2: "IDS_S" ends with an unknown shortcut, "Alternative")"});

    // Two texts with one shortcut are a fault only where both stand in one menu.
    const QByteArray pair = save + "\n" + R"(<item name="IDS_T">Send (Ctrl+S)</item>)";
    const auto inMenus = [&pair](const QByteArray& between) {
        const QByteArray menu = R"(<qrvldoc><menu parent="null" name="M"><item type="ITEM" id="IDS_S"/>)" +
                                between + R"(<item type="ITEM" id="IDS_T"/></menu></qrvldoc>)";
        return Files{{"P_en-us.lang", language(pair)}, {"menu.xml", menu}};
    };
    row("no menu", {{"P_en-us.lang", language(pair)}}, {});
    row("one menu", inMenus({}), {R"("IDS_S" in line 2, and both are in the menu "M")"});
    row("two menus", inMenus(R"(</menu><menu parent="Sub">)"), {});
    row("menu in code", {{"P_en-us.lang", language(QByteArray(pair).replace("IDS_", "IDS_MENU_"))}},
        {R"(P_en-us.lang:3: "IDS_MENU_T" has the shortcut Ctrl+S of "IDS_MENU_S" in line 2)"});

    row("name", {{"P.lang", language(CleanText)}},
        {"P.lang:1: the file's name", "no files for these languages: en-us"});
}

void tst_LangTool::check()
{
    QFETCH(Files, files);
    QFETCH(QByteArrayList, faults);
    const QTemporaryDir folder;
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        QVERIFY(write(folder.filePath(file.key()), file.value()));
    const QByteArray output = run({"check", folder.path()}, faults.isEmpty() ? 0 : 1);
    for (const QByteArray& fault : qAsConst(faults))
        QVERIFY2(output.contains(fault), output);
    QCOMPARE(output.count('\n'), faults.isEmpty() ? 0 : faults.size() + 1);
}

void tst_LangTool::linguistAndBack()
{
    const QTemporaryDir folder;
    QDirIterator files(SHIPPED_PLUGINS "/XFramePlugin", {"*.lang"});
    QVERIFY(files.hasNext());
    while (files.hasNext()) {
        const QString shipped = files.next();
        const QString linguist = folder.filePath(files.fileInfo().completeBaseName() + ".ts");
        QCOMPARE(run({"to-ts", shipped, "--output", linguist}, 0), QByteArray());
        QVERIFY(read(linguist).contains("<message id=\"IDS_MENU_QUIT\">"));
        QCOMPARE(run({"from-ts", linguist}, 0), QByteArray());
        QCOMPARE(read(folder.filePath(files.fileName())), read(shipped));
    }
}

/// A language that does not exist yet; one text is translated, another was taken out of the reference.
void tst_LangTool::newLanguage()
{
    const QTemporaryDir folder;
    QVERIFY(write(folder.filePath("P_en-us.lang"), language(CleanText + R"(<item name="IDS_B">two</item>)")));
    run({"to-ts", folder.filePath("P_pt-br.lang")}, 0);
    const QString linguist = folder.filePath("P_pt-br.ts");
    QByteArray content = read(linguist);
    QVERIFY(content.contains(R"(language="pt_BR" sourcelanguage="en_US")"));
    QCOMPARE(content.count("type=\"unfinished\""), 2);
    content.replace(content.indexOf("<translation type=\"unfinished\"></translation>"), 45,
                    "<translation>um %1</translation>");
    QVERIFY(write(linguist, content));
    run({"from-ts", linguist}, 0);
    QVERIFY(write(folder.filePath("P_en-us.lang"), language(R"(<item name="IDS_B">two</item>)")));
    QVERIFY(read(folder.filePath("P_pt-br.lang")).contains("<item name=\"IDS_A\">um %1</item>"));

    run({"to-ts", folder.filePath("P_pt-br.lang")}, 0);
    QVERIFY(read(linguist).contains("<translation type=\"vanished\">um %1</translation>"));
    run({"from-ts", linguist}, 0);
    QVERIFY(!read(folder.filePath("P_pt-br.lang")).contains("<item"));
}

void tst_LangTool::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no command") << QStringList() << 2 << QByteArray("there is no command");
    QTest::newRow("unknown option") << QStringList{"check", "--all"} << 2 << QByteArray("all");
    QTest::newRow("check what") << QStringList("check") << 2 << QByteArray("needs paths");
    QTest::newRow("two files") << QStringList{"to-ts", "a_b.lang", "c_d.lang"} << 2
                               << QByteArray("needs one file");
    QTest::newRow("no such file") << QStringList{"check", "none_x.lang"} << 1
                                  << QByteArray("none_x.lang:1: ");
    QTest::newRow("nothing to check") << QStringList{"check", SHIPPED_PLUGINS "/support"} << 1
                                      << QByteArray("support:1: there are no language files");
    QTest::newRow("no such language")
        << QStringList{"check", "--languages", "de-de,pt-br", SHIPPED_PLUGINS "/HelpPlugin"} << 1
        << QByteArray("no files for these languages: pt-br\n");
    QTest::newRow("no reference") << QStringList{"to-ts", "none_x.lang"} << 1
                                  << QByteArray("none_en-us.lang:1: ");
    QTest::newRow("no translation") << QStringList{"from-ts", "none_x.ts"} << 1 << QByteArray("none_x.ts: ");
}

void tst_LangTool::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);
    const QByteArray output = run(arguments, exitCode);
    QVERIFY2(output.contains(message), output);
}

QTEST_GUILESS_MAIN(tst_LangTool)
#include "tst_langtool.moc"
