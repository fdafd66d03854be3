#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
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
    void init();

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

void tst_SettingsProcesses::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("QRVL_USER_DIR", m_folder->path().toUtf8());
}

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
    for (int i = 0; i < Keys * jobs.size(); ++i) {
        const QString key = jobs[i % jobs.size()] + QString::number(i / jobs.size());
        QVERIFY2(document.find("s", key), qPrintable(key));
    }
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
            QDeadlineTimer deadline(10000);
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
    char16_t* values[3];
    std::fill(std::begin(values), std::end(values), reinterpret_cast<char16_t*>(this));
    const QVector<long> results = {
        QRVL_GetSettings(nullptr, u"k", &values[0]), QRVL_GetUserSettings(u"s", nullptr, &values[1]),
        QRVL_GetIniSettings(u"s", u"k", nullptr),    QRVL_SetSettings(u"s", u"k", nullptr),
        QRVL_GetSettings(u"s", u"k", &values[2]),
    };
    QCOMPARE(results, QVector<long>({1, 1, 1, 1, QRVL_ERROR_NOT_FOUND}));
    QVERIFY(std::none_of(std::begin(values), std::end(values), [](const void* value) { return value; }));
    const char16_t text[] = {0xfeff, 0xd800, u'x', 0};
    QCOMPARE(QRVL_SetSettings(u"", u"", text) + QRVL_GetSettings(u"", u"", &values[0]), long(QRVL_OK));
    QCOMPARE(std::u16string(values[0]), std::u16string(text));
    delete[] values[0];
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
