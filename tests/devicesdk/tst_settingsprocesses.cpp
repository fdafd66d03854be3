#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <chrono>
#include <memory>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr int Keys = 100;

void set(const QString& key, const QString& value)
{
    QRVL_SetSettings(u"s", key.toStdU16String().c_str(), value.toStdU16String().c_str());
}

/// Writes numbers, each under two keys, until the process is killed.
[[noreturn]] void writeForEver(int number)
{
    for (;; ++number) {
        set("first", QString::number(number));
        set("second", QString::number(number));
    }
}

/// What this program does when the test starts it. It ends immediately after the last write.
int runChild(int argc, char** argv)
{
    const QString job = argv[1];
    std::unique_ptr<QCoreApplication> application;
    if (job == "--write")
        writeForEver(QByteArray(argv[2]).toInt());
    if (job == "--application")
        application = std::make_unique<QCoreApplication>(argc, argv);
    for (int i = 0; i < Keys; ++i) {
        set(job + QString::number(i), job);
        std::this_thread::sleep_for(1ms); // so that most are written alone
    }
    return 0;
}

} // namespace

class tst_SettingsProcesses : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("QRVL_USER_DIR", m_folder->path().toUtf8());
    }

    void nothingIsLostBetweenProcesses();
    void killedWriterLeavesSoundStore();
    void arguments();

private:
    IniDocument store() const
    {
        return IniDocument(FileAccess::read(m_folder->filePath("settings.ini")).bytes);
    }
    int number(const QString& key) const
    {
        const IniDocument document = store();
        const QString* value = document.find("s", key);
        return value ? value->toInt() : 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

/// With and without an application object, and whatever others write at the same time.
void tst_SettingsProcesses::nothingIsLostBetweenProcesses()
{
    const QStringList jobs = {"--return", "--application"};
    QProcess children[2];
    for (int i = 0; i < jobs.size(); ++i)
        children[i].start(QCoreApplication::applicationFilePath(), {jobs[i]});
    for (QProcess& child : children)
        QVERIFY(child.waitForFinished() && child.exitStatus() == QProcess::NormalExit);
    const IniDocument document = store();
    for (int i = 0; i < Keys; ++i)
        QVERIFY(document.find("s", jobs[0] + QString::number(i)) &&
                document.find("s", jobs[1] + QString::number(i)));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("settings.ini"));
}

/// The writer is killed while it holds the lock, while it writes the new file, and after it has replaced one.
void tst_SettingsProcesses::killedWriterLeavesSoundStore()
{
    const QDir folder(m_folder->path());
    for (const QString moment : {"settings.ini.lock", "settings.ini.??????", "settings.ini"}) {
        for (int round = 0; round < 2; ++round) {
            const int before = number("first");
            QProcess child;
            child.start(QCoreApplication::applicationFilePath(), {"--write", QString::number(before)});
            QTRY_VERIFY_WITH_TIMEOUT(number("first") > before, 30000); // despite what the last one left
            QDeadlineTimer deadline(60000); // the moments are short, and the machine may be busy
            while (folder.entryList({moment}).isEmpty() && !deadline.hasExpired()) {
            }
            QVERIFY2(!deadline.hasExpired(), qPrintable(moment));
            child.kill();
            QVERIFY(child.waitForFinished() && store().brokenLines().isEmpty());
            const int behind = number("first") - number("second");
            QVERIFY2(behind == 0 || behind == 1, qPrintable(moment));
            for (const QString& rest : folder.entryList({"settings.ini.??????"}))
                QVERIFY(QFile::remove(folder.filePath(rest)));
        }
    }
    QVERIFY(folder.entryList({"*corrupt*"}).isEmpty());
}

void tst_SettingsProcesses::arguments()
{
    auto* const old = reinterpret_cast<char16_t*>(this);
    char16_t *first = old, *second = old, *third = old;
    QCOMPARE(QRVL_GetSettings(nullptr, u"k", &first), QRVL_ERROR_ARGUMENT);
    QCOMPARE(QRVL_GetUserSettings(u"s", nullptr, &second), QRVL_ERROR_ARGUMENT);
    QCOMPARE(QRVL_GetSettings(u"s", u"k", &third), QRVL_ERROR_NOT_FOUND);
    QVERIFY(!first && !second && !third);
    QCOMPARE(QRVL_GetIniSettings(u"s", u"k", nullptr), QRVL_ERROR_ARGUMENT);
    QCOMPARE(QRVL_SetSettings(u"s", u"k", nullptr), QRVL_ERROR_ARGUMENT);
    const char16_t text[] = {0xfeff, 0xd800, u'x', 0};
    QCOMPARE(QRVL_SetSettings(u"", u"", text) + QRVL_GetSettings(u"", u"", &first), long(QRVL_OK));
    QCOMPARE(std::u16string(first), std::u16string(text));
    delete[] first;
}

int main(int argc, char** argv)
{
    if (argc > 1 && QByteArray(argv[1]).startsWith("--"))
        return runChild(argc, argv);
    const QCoreApplication application(argc, argv);
    tst_SettingsProcesses test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settingsprocesses.moc"
