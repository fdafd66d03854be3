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

const char16_t* const kSection = u"s";
constexpr int kKeys = 100;
constexpr int kCounters = 10;

void set(const QString& key, const QString& value)
{
    QRVL_SetSettings(kSection, key.toStdU16String().c_str(), value.toStdU16String().c_str());
}

int storedNumber(const QString& key)
{
    char16_t* value = nullptr;
    QRVL_GetUserSettings(kSection, key.toStdU16String().c_str(), &value);
    const std::unique_ptr<char16_t[]> owner(value);
    return value ? QStringView(value).toString().toInt() : 0;
}

/// Writes kKeys values of its own; most flushes have one alone. Ends at once after the last.
void writeKeys(const QString& prefix)
{
    for (int i = 0; i < kKeys; ++i) {
        set(prefix + QString::number(i), prefix);
        std::this_thread::sleep_for(1ms);
    }
}

/// Counts all counters up, one after the other, until somebody ends the process. Begins by finishing the
/// round in which the process before it was ended.
[[noreturn]] void countForEver()
{
    for (int number = storedNumber("counter0");; ++number) {
        for (int i = 0; i < kCounters; ++i)
            set(QString("counter%1").arg(i), QString::number(number));
    }
}

/// What this program does as a child of the test.
int runChild(int argc, char** argv)
{
    const QString job = argv[1];
    if (job == "--count")
        countForEver();
    if (job == "--write-with-application") {
        const QCoreApplication application(argc, argv);
        set("from application", "1");
        return 0;
    }
    writeKeys(argv[2]);
    if (job == "--write-and-exit")
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
    void endOfProcessWrites_data();
    void endOfProcessWrites();
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

void tst_SettingsProcesses::nothingIsLostBetweenProcesses()
{
    const QStringList prefixes = {"a", "b", "c"};
    std::vector<std::unique_ptr<QProcess>> children;
    for (const QString& prefix : prefixes)
        children.push_back(startChild({"--write", prefix}));
    for (const auto& child : children)
        QVERIFY(child->waitForFinished() && child->exitCode() == 0);
    const IniDocument document = store();
    for (const QString& prefix : prefixes) {
        for (int i = 0; i < kKeys; ++i)
            QVERIFY2(document.find("s", prefix + QString::number(i)),
                     qPrintable(prefix + QString::number(i)));
    }
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList("settings.ini"));
}

void tst_SettingsProcesses::endOfProcessWrites_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("key");
    QTest::newRow("return from main") << QStringList{"--write", "x"} << "x99";
    QTest::newRow("exit") << QStringList{"--write-and-exit", "x"} << "x99";
    QTest::newRow("application object") << QStringList{"--write-with-application"} << "from application";
}

void tst_SettingsProcesses::endOfProcessWrites()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, key);
    const auto child = startChild(arguments);
    QVERIFY(child->waitForFinished());
    QCOMPARE(child->exitStatus(), QProcess::NormalExit);
    QCOMPARE(child->exitCode(), 0);
    QVERIFY(store().find("s", key));
}

static QVector<int> counters(const IniDocument& document)
{
    QVector<int> numbers;
    for (int i = 0; i < kCounters; ++i) {
        const QString* value = document.find("s", QString("counter%1").arg(i));
        numbers.append(value ? value->toInt() : 0);
    }
    return numbers;
}

void tst_SettingsProcesses::killedWriterLeavesSoundStore()
{
    int last = 0;
    for (int round = 0; round < 12; ++round) {
        const QByteArray before = store().toBytes();
        const auto child = startChild({"--count"});
        QTRY_VERIFY_WITH_TIMEOUT(store().toBytes() != before, 30000);
        QTest::qWait(QRandomGenerator::global()->bounded(30));
        child->kill();
        QVERIFY(child->waitForFinished());

        const IniDocument document = store();
        QVERIFY(document.brokenLines().isEmpty());
        const QVector<int> numbers = counters(document);
        // One moment of the writer: a counter is at most one ahead of those that it reaches later.
        QVERIFY(std::is_sorted(numbers.rbegin(), numbers.rend()));
        QVERIFY(numbers.first() - numbers.last() <= 1);
        QVERIFY(numbers.last() >= last);
        last = numbers.last();
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
