// Checks a sound installation with one thing wrong in it at a time. Each XML file is also compared with its schema
// by another validator, which has to agree.
#include "DataTable.h"
#include "RunTool.h"
#include "Samples.h"
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

const QString Library = "config/pluginslib.xml";
const QString Menu = "plugins/GoodPlugin/menu.xml";

/// The kinds of findings that a schema decides.
const QSet<QByteArray> SchemaKinds = {"broken-xml",        "wrong-root",        "unknown-element",
                                      "misplaced-element", "repeated-element",  "missing-element",
                                      "unknown-attribute", "missing-attribute", "bad-value",
                                      "stray-text",        "duplicate-entry"};

/// The schema for a file: its name or its content tells.
QString schemaOf(const QString& path)
{
    const std::pair<const char*, const char*> marks[] = {{"<ToolBar", "toolbar"},
                                                         {"<menu", "menu"},
                                                         {"<customize_", "standard-configuration"},
                                                         {"<function", "main-window"},
                                                         {"<language>", "language"}};
    const QByteArray content = contentOf(path);
    for (const auto& [mark, schema] : marks)
        if (content.contains(mark))
            return schema;
    return QFileInfo(path).completeBaseName();
}

void copy(const QString& from, const QString& to)
{
    QDir().mkpath(QFileInfo(to).path());
    QVERIFY2(QFile::copy(from, to), qPrintable(from));
    QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
}

/// "FILE:LINE KIND" for each finding.
QByteArrayList findingsIn(const QByteArray& output, const QString& folder)
{
    static const QRegularExpression line("^(.+:\\d+): (?!note: ).*\\[([a-z-]+)\\]$");
    QByteArrayList found;
    for (const QByteArray& text : output.split('\n')) {
        const QRegularExpressionMatch match = line.match(QString::fromLocal8Bit(text));
        if (match.hasMatch())
            found.append((match.captured(1).mid(folder.size() + 1) + ' ' + match.captured(2)).toUtf8());
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
    const QString source = DATA "/installation";
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

/// Changes of one file each: "-" stands before what is replaced, "+" before the replacement, "!" before a finding, which
/// is in this file if it names no other. Without "-" the file is removed.
void tst_CheckTool::findings_data()
{
    const auto row =
        dataTable<QByteArray, QByteArray, QByteArray, QByteArray>("file", "from", "to", "findings");
    for (const Sample& sample : samplesIn(DATA "/findings.txt")) {
        const auto joined = [&sample](const QByteArray& mark) {
            return sample.marked(mark).join('\n').toUtf8();
        };
        row(sample.name, sample.firstLine(), joined("- "), joined("+ "), joined("! "));
    }
}

void tst_CheckTool::findings()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    const QString changed = path(file);
    QByteArray content = contentOf(changed);
    QVERIFY(content.contains(from));
    const bool isTag = from.endsWith('>') && !from.startsWith('<'); // its end is to change, too
    const int place = content.indexOf(from);
    if (from.isEmpty())
        QVERIFY(QFile::remove(changed));
    else
        writeFile(changed, isTag ? content.replace(from, to) : content.replace(place, from.size(), to));
    QFETCH(QByteArray, findings);
    const QByteArray output = check(findings.isEmpty() ? 0 : 1);
    QByteArrayList found = findingsIn(output, m_folder->path());
    const bool isValid = std::none_of(found.begin(), found.end(), [](const QByteArray& finding) {
        return SchemaKinds.contains(finding.split(' ').last());
    });
    for (QByteArray& finding : found)
        finding = finding.startsWith(file + ':') ? finding.mid(file.size() + 1) : finding;
    QVERIFY2(found.join('\n') == findings, "Found: " + found.join("; "));
    if (QFile::exists(changed) && !file.endsWith(".ini") && !file.endsWith(".dat"))
        checkSchema(changed, isValid);
}

/// Other forms that are read without loss: a file of the installation, then its content.
void tst_CheckTool::soundForms_data()
{
    const auto row = dataTable<QByteArray, QByteArray>("file", "content");
    for (const Sample& sample : samplesIn(DATA "/forms.txt"))
        row(sample.name, sample.firstLine(), sample.body());
}

void tst_CheckTool::soundForms()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, content);
    writeFile(path(file), content);
    check(0);
    checkSchema(path(file), true);
}

void tst_CheckTool::libraries_data()
{
    const auto row =
        dataTable<QString, QByteArray, QByteArray, QByteArray>("plugin", "content", "kind", "words");
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
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, words);
    const QString library = path(QString("Good") + LIBRARY_SUFFIX);
    QVERIFY(QFile::remove(library));
    if (plugin.isEmpty())
        writeFile(library, content);
    else
        copy(QString(TEST_PLUGINS "/%1" LIBRARY_SUFFIX).arg(plugin), library);
    const QByteArray output = check(1);
    QCOMPARE(findingsIn(output, m_folder->path()).join("; "), Library.toUtf8() + ":10 " + kind);
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
    writeFile(path(Menu), "<qrvldoc>" + QByteArray("<menu>").repeated(depth) +
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
    const QByteArrayList lines = contentOf(rules).split('\n');
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
