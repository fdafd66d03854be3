#include "RunTool.h"
#include "files/FileAccess.h"

#include <QTemporaryDir>
#include <QtTest>

#include <tuple>
class tst_ModemTool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("QRVL_USER_DIR", QFile::encodeName(m_folder.filePath("user"))); }
    void edits();
    void refuses();
    void usersFileBeginsAsCopy();

private:
    QByteArray edit(const QByteArray& before, const QStringList& arguments, int exitCode, QByteArray& after);

    QTemporaryDir m_folder;
};

/// Runs the tool on a file with this content. Returns its output.
QByteArray tst_ModemTool::edit(const QByteArray& before, const QStringList& arguments, int exitCode,
                               QByteArray& after)
{
    const QString file = m_folder.filePath("simulator.ini");
    QString error;
    if (!FileAccess::replace(file, before, error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    const QByteArray output = runTool("skylume-modem", arguments + QStringList{"--file", file}, exitCode);
    after = FileAccess::read(file).bytes;
    return output;
}

/// Lines of the shipped file are changed (lines before, lines after, ...), and new ones appended.
void tst_ModemTool::edits()
{
    const QByteArray shipped = FileAccess::read(SHIPPED_SIMULATOR_FILE).bytes;
    const std::tuple<QStringList, QByteArrayList, QByteArray> rows[] = {
        {{"detach"}, {"port=sim2\nstate=attached", "port=sim2\nstate=detached"}, {}},
        {{"reject", "lume v2"}, {"port=sim2\nstate=attached", "port=sim2\nstate=rejected"}, {}},
        {{"attach", "LUME S1", "--imsi", "1", "--gid=x, \"y\""},
         {"port=sim1\nstate=detached", "port=sim1\nstate=attached", "imsi=001010123456789\ngid=\n",
          "imsi=1\ngid=x, \"y\"\n"},
         {}},
        {{"set", "--signal", "5", "--network="}, {"network=26201\nsignal=80", "network=\nsignal=5"}, {}},
        {{"attach", "New"}, {}, "\n[modem New]\nmodel=New\nstate=attached\n"},
        {{"attach", "Lume V2", "--name", "second", "--port", "usb", "--customize", "c"},
         {},
         "\n[modem second]\nmodel=Lume V2\ncustomize=c\nport=usb\nstate=attached\n"},
    };
    for (const auto& [arguments, changes, appended] : rows) {
        QByteArray file, expected = shipped + appended;
        const QByteArray output = edit(shipped, arguments, 0, file);
        QCOMPARE(output.endsWith("is a new modem\n"), !appended.isEmpty());
        for (int i = 0; i < changes.size(); i += 2) {
            QVERIFY(expected.contains(changes[i]));
            expected.replace(changes[i], changes[i + 1]);
        }
        QCOMPARE(file, expected);
    }
}

void tst_ModemTool::refuses()
{
    const QByteArray none = "[modem A]\nmodel=X\nstate=detached\n";
    const QByteArray two = "[modem A]\nmodel=X\nstate=attached\n[modem B]\nmodel=X\nstate=attached\n";
    const std::tuple<QStringList, QByteArray, int, QByteArray> rows[] = {
        {{}, two, 2, "a command is missing"},
        {{"eject"}, two, 2, "\"eject\""},
        {{"list", "--all"}, two, 2, "all"},
        {{"detach", "A", "B"}, two, 2, "too many"},
        {{"detach", "A", "--imsi", "1"}, two, 2, "values"},
        {{"set", "A"}, two, 2, "needs values"},
        {{"set", "A", "--signal", "101"}, two, 1, "the signal \"101\"; it must be 0 to 100"},
        {{"detach"}, none, 1, "attached are: none"},
        {{"reject"}, two, 1, R"(attached are: "A", "B")"},
        {{"detach", "C"}, two, 1, R"(known are: "A", "B")"},
        {{"detach", "x"}, two, 1, R"(several modems match "x": "A", "B")"},
        {{"attach", "x"}, two, 1, "--name"},
        {{"attach", "A"}, "[modem A]\nmodel", 1, "line 2"},
        {{"list"}, "[modem A]\nmodel=X\nstate=on\n", 1, "\"on\""},
    };
    for (const auto& [arguments, content, exitCode, message] : rows) {
        QByteArray file;
        const QByteArray output = edit(content, arguments, exitCode, file);
        QVERIFY2(output.contains(message), message + " expected, but: " + output);
        QCOMPARE(file, content);
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
    const QByteArray file = FileAccess::read(m_folder.filePath("user/simulator.ini")).bytes;
    QVERIFY2(file.contains("\n[message 5]\nmodem=Mine\ntime=2") && file.endsWith("\nsender=me\ntext=1\\n2\n"),
             file);
}

QTEST_GUILESS_MAIN(tst_ModemTool)
#include "tst_modemtool.moc"
