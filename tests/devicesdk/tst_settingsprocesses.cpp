#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "qrvl.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr int Keys = 100;
constexpr int Counters = 10;

void set(const QString& key, const QString& value)
{
    QRVL_SetSettings(u"s", key.toStdU16String().c_str(), value.toStdU16String().c_str());
}

/// Increments all counters, one after the other, until the process is killed.
[[noreturn]] void countForEver(int number)
{
    for (;; ++number) {
        for (int i = 0; i < Counters; ++i)
            set(QString("counter%1").arg(i), QString::number(number));
    }
}

/// What this program does when the test starts it. It ends immediately after the last write.
int runChild(int argc, char** argv)
{
    const QString job = argv[1];
    std::unique_ptr<QCoreApplication> application;
    if (job == "--count")
        countForEver(QByteArray(argv[2]).toInt());
    if (job == "--application")
        application = std::make_unique<QCoreApplication>(argc, argv);
    for (int i = 0; i < Keys; ++i) {
        set(job + QString::number(i), job);
        std::this_thread::sleep_for(1ms); // so that most are written alone
    }
    if (job == "--exit")
        std::exit(0);
    return 0;
}

} // namespace

class tst_SettingsProcesses : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void nothingIsLostBetweenProcesses();
    void killedWriterLeavesSoundStore();
    void arguments();

private:
    std::unique_ptr<QProcess> startChild(const QStringList& arguments) const;
    IniDocument store() const
    {
        return IniDocument(FileAccess::read(m_folder->filePath("settings.ini")).bytes);
    }
    QVector<int> counters() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

std::unique_ptr<QProcess> tst_SettingsProcesses::startChild(const QStringList& arguments) const
{
    qputenv("QRVL_USER_DIR", m_folder->path().toUtf8());
    auto child = std::make_unique<QProcess>();
    child->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child->start(QCoreApplication::applicationFilePath(), arguments);
    return child;
}

QVector<int> tst_SettingsProcesses::counters() const
{
    const IniDocument document = store();
    QVector<int> numbers;
    for (int i = 0; i < Counters; ++i) {
        const QString* value = document.find("s", QString("counter%1").arg(i));
        numbers.append(value ? value->toInt() : 0);
    }
    return numbers;
}

/// However a process ends, and whatever others write at the same time.
void tst_SettingsProcesses::nothingIsLostBetweenProcesses()
{
    const QStringList jobs = {"--return", "--exit", "--application"};
    std::vector<std::unique_ptr<QProcess>> children;
    for (const QString& job : jobs)
        children.push_back(startChild({job}));
    for (const auto& child : children)
        QVERIFY(child->waitForFinished() && child->exitStatus() == QProcess::NormalExit &&
                child->exitCode() == 0);
    const IniDocument document = store();
    for (int i = 0; i < Keys * jobs.size(); ++i) {
        const QString key = jobs[i % jobs.size()] + QString::number(i / jobs.size());
        QVERIFY2(document.find("s", key), qPrintable(key));
    }
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("settings.ini"));
}

void tst_SettingsProcesses::killedWriterLeavesSoundStore()
{
    for (int round = 0; round < 12; ++round) {
        const QVector<int> before = counters();
        const auto child = startChild({"--count", QString::number(before.first())});
        QTRY_VERIFY_WITH_TIMEOUT(counters() != before, 30000);
        QTest::qWait(QRandomGenerator::global()->bounded(30)); // at any point of a write
        child->kill();
        QVERIFY(child->waitForFinished());
        QVERIFY(store().brokenLines().isEmpty());
        // A state that the writer had: it increments the counters one after the other.
        const QVector<int> numbers = counters();
        QVERIFY(std::is_sorted(numbers.rbegin(), numbers.rend()));
        QVERIFY(numbers.first() - numbers.last() <= 1 && numbers.last() >= before.last());
    }
    QVERIFY(QDir(m_folder->path()).entryList({"*corrupt*"}).isEmpty());
}

void tst_SettingsProcesses::arguments()
{
    qputenv("QRVL_USER_DIR", m_folder->path().toUtf8());
    char16_t* value = reinterpret_cast<char16_t*>(this);
    QCOMPARE(QRVL_GetSettings(nullptr, u"k", &value), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(value, static_cast<char16_t*>(nullptr));
    QCOMPARE(QRVL_GetUserSettings(u"s", nullptr, &value), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_GetIniSettings(u"s", u"k", nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_SetSettings(u"s", u"k", nullptr), long(QRVL_ERROR_ARGUMENT));
    QCOMPARE(QRVL_GetSettings(u"s", u"k", &value), long(QRVL_ERROR_NOT_FOUND));
    QCOMPARE(value, static_cast<char16_t*>(nullptr));
    const char16_t text[] = {0xfeff, 0xd800, u'x', 0};
    QCOMPARE(QRVL_SetSettings(u"", u"", text), long(QRVL_OK));
    QCOMPARE(QRVL_GetSettings(u"", u"", &value), long(QRVL_OK));
    QCOMPARE(std::u16string(value), std::u16string(text));
    delete[] value;
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
