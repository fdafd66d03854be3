// Checks a sound installation with one thing wrong in it at a time. Each XML file is also compared with its schema
// by another validator, which has to agree.
#include "RunTool.h"
#include "Samples.h"
#include "SchemaGrammar.h"
#include "XmlTree.h"
#include "Xmllint.h"

#include <QBuffer>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

class tst_CheckTool : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findings();
    void shippedFiles();
    void libraries();
    void report();
    void deeplyNested();
    void schemaGrammar();
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
    static const QRegularExpression line(R"(^(.+:\d+): (?!note: ).*\[([a-z-]+)\]$)",
                                         QRegularExpression::MultilineOption);
    QByteArrayList found;
    for (auto matches = line.globalMatch(QString::fromLocal8Bit(output)); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
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
    int count = 0;
    for (QDirIterator files(SHIPPED_INSTALLATION, {"*.xml", "*.lang"}, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext(); ++count)
        checkSchema(files.next(), true);
    QVERIFY(count > 50);
}

/// Changes of one file each: "-" stands before what is replaced, "+" before the replacement, "!" before a finding, which
/// is in this file if it names no other. Without "-" the whole file is replaced, or removed.
void tst_CheckTool::findings()
{
    for (const Sample& sample : samplesIn(DATA "/findings.txt")) {
        init();
        const QString changed = path(sample.firstLine());
        const QByteArray from = sample.marked("- ").join('\n').toUtf8();
        const QByteArray to = sample.marked("+ ").join('\n').toUtf8();
        QByteArray content = contentOf(changed);
        QVERIFY2(content.contains(from), sample.name);
        const bool isTag = from.endsWith('>') && !from.startsWith('<'); // its end is to change, too
        if (from.isEmpty())
            content = to;
        else
            isTag ? content.replace(from, to) : content.replace(content.indexOf(from), from.size(), to);
        QVERIFY(QFile::remove(changed));
        if (!content.isEmpty())
            writeFile(changed, content);
        const QStringList expected = sample.marked("! ");
        QByteArrayList found = findingsIn(check(expected.isEmpty() ? 0 : 1), m_folder->path());
        const bool isValid = std::none_of(found.begin(), found.end(), [](const QByteArray& finding) {
            return SchemaKinds.contains(finding.split(' ').last());
        });
        for (QByteArray& finding : found)
            finding.replace(sample.firstLine() + ':', "");
        QCOMPARE(sample.name + ": " + found.join('\n'), sample.name + ": " + expected.join('\n').toUtf8());
        if (QFile::exists(changed) && !changed.endsWith(".ini") && !changed.endsWith(".dat"))
            checkSchema(changed, isValid);
        QVERIFY2(!QTest::currentTestFailed(), sample.name);
    }
}

void tst_CheckTool::libraries()
{
    const QByteArray iid =
        "com.velquor.skylume.plugin.IBasePlugin; found: com.velquor.skylume.test.BarePlugin";
    const QByteArray elf = QByteArray::fromHex("7f454c460201000000000000000000000000f300");
    const QByteArray bigEndianElf = QByteArray::fromHex("7f454c46020200000000000000000000000000f3");
    const QByteArray cutPe = "MZ" + QByteArray(58, 0) + QByteArray::fromHex("3f000000");
    const std::tuple<QString, QByteArray, QByteArray, QByteArray> rows[] = {
        // plugin, or the file's content; kind of the finding, words in it
        {"TestBare", "", "missing-interface", iid},
#ifndef Q_OS_WIN // nothing can be linked there without all its symbols
        {"TestUndefined", "", "missing-dependency", "definedNowhere"},
#endif
        {"ThrowingPlugin", "", "constructor-throws", "found: not today"},
        {"", elf, "other-platform", "found: a Linux library for RISC-V"},
        {"", elf.left(19), "not-a-plugin", "found: a file without"}, // cut off
        {"", cutPe, "not-a-plugin", "found: a file without"},
        {"", bigEndianElf, "other-platform", "found: a Linux library for RISC-V"},
        {"", "text", "not-a-plugin", "found: a file without"},
    };
    const QString library = path(QString("Good") + LIBRARY_SUFFIX);
    for (const auto& [plugin, content, kind, words] : rows) {
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
}

/// What a finding looks like, and a library whose name begins like another.
void tst_CheckTool::report()
{
    copy(path(QString("Good") + LIBRARY_SUFFIX), path(QString("GoodOld") + LIBRARY_SUFFIX));
    const QByteArray output = check(1);
    const QByteArray folder = m_folder->path().toLocal8Bit();
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

/// A schema that the tool would read wrongly is refused: it does not ignore what it does not know.
void tst_CheckTool::schemaGrammar()
{
    const std::pair<QByteArray, QByteArray> rows[] = {
        {"<xs:pattern value", "<xs:length value"},
        {"<xs:pattern value=\"[0-9]{3}\"/>", "<xs:pattern value=\"1\"/><xs:pattern value=\"2\"/>"},
        {" use=\"required\"", " use=\"prohibited\""},
        {"type=\"xs:string\"", "type=\"xs:integer\""},
        {"type=\"Networks\"", "type=\"Network\""},
        {"type=\"Countries\" ", ""},
        {"base=\"xs:string\"", "base=\"Mcc\""},
        {"<xs:choice minOccurs", "<xs:choice name"},
        {"<xs:element name=\"Region\"", "<xs:element name=\"Region\" minOccurs=\"0\""},
        {"xpath=\"MccMnc/Item\"", "xpath=\".//Item\""},
        {"</xs:schema>", ""},
        {"", ""}, // the schema itself is understood
    };
    for (const auto& [from, to] : rows) {
        QByteArray schema = contentOf(SCHEMAS "/OperatorList.xsd");
        QVERIFY2(schema.contains(from), from);
        if (!from.isEmpty())
            schema.replace(schema.indexOf(from), from.size(), to);
        QBuffer buffer(&schema);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QVERIFY2(unknownConstruct(XmlTree(buffer)).isEmpty() == from.isEmpty(), from);
    }
}

/// What the shipped rules say: of a plugin, after "+" for which modem and SIM, after "in" by a rule of which section. The
/// comments in the file name the plugins.
void tst_CheckTool::explanation()
{
    const QByteArray rules = SHIPPED_INSTALLATION "/config/PluginsConfig.xml";
    const QByteArray content = contentOf(rules);
    for (const Sample& sample : samplesIn(DATA "/explanations.txt")) {
        QByteArray expected = '\n' + sample.firstLine();
        for (const QString& section : sample.marked("in ")) {
            const int begin = content.indexOf(section.toUtf8());
            const int rule = content.indexOf("<!-- " + sample.firstLine().split(' ').first(), begin);
            expected += ' ' + rules + ':' + QByteArray::number(content.left(rule).count('\n') + 1);
        }
        const QStringList arguments = QStringList{"explain", SHIPPED_INSTALLATION} + sample.marked("+ ");
        const QByteArray output = runTool("skylume-check", arguments, 0);
        const QString simplified =
            QString(output).replace(QRegularExpression(" +"), " ").replace(" \n", "\n");
        QVERIFY2(simplified.contains(expected + '\n'), sample.name + ": " + output);
    }
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
