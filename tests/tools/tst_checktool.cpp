// Checks a sound installation with one thing wrong in it at a time. Each XML file is also compared with its schema
// by another validator, which has to agree.
#include "DataTable.h"
#include "RunTool.h"
#include "Xmllint.h"

#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

class tst_CheckTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findings_data();
    void findings();
    void shippedFiles();
    void soundForms_data();
    void soundForms();
    void libraries_data();
    void libraries();
    void report();
    void deeplyNested();
    void explanation_data();
    void explanation();
    void refuses();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    QByteArray check(int exitCode) { return runTool("skylume-check", {m_folder->path()}, exitCode); }

    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

const QString Config = "config/PluginsConfig.xml";
const QString Library = "config/pluginslib.xml";
const QString Menu = "plugins/GoodPlugin/menu.xml";
const QString ToolBar = "plugins/GoodPlugin/toolbar.xml";
const QString Operators = "plugins/StatusBarMgrPlugin/OperatorList.xml";
const QString Units = "plugins/StatusBarMgrPlugin/Units.xml";
const QString Splash = "plugins/XFramePlugin/Config.xml";
const QString Areas = "LangAreaForShort.xml";
const QString Defaults = "config/defaults.ini";
const QString Modems = "config/simulator.ini";
const QString Texts = "plugins/XFramePlugin/XFramePlugin_en-us.lang";

const QByteArray Clsid = "11111111-0000-0000-0000-000000000002";

/// The kinds of findings that a schema decides.
const QSet<QString> SchemaKinds = {"broken-xml",        "wrong-root",        "unknown-element",
                                   "misplaced-element", "repeated-element",  "missing-element",
                                   "unknown-attribute", "missing-attribute", "bad-value",
                                   "stray-text",        "duplicate-entry"};

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The schema for a file: its name or its content tells.
QString schemaOf(const QString& path)
{
    const std::pair<const char*, const char*> marks[] = {{"<ToolBar", "toolbar"},
                                                         {"<menu", "menu"},
                                                         {"<customize_", "standard-configuration"},
                                                         {"<function", "main-window"},
                                                         {"<language>", "language"}};
    const QByteArray content = read(path);
    for (const auto& [mark, schema] : marks)
        if (content.contains(mark))
            return schema;
    return QFileInfo(path).completeBaseName();
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

void copy(const QString& from, const QString& to)
{
    QDir().mkpath(QFileInfo(to).path());
    QVERIFY2(QFile::copy(from, to), qPrintable(from));
    QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
}

/// "FILE:LINE KIND" for each finding.
QStringList findingsIn(const QByteArray& output, const QString& folder)
{
    static const QRegularExpression line("^(.+:\\d+): (?!note: ).*\\[([a-z-]+)\\]$");
    QStringList found;
    for (const QByteArray& text : output.split('\n')) {
        const QRegularExpressionMatch match = line.match(QString::fromLocal8Bit(text));
        if (match.hasMatch())
            found.append(match.captured(1).mid(folder.size() + 1) + ' ' + match.captured(2));
    }
    return found;
}

/// Another validator's opinion of a file.
void checkSchema(const QString& file, bool isValid)
{
    checkSchema(schemaOf(file), {file}, isValid);
}

} // namespace

void tst_CheckTool::init()
{
    m_folder.reset(new QTemporaryDir);
    const QString source = SOUND_INSTALLATION;
    for (QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QString file = files.next();
        copy(file, path(file.mid(source.size() + 1)));
    }
    for (const char* name : {"Main", "Good"})
        copy(TEST_PLUGINS "/CheckedPlugin" LIBRARY_SUFFIX, path(QString(name) + LIBRARY_SUFFIX));
}

/// The tool's own opinion of them is the test installation_files.
void tst_CheckTool::shippedFiles()
{
    QMap<QString, QStringList> files;
    for (QDirIterator all(SHIPPED_INSTALLATION, {"*.xml", "*.lang"}, QDir::Files,
                          QDirIterator::Subdirectories);
         all.hasNext();) {
        const QString file = all.next();
        files[schemaOf(file)].append(file);
    }
    QVERIFY(files.size() >= 9);
    for (auto schema = files.cbegin(); schema != files.cend(); ++schema)
        checkSchema(schema.key(), schema.value(), true);
}

