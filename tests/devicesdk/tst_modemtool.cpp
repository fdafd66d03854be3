#include "ReplaceFile.h"
#include "RunTool.h"

#include <QTemporaryDir>
#include <QtTest>

#include <tuple>
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

/// Lines of the file are changed (lines before, lines after, ...) or, if there are none before, appended.
void tst_ModemTool::editsOrRefuses()
{
    const QByteArray shipped = FileAccess::read(SHIPPED_SIMULATOR_FILE).bytes;
    const QByteArray none = "[modem A]\nmodel=X\nstate=detached\n";
    const QByteArray two = "[modem A]\nmodel=X\nstate=attached\n[modem B]\nmodel=X\nstate=attached\n";
    const QByteArray attached = "port=sim2\nstate=attached";
    const std::tuple<QString, QByteArray, int, QByteArray, QByteArrayList> rows[] = {
        {"detach", shipped, 0, "", {attached, "port=sim2\nstate=detached"}},
        {"reject|lume v2", shipped, 0, "", {attached, "port=sim2\nstate=rejected"}},
        {"attach|LUME S1|--imsi|1|--gid=x, \"y\"",
         shipped,
         0,
         "",
         {"port=sim1\nstate=detached", "port=sim1\nstate=attached", "imsi=001010123456789\ngid=\n",
          "imsi=1\ngid=x, \"y\"\n"}},
        {"set|--signal|5|--network=", shipped, 0, "", {"network=26201\nsignal=80", "network=\nsignal=5"}},
        {"attach|New", two, 0, "is a new modem\n", {"", "\n[modem New]\nmodel=New\nstate=attached\n"}},
        {"attach|x|--name|c|--port|usb|--customize|d",
         two,
         0,
         "is a new modem\n",
         {"", "\n[modem c]\nmodel=x\ncustomize=d\nport=usb\nstate=attached\n"}},
        {"", two, 2, "a command is missing", {}},
        {"eject", two, 2, "\"eject\"", {}},
        {"list|--all", two, 2, "all", {}},
        {"detach|A|B", two, 2, "too many", {}},
        {"detach|A|--imsi|1", two, 2, "values", {}},
        {"set|A", two, 2, "needs values", {}},
        {"set|A|--signal|101", two, 1, "the signal \"101\"; it must be 0 to 100", {}},
        {"fail|A", none, 0, "", {"state=detached", "state=failed"}},
        {"disconnect|a",
         none,
         0,
         "",
         {"", "connection=disconnected\nconnection.error=16\nconnection.since=\n"}},
        {"lock|A", none, 0, "", {"", "pin=4711\npin-tries=\npuk-tries=\nsim=pin\n"}},
        {"set|A|--failure|soon", none, 1, "it must be refused, ", {}},
        {"detach", none, 1, "attached are: none", {}},
        {"reject", two, 1, R"(attached are: "A", "B")", {}},
        {"detach|C", two, 1, R"(known are: "A", "B")", {}},
        {"detach|x", two, 1, R"(several modems match "x": "A", "B")", {}},
        {"attach|x", two, 1, "--name", {}},
        {"attach|A", "[modem A]\nmodel", 1, "line 2", {}},
        {"list", "[modem A]\nmodel=X\nstate=on\n", 1, "\"on\"", {}},
    };
    for (const auto& [arguments, before, exitCode, message, changes] : rows) {
        const QString file = m_folder.filePath("simulator.ini");
        replaceFile(file, before);
        const QByteArray output =
            runTool("skylume-modem", ("--file|" + file + '|' + arguments).split('|', Qt::SkipEmptyParts),
                    exitCode, "4711\n");
        QVERIFY2(output.contains(message), message + " expected, but: " + output);
        QByteArray expected = before;
        for (int i = 0; i < changes.size(); i += 2) {
            const int place = changes[i].isEmpty() ? before.size() : expected.indexOf(changes[i]);
            QVERIFY(place >= 0);
            expected.replace(place, changes[i].size(), changes[i + 1]);
        }
        QCOMPARE(FileAccess::read(file).bytes, expected);
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
    const QByteArray file = FileAccess::read(m_folder.filePath("user/simulator.ini")).bytes;
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
