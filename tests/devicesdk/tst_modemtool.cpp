#include "ReplaceFile.h"
#include "RunTool.h"
#include "Samples.h"

#include <QTemporaryDir>
#include <QtTest>

class tst_ModemTool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("QRVL_USER_DIR", QFile::encodeName(m_folder.filePath("user"))); }
    void editsOrRefuses();
    void usersFileBeginsAsCopy();
    void codesAreSecret();

private:
    QTemporaryDir m_folder;
};

/// Each sample has a command, and "in " its file if that is not the one that is shipped. "!" stands before the exit code
/// and a part of what the tool says; "-" before lines of the file, "+" before what replaces them or is appended.
void tst_ModemTool::editsOrRefuses()
{
    const QString file = m_folder.filePath("simulator.ini");
    for (const Sample& sample : samplesIn(DATA "/modem_commands.txt")) {
        const auto lines = [&](const char* mark) {
            const QStringList marked = sample.marked(mark);
            return marked.isEmpty() ? QByteArray() : marked.join('\n').toUtf8() + '\n';
        };
        const QStringList in = sample.marked("in ");
        const QByteArray before = contentOf(in.isEmpty() ? SHIPPED_SIMULATOR_FILE : DATA "/" + in.first());
        replaceFile(file, before);
        const QStringList arguments =
            ("--file|" + file + '|' + sample.firstLine()).split('|', Qt::SkipEmptyParts);
        const QString said = sample.marked("! ").value(0, "0 ");
        const QByteArray output =
            runTool("skylume-modem", arguments, said.section(' ', 0, 0).toInt(), "4711\n");
        QVERIFY2(output.contains(said.section(' ', 1).toUtf8()), sample.name + ": " + output);
        const QByteArray replaced = lines("- ");
        const int place = replaced.isEmpty() ? before.size() : before.indexOf(replaced);
        QVERIFY2(place >= 0, sample.name);
        QCOMPARE(contentOf(file), QByteArray(before).replace(place, replaced.size(), lines("+ ")));
        QVERIFY(!QFile::exists(file + ".lock"));
    }
}

void tst_ModemTool::usersFileBeginsAsCopy()
{
    const auto run = [](const QStringList& arguments, int exitCode) {
        return runTool("skylume-modem", arguments, exitCode);
    };
    QVERIFY(run({"list", "--file", m_folder.filePath("missing.ini")}, 1).contains("no such file"));
    run({"attach", "Mine", "--imsi", "1"}, 0);
    QVERIFY(run({"list"}, 0).contains("\nMine     Mine     attached  1  "));
    run({"message", "Mine", "--sender", "me", "--text", "1\n2"}, 0);
    const QByteArray file = contentOf(m_folder.filePath("user/simulator.ini"));
    QVERIFY2(file.contains("\n[message 5]\nmodem=Mine\ntime=2") && file.endsWith("\nsender=me\ntext=1\\n2\n"),
             file);
}

/// A PIN is neither an argument nor repeated.
void tst_ModemTool::codesAreSecret()
{
    const QStringList arguments = {"lock", "--file", m_folder.filePath("codes.ini")};
    replaceFile(arguments.last(), "[modem A]\nmodel=X\nstate=attached\n");
    const QByteArray output = runTool("skylume-modem", arguments, 1, "471\n");
    QVERIFY2(output.contains("the pin \"...\"; it must be 4 to 8 digits") && !output.contains("471"), output);
    QVERIFY(runTool("skylume-modem", arguments, 1).contains("write the PIN to the standard input"));
}

QTEST_GUILESS_MAIN(tst_ModemTool)
#include "tst_modemtool.moc"