void tst_CheckTool::findings_data()
{
    // What to replace in a file and by what; without either the file is removed.
    const auto row = dataTable<QString, QByteArray, QByteArray, QString>("file", "from", "to", "findings");
    const QByteArray add = "<add clsid=\"" + Clsid + "\"/>";
    row("nothing", Library, "<plugins>", "<plugins>", "");
    row("missing file", Config, "", "", Config + ":1 missing-file");
    row("broken XML", Config, "<plugin/>", "<plugin>", Config + ":22 broken-xml");
    row("root", Operators, "OperatorList>", "Operators>", Operators + ":1 wrong-root");
    row("root of no meaning", Library, "plugins>", "list>", Library + ":1 wrong-root");
    row("element", Splash, "<splash>true</splash>", "<Splash/>", Splash + ":3 unknown-element");
    row("after static", Library, "<active>true</active>\n    <static>true</static>",
        "<static>true</static>\n    <active>true</active>", Library + ":8 misplaced-element");
    row("before function", Splash, "<function>",
        "<customize name=\"x\"><splash>true</splash></customize><function>", Splash + ":2 misplaced-element");
    row("second plugin", Config, "<plugin/>", "<plugin/><plugin/>", Config + ":21 repeated-element");
    row("second name", Library, "<type>0</type>", "<name>GoodPlugin</name>",
        Library + ":13 repeated-element");
    row("second item", Units, "value=\"1024\"/>", "value=\"1024\"/><item name=\"x\" value=\"y\"/>",
        Units + ":3 repeated-element");
    row("second part", Menu, "</customize>", "</customize><customize/>", Menu + ":18 repeated-element");
    row("no static", Library, "<static>true</static>", "", Library + ":3 missing-element");
    row("no name", Library, "<name>XFramePlugin</name>", "", Library + ":3 missing-element");
    row("attribute", Config, "<common/>", "<common x=\"y\"/>", Config + ":23 unknown-attribute");
    row("no attribute", Areas, "lang=\"English\" id=\"\"", "id=\"\"", Areas + ":3 missing-attribute");
    row("flag", Library, "<active>true", "<active>True", Library + ":7 bad-value");
    row("IMSI", Config, "\"00101\"", "\"001x\"", Config + ":15 bad-value");
    row("count", ToolBar, "\"2\">", "\"-1\">", ToolBar + ":2 bad-value");
    row("stray text", Config, "<common/>", "<common/> common", Config + ":1 stray-text");
    row("duplicate network", Operators, "</MccMnc>",
        "<Item mcc=\"001\" mnc=\"01\" shortdescr=\"Uno\"/></MccMnc>", Operators + ":5 duplicate-entry");
    row("two conditions", Units, "</qrvldoc>",
        "<customize_item><conditions><item name=\"operator\" "
        "value=\"b\"/></conditions></customize_item></qrvldoc>",
        Units + ":13 duplicate-entry");
    row("repeated entry", Config, add, add + add, Config + ":7 repeated-entry");
    row("clsid", Config, "<common/>", "<common><item clsid=\"X\"/></common>", Config + ":23 unknown-clsid");
    row("main plugin", Library, "<mainplugin>1", "<mainplugin>2", Library + ":2 unknown-main-plugin");
    row("library", Library, "Good.dll", "Bad.dll", Library + ":10 missing-library");

    row("parent", Menu, "parent=\"More\"", "parent=\"more\"", Menu + ":8 unknown-parent");
    row("menu", Menu, "name=\"Tray\">\n        ", "name=\"Main\">", Menu + ":13 unknown-menu");
    row("removal of a sub-menu", Menu, "\"ITEM\" id=\"IDS_MENU_OPEN\" action",
        "\"POPUP\" id=\"IDS_MENU_MORE\" action", "");
    row("removal of nothing", Menu, "\"IDS_MENU_OPEN\" action", "\"IDS_NONE\" action",
        Menu + ":14 nothing-to-remove");
    row("action", Menu, " action=\"add\"", "", Menu + ":15 no-action");
    row("text", Menu, "id=\"IDS_MENU_MORE\">More", "id=\"IDS_MENU_LESS\">More", Menu + ":6 unknown-text");
    row("operator's text", Operators, "IDS_ONE", "IDS_TWO", Operators + ":4 unknown-text");
    row("two blocks", Menu, "</block>", "</block><b name=\"x\"/>", Menu + ":12 block-runs-on");
    row("hidden block", Menu, "<block name=\"northtel\">\n      <menu",
        "<block name=\"x\"><menu parent=\"null\" name=\"northtel\"/>\n      <menu",
        Menu + ":12 hidden-block; " + Menu + ":12 unknown-menu");
    row("block of another", Menu, "name=\"northtel\">\n      <menu parent=\"null\" name=\"Tray\">",
        "name=\"Tray\">\n      <menu parent=\"null\" name=\"Tray\">", "");
    row("late menu", Menu, "</qrvldoc>", "<menu parent=\"null\" name=\"Late\"/></qrvldoc>",
        Menu + ":19 menu-after-blocks");
    row("no block", Menu, "<block name", "<block operator", Menu + ":12 nameless-block");
    row("button's plugin", ToolBar, "\"GoodPlugin\"", "\"goodplugin\"", ToolBar + ":3 unknown-plugin");
    row("icon", ToolBar, "\"OPEN\" enabled=\"on.png\"", "\"OPEN\" enabled=\"On.svg\"",
        ToolBar + ":3 missing-icon");
    row("wrong count", ToolBar, "\"2\">", "\"3\">", ToolBar + ":2 wrong-count");

    row("INI line", Defaults, "Name=Blue", "Name Blue", Defaults + ":6 broken-line");
    row("quotes", Defaults, "northtel", "\"northtel\"", Defaults + ":2 quoted-value");
    row("modem", Modems, "state=attached", "state=on", Modems + ":2 modem-file");
    row("modem's name", Config, "Lume S1", "Lume s1", Config + ":10 name-in-other-case");
    row("group", Modems, "NT-GOLD", "NT-Gold", Config + ":20 name-in-other-case");
    row("operator", Units, "northtel", "NorthTel", Units + ":10 name-in-other-case");
    row("unit", Units, "\"1000\"", "\"1 000\"", Units + ":7 no-unit");
    row("language", Defaults, "_en-us", "en-us", Defaults + ":4 unknown-language");
    row("language of the list", "SysConfig.dat", "=English", "=english", "SysConfig.dat:2 unknown-language");
    row("language of the table", Areas, "1033\">en-us", "1033\">en-gb", Areas + ":2 unknown-language");
    row("skin", Defaults, "Name=Blue", "Name=Red", Defaults + ":6 unknown-skin");
    row("mirrored skin", "skin/Blue/Blue_Arabic.qss", "", "", "skin/Blue.qss:1 skin-without-mirror");
    row("empty text", Texts, ">Title<", "><", Texts + ":2 language-file");
    row("text's element", Texts, "</language>", "<Item/></language>", Texts + ":3 unknown-element");
}

