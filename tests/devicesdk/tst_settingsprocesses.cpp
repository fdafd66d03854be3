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

/// Counts all counters up, one after the other, until somebody ends the process.
[[noreturn]] void countForEver(int number)
{
    for (;; ++number) {
        for (int i = 0; i < Counters; ++i)
            set(QString("counter%1").arg(i), QString::number(number));
    }
}

/// What this program does as a child of the test. It ends at once after the last write.
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
        std::this_thread::sleep_for(1ms); // most flushes have one alone
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
    void init();

    void nothingIsLostBetweenProcesses();
    void killedWriterLeavesSoundStore();
    void arguments();

private:
    std::unique_ptr<QProcess> startChild(const QStringList& arguments) const;
    IniDocument store() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_SettingsProcesses::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

std::unique_ptr<QProcess> tst_SettingsProcesses::startChild(const QStringList& arguments) const
{
    auto child = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QRVL_USER_DIR", m_folder->path());
    child->setProcessEnvironment(environment);
    child->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child->start(QCoreApplication::applicationFilePath(), arguments);
    return child;
}

IniDocument tst_SettingsProcesses::store() const
{
    return IniDocument(FileAccess::read(m_folder->filePath("settings.ini")).bytes);
}

/// However a process ends, and whatever the others write meanwhile.
void tst_SettingsProcesses::nothingIsLostBetweenProcesses()
{
    const QStringList jobs = {"--return", "--exit", "--application"};
    std::vector<std::unique_ptr<QProcess>> children;
    for (const QString& job : jobs)
        children.push_back(startChild({job}));
    for (const auto& child : children) {
        QVERIFY(child->waitForFinished() && child->exitStatus() == QProcess::NormalExit);
        QCOMPARE(child->exitCode(), 0);
    }
    const IniDocument document = store();
    for (const QString& job : jobs) {
        for (int i = 0; i < Keys; ++i)
            QVERIFY2(document.find("s", job + QString::number(i)), qPrintable(job + QString::number(i)));
    }
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("settings.ini"));
}

namespace {

QVector<int> counters(const IniDocument& document)
{
    QVector<int> numbers;
    for (int i = 0; i < Counters; ++i) {
        const QString* value = document.find("s", QString("counter%1").arg(i));
        numbers.append(value ? value->toInt() : 0);
    }
    return numbers;
}

} // namespace

void tst_SettingsProcesses::killedWriterLeavesSoundStore()
{
    for (int round = 0; round < 12; ++round) {
        const QVector<int> before = counters(store());
        const auto child = startChild({"--count", QString::number(before.first())});
        QTRY_VERIFY_WITH_TIMEOUT(counters(store()) != before, 30000);
        QTest::qWait(QRandomGenerator::global()->bounded(30));
        child->kill();
        QVERIFY(child->waitForFinished());

        const IniDocument document = store();
        QVERIFY(document.brokenLines().isEmpty());
        const QVector<int> numbers = counters(document);
        // One moment of the writer: a counter is at most one ahead of those that it reaches later.
        QVERIFY(std::is_sorted(numbers.rbegin(), numbers.rend()));
        QVERIFY(numbers.first() - numbers.last() <= 1);
        QVERIFY(numbers.last() >= before.last());
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
