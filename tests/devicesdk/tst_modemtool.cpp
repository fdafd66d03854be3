#include "files/FileAccess.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class tst_ModemTool : public QObject
{
    Q_OBJECT

private slots:
    void edits_data();
    void edits();
    void refuses_data();
    void refuses();
    void usersFileBeginsAsCopy();

private:
    /// Runs the tool in the folder; its standard output and error.
    QByteArray run(const QStringList& arguments, int exitCode);

    QTemporaryDir m_folder;
};

static QByteArray shippedFile()
{
    return FileAccess::read(SHIPPED_SIMULATOR_FILE).bytes;
}

QByteArray tst_ModemTool::run(const QStringList& arguments, int exitCode)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QRVL_USER_DIR", m_folder.filePath("user"));
    tool.setProcessEnvironment(environment);
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QCoreApplication::applicationDirPath() + "/../../app/" MODEM_TOOL, arguments);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != exitCode)
        qCritical("The tool ended with %d", tool.exitCode());
    return tool.readAll().replace("\r\n", "\n");
}

/// Lines of the shipped file with another meaning after the command, and new ones at the end.
void tst_ModemTool::edits_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArrayList>("changes"); // line before, line after, ...
    QTest::addColumn<QByteArray>("appended");
    const auto row = [](const char* name, const QStringList& arguments, const QByteArrayList& changes,
                        const QByteArray& appended = {}) {
        QTest::newRow(name) << arguments << changes << appended;
    };
    row("detach the only one", {"detach"}, {"port=sim2\nstate=attached", "port=sim2\nstate=detached"});
    row("reject by name", {"reject", "lume v2"}, {"port=sim2\nstate=attached", "port=sim2\nstate=rejected"});
    row("attach a known one", {"attach", "LUME S1", "--imsi", "1", "--gid=x, \"y\""},
        {"port=sim1\nstate=detached", "port=sim1\nstate=attached", "imsi=001010123456789\ngid=\n",
         "imsi=1\ngid=x, \"y\"\n"});
    row("set values", {"set", "--signal", "5", "--network="},
        {"network=26201\nsignal=80", "network=\nsignal=5"});
    row("attach a new one", {"attach", "New"}, {}, "\n[modem New]\nmodel=New\nstate=attached\n");
    row("attach one more of a model",
        {"attach", "Lume V2", "--name", "second", "--port", "usb", "--customize", "c"}, {},
        "\n[modem second]\nmodel=Lume V2\ncustomize=c\nport=usb\nstate=attached\n");
}

void tst_ModemTool::edits()
{
    QFETCH(QByteArrayList, changes);
    QFETCH(QByteArray, appended);
    const QString file = m_folder.filePath("simulator.ini");
    QString error;
    QVERIFY(FileAccess::replace(file, shippedFile(), error));
    QFETCH(QStringList, arguments);
    QCOMPARE(run(arguments + QStringList{"--file", file}, 0), QByteArray());
    QByteArray expected = shippedFile() + appended;
    for (int i = 0; i < changes.size(); i += 2) {
        QVERIFY(expected.contains(changes[i]));
        expected.replace(changes[i], changes[i + 1]);
    }
    QCOMPARE(FileAccess::read(file).bytes, expected);
}

void tst_ModemTool::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");
    const QByteArray none = "[modem A]\nmodel=X\nstate=detached\n";
    const QByteArray two = "[modem A]\nmodel=X\nstate=attached\n[modem B]\nmodel=X\nstate=attached\n";
    const auto row = [](const char* name, const QStringList& arguments, const QByteArray& content,
                        int exitCode, const QByteArray& message) {
        QTest::newRow(name) << arguments << content << exitCode << message;
    };
    row("no command", {}, two, 2, "a command is missing");
    row("unknown command", {"eject"}, two, 2, "\"eject\"");
    row("unknown option", {"list", "--all"}, two, 2, "all");
    row("too many arguments", {"detach", "A", "B"}, two, 2, "too many");
    row("attach what", {"attach"}, two, 2, "needs a modem");
    row("values without attach", {"detach", "A", "--imsi", "1"}, two, 2, "values");
    row("no values", {"set", "A"}, two, 2, "needs values");
    row("message in wrong place", {"attach", "A", "--text", "x"}, two, 2, "no message");
    row("wrong signal", {"set", "A", "--signal", "101"}, two, 1, "the signal \"101\"");
    row("none attached", {"detach"}, none, 1, "attached are: none");
    row("several attached", {"reject"}, two, 1, R"(attached are: "A", "B")");
    row("unknown modem", {"detach", "C"}, two, 1, R"(known are: "A", "B")");
    row("model of several", {"detach", "x"}, two, 1, R"(several modems match "x": "A", "B")");
    row("attach one of several", {"attach", "x"}, two, 1, "--name");
    row("broken file", {"attach", "A"}, "[modem A]\nmodel", 1, "line 2");
    row("wrong state", {"list"}, "[modem A]\nmodel=X\nstate=on\n", 1, "\"on\"");
}

void tst_ModemTool::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, content);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);
    const QString file = m_folder.filePath("simulator.ini");
    QString error;
    QVERIFY(FileAccess::replace(file, content, error));
    const QByteArray output = run(arguments + QStringList{"--file", file}, exitCode);
    QVERIFY2(output.contains(message), output);
    QCOMPARE(FileAccess::read(file).bytes, content);
    QVERIFY(!QFile::exists(file + ".lock"));
}

void tst_ModemTool::usersFileBeginsAsCopy()
{
    QVERIFY(run({"list", "--file", m_folder.filePath("missing.ini")}, 1).contains("no such file"));
    QVERIFY(run({"--help"}, 0).contains("detach"));
    run({"attach", "Mine", "--imsi", "1"}, 0);
    QVERIFY(run({"list"}, 0).contains("\nMine\tMine\tattached\t1\t\t\t\n"));
    QVERIFY(QFile::exists(m_folder.filePath("user/simulator.ini")));
    run({"message", "Mine", "--sender", "me", "--text", "1\n2"}, 0);
    const QByteArray file = FileAccess::read(m_folder.filePath("user/simulator.ini")).bytes;
    QVERIFY2(file.contains("\n[message 5]\nmodem=Mine\ntime=2") && file.endsWith("\nsender=me\ntext=1\\n2\n"),
             file);
}

QTEST_GUILESS_MAIN(tst_ModemTool)
#include "tst_modemtool.moc"