void tst_CheckTool::findings()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, findings);
    QByteArray content = read(path(file));
    if (from.isEmpty() && to.isEmpty()) {
        QVERIFY(QFile::remove(path(file)));
    } else {
        QVERIFY(content.contains(from));
        const bool isTag = from.endsWith('>') && !from.startsWith('<'); // its end is to change, too
        const int place = content.indexOf(from);
        write(path(file), isTag ? content.replace(from, to) : content.replace(place, from.size(), to));
    }
    const QByteArray output = check(findings.isEmpty() ? 0 : 1);
    const QStringList found = findingsIn(output, m_folder->path());
    QVERIFY2(found.join("; ") == findings, "Found: " + found.join("; ").toUtf8());
    const bool isValid = std::none_of(found.begin(), found.end(), [](const QString& finding) {
        return SchemaKinds.contains(finding.section(' ', 1));
    });
    if (QFile::exists(path(file)) && !file.endsWith(".ini") && !file.endsWith(".dat"))
        checkSchema(path(file), isValid);
}

void tst_CheckTool::soundForms_data()
{
    // Other forms that are read without loss.
    const auto row = dataTable<QString, QByteArray>("file", "content");
    row("toolbar as root", ToolBar,
        "<ToolBar count='1'><item id='1' enabled='on.png' disabled='off.png'/><GroupInGroup "
        "enable='0'/></ToolBar>");
    row("values in several blocks", Units,
        "<qrvldoc><customize_Info/><customize_Info><item name='a' "
        "value=''/></customize_Info><customize_item/></qrvldoc>");
    row("only countries", Operators,
        "<OperatorList><MccOnly><Item mcc='001' shortdescr='X'/></MccOnly></OperatorList>");
    row("several lists", Operators, "<OperatorList><MccMnc/><MccMnc/></OperatorList>");
    row("no rules", Config, "<config><GID name='a'><plugin/></GID><GID name='a'><plugin/></GID></config>");
    row("no operators", Splash, "<config><function/></config>");
    row("plain menus", Menu,
        "<qrvldoc><menu parent='null' name='a'/><menu parent='null' name='b'/></qrvldoc>");
    row("for an editor", Splash,
        "<config xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
        "xsi:noNamespaceSchemaLocation='x'><function/></config>");
}

void tst_CheckTool::soundForms()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    write(path(file), content);
    check(0);
    checkSchema(path(file), true);
}

void tst_CheckTool::libraries_data()
{
    const auto row =
        dataTable<QString, QByteArray, QString, QByteArray>("plugin", "content", "kind", "words");
    const QByteArray iid =
        "com.velquor.skylume.plugin.IBasePlugin; found: com.velquor.skylume.test.BarePlugin";
    row("interface", "TestBare", "", "missing-interface", iid);
#ifndef Q_OS_WIN // nothing can be linked there without all its symbols
    row("symbol", "TestUndefined", "", "missing-dependency", "definedNowhere");
#endif
    row("constructor", "ThrowingPlugin", "", "constructor-throws", "found: not today");
    row("other system", "",
        QByteArray("\x7F"
                   "ELF\x02\x01",
                   6) +
            QByteArray(12, '\0') + QByteArray("\xF3\0", 2),
        "other-platform", "found: a Linux library for RISC-V");
    row("no library", "", "text", "not-a-plugin", "found: a file without");
}

void tst_CheckTool::libraries()
{
    QFETCH(QString, plugin);
    QFETCH(QByteArray, content);
    QFETCH(QString, kind);
    QFETCH(QByteArray, words);
    const QString library = path(QString("Good") + LIBRARY_SUFFIX);
    QVERIFY(QFile::remove(library));
    if (plugin.isEmpty())
        write(library, content);
    else
        copy(QString(TEST_PLUGINS "/%1" LIBRARY_SUFFIX).arg(plugin), library);
    const QByteArray output = check(1);
    QCOMPARE(findingsIn(output, m_folder->path()).join("; "), Library + ":10 " + kind);
    QVERIFY2(output.contains(words), output);

    // The same is said of a plugin that is on, and only of one.
    const QStringList explain{"explain", m_folder->path()};
    QVERIFY(runTool("skylume-check", explain, 1).contains(words));
    QVERIFY(!runTool("skylume-check", explain + QStringList{"--device", "Lume S1"}, 0).contains(words));
}

/// What a finding looks like, notes, and a library whose name begins like another.
void tst_CheckTool::report()
{
    copy(path(QString("Good") + LIBRARY_SUFFIX), path(QString("GoodOld") + LIBRARY_SUFFIX));
    const QByteArray output = check(1);
    const QByteArray folder = m_folder->path().toLocal8Bit();
    QVERIFY2(output.contains(folder + "/plugins/GoodPlugin/menu.xml:11: note: operators change"), output);
    QVERIFY2(
        output.contains("Faults: 1\n" + folder +
                        "/config/pluginslib.xml:10: \"Good\" fits more than one library: good" LIBRARY_SUFFIX
                        ", goodold" LIBRARY_SUFFIX " [ambiguous-library]\n    At run time: The first one"),
        output);
    QCOMPARE(output.split('\n').last(), QByteArray());
}

void tst_CheckTool::deeplyNested()
{
    constexpr int depth = 100000;
    write(path(Menu), "<qrvldoc>" + QByteArray("<menu>").repeated(depth) +
                          QByteArray("</menu>").repeated(depth) + "</qrvldoc>");
    QVERIFY(check(1).contains("[unknown-element]"));
}

void tst_CheckTool::explanation_data()
{
    // Of a plugin what is said, without the place of the rule: that is in the line of `section` that names it.
    const auto row = dataTable<QStringList, QString, QString>("arguments", "said",
                                                              "section"); // the last empty without a rule
    row("operator removes", {}, "HelpPlugin removed removed by the operator northtel",
        "customize name=\"northtel\"");
    row("operator adds", {}, "CallUIPlugin on added by the operator northtel", "customize name=\"northtel\"");
    row("no operator", {"--operator", ""}, "HelpPlugin on enabled for everyone", "common");
    row("no rule", {"--operator", "x"}, "DialPadPlugin off no rule enables it", "");
    row("modem", {"--device", "Lume S1"}, "SmsPlugin off turned off for modem Lume S1",
        "device name=\"Lume S1\"");
    row("modem in other case", {"--device", "lume s1"}, "SmsPlugin on enabled for everyone", "common");
    row("group", {"--device", "Lume S1", "--gid", "NT-GOLD"}, "DialPadPlugin on added for group NT-GOLD",
        "GID name=\"NT-GOLD\"");
    row("unknown group", {"--device", "Lume S1", "--gid", "NT"}, "SmsPlugin off turned off for modem Lume S1",
        "device name=\"Lume S1\"");
    row("SIM before group", {"--device", "Lume S1", "--gid", "NT-GOLD", "--imsi", "310260123456789"},
        "SimInfoPlugin off turned off for SIM 310260", "IMSI name=\"310260\"");
}

/// What the shipped rules say. The comments in the file name the plugins.
void tst_CheckTool::explanation()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, said);
    QFETCH(QString, section);
    const QString folder = SHIPPED_INSTALLATION;
    const QString rules = folder + "/config/PluginsConfig.xml";
    const QByteArrayList lines = read(rules).split('\n');
    if (!section.isEmpty()) {
        const auto isIn = [](const QString& text) {
            return [bytes = text.toUtf8()](const QByteArray& line) {
                return line.contains(bytes);
            };
        };
        const auto begin = std::find_if(lines.begin(), lines.end(), isIn('<' + section + '>'));
        const auto rule = std::find_if(begin, lines.end(), isIn("<!-- " + said.section(' ', 0, 0)));
        said += QString(" %1:%2").arg(rules).arg(rule - lines.begin() + 1);
    }
    const QString output = runTool("skylume-check", QStringList{"explain", folder} + arguments, 0);
    const QString simplified = QString(output).replace(QRegularExpression(" +"), " ").replace(" \n", "\n");
    QVERIFY2(simplified.contains('\n' + said + '\n'), qPrintable(output + said));
}

void tst_CheckTool::refuses()
{
    const std::pair<QStringList, QByteArray> rows[] = {
        {{}, "the folder of an installation is needed"},
        {{"explain"}, "the folder of an installation is needed"},
        {{"explain", m_folder->path(), m_folder->path()}, "the folder of an installation is needed"},
        {{path("none")}, "not a folder"},
        {{path(Library)}, "not a folder"},
        {{m_folder->path(), "--gid", "x"}, "--gid belongs to \"explain\""},
    };
    for (const auto& [arguments, message] : rows) {
        const QByteArray output = runTool("skylume-check", arguments, 2);
        QVERIFY2(output.contains(message), output);
    }
}

QTEST_GUILESS_MAIN(tst_CheckTool)
#include "tst_checktool.moc"
