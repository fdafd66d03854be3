#include "LogCapture.h"
#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "settings/Settings.h"

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

using View = Settings::View;

class tst_Settings : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void viewsAreLayered();
    void otherProcessesChangesAreSeen();
    void writesMergeWithOtherProcessesChanges();
    void storeThatCannotBeWritten_data();
    void storeThatCannotBeWritten();
    void corruptStoreIsPutAside_data();
    void corruptStoreIsPutAside();
    void largeStore();
    void manyThreads();
    void finishedStoreWritesAtOnce();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    void setModified(const QString& name, const QDateTime& time) const;
    QString stored(const QString& key) const;
    QStringList corruptCopies() const;
    std::unique_ptr<Settings> makeSettings() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

/// A value as text, "-" when there is none.
static QString get(const Settings& settings, View view, const QString& key)
{
    QString value = "-";
    settings.get(view, SettingName(QStringView(u"s"), key), [&value](const QString& text) { value = text; });
    return value;
}

void tst_Settings::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_Settings::write(const QString& name, const QByteArray& content) const
{
    QString error;
    QVERIFY2(FileAccess::replace(path(name), content, error), qPrintable(error));
}

void tst_Settings::setModified(const QString& name, const QDateTime& time) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

QString tst_Settings::stored(const QString& key) const
{
    const IniDocument document(FileAccess::read(path("user/settings.ini")).bytes);
    const QString* value = document.find("s", key);
    return value ? *value : "-";
}

QStringList tst_Settings::corruptCopies() const
{
    return QDir(path("user")).entryList({"settings.ini.corrupt-*"}, QDir::Files);
}

std::unique_ptr<Settings> tst_Settings::makeSettings() const
{
    return std::make_unique<Settings>(path("user/settings.ini"), path("defaults.ini"));
}

void tst_Settings::viewsAreLayered()
{
    write("defaults.ini", "[s]\nboth = default, \"100%\"\nonly = default\n");
    const auto settings = makeSettings();
    QVERIFY(settings->set("s", "both", ""));
    QVERIFY(settings->set("s", "mine", "user"));
    const auto views = [&](const QString& key) {
        return QStringList{get(*settings, View::Merged, key), get(*settings, View::User, key),
                           get(*settings, View::Defaults, key)};
    };
    QCOMPARE(views("both"), QStringList({"", "", "default, \"100%\""}));
    QCOMPARE(views("only"), QStringList({"default", "-", "default"}));
    QCOMPARE(views("mine"), QStringList({"user", "user", "-"}));
    QCOMPARE(views("Mine"), QStringList({"-", "-", "-"}));
    QVERIFY(settings->drain());
    QCOMPARE(stored("mine"), QString("user"));
    QCOMPARE(stored("only"), QString("-"));
}

void tst_Settings::otherProcessesChangesAreSeen()
{
    write("user/settings.ini", "[s]\nk=1\n");
    const auto settings = makeSettings();
    QCOMPARE(get(*settings, View::User, "k"), QString("1"));
    // The same size and time stamp as before: clocks of file systems are coarse.
    const QDateTime time = QFileInfo(path("user/settings.ini")).lastModified();
    write("user/settings.ini", "[s]\nk=2\n");
    setModified("user/settings.ini", time);
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::User, "k"), QString("2"), 2000);
    write("defaults.ini", "[s]\nd=1\n");
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::Merged, "d"), QString("1"), 2000);
    QVERIFY(QFile::remove(path("user/settings.ini")));
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::Merged, "k"), QString("-"), 2000);
}

void tst_Settings::writesMergeWithOtherProcessesChanges()
{
    const auto mine = makeSettings();
    const auto other = makeSettings();
    for (int i = 0; i < 50; ++i) {
        mine->set("s", QString("mine%1").arg(i), "m");
        other->set("s", QString("other%1").arg(i), "o");
        mine->set("s", "shared", QString::number(i));
    }
    QVERIFY(mine->drain());
    QVERIFY(other->drain());
    for (int i = 0; i < 50; ++i) {
        QCOMPARE(stored(QString("mine%1").arg(i)), QString("m"));
        QCOMPARE(stored(QString("other%1").arg(i)), QString("o"));
    }
    QCOMPARE(stored("shared"), QString("49"));
    QTRY_COMPARE_WITH_TIMEOUT(get(*mine, View::User, "other49"), QString("o"), 2000);
}

using Action = std::function<bool()>;
Q_DECLARE_METATYPE(Action)

void tst_Settings::storeThatCannotBeWritten_data()
{
    QTest::addColumn<Action>("hinder");
    QTest::addColumn<Action>("help");
    const auto row = [](const char* name, const Action& hinder, const Action& help) {
        QTest::newRow(name) << hinder << help;
    };
    row(
        "store is a folder", [this] { return QDir().mkpath(path("user/settings.ini/x")); },
        [this] { return QDir(path("user/settings.ini")).removeRecursively(); });
    row(
        "folder is a file", [this] { return write("user", "x"), true; },
        [this] { return QFile::remove(path("user")); });
    const auto lock = std::make_shared<std::unique_ptr<QLockFile>>();
    row(
        "lock is held",
        [this, lock] {
            QDir().mkpath(path("user"));
            *lock = std::make_unique<QLockFile>(path("user/settings.ini.lock"));
            return (*lock)->tryLock();
        },
        [lock] { return lock->reset(), true; });
}

/// The application goes on with its values, hears of the trouble once, and nothing is lost when it is over.
void tst_Settings::storeThatCannotBeWritten()
{
    QFETCH(Action, hinder);
    QFETCH(Action, help);
    LogCapture log;
    QVERIFY(hinder());
    const auto settings = makeSettings();
    settings->set("s", "k", "1");
    QTRY_VERIFY_WITH_TIMEOUT(!settings->set("s", "k", "2"), 10000);
    QTest::qWait(500); // some attempts more
    QCOMPARE(get(*settings, View::Merged, "k"), QString("2"));
    QCOMPARE(log.count("Settings file {*} cannot be {*}"), 1);
    QVERIFY(help());
    QTRY_COMPARE_WITH_TIMEOUT(stored("k"), QString("2"), 15000);
    QTRY_VERIFY(settings->set("s", "k", "3"));
    QVERIFY(settings->drain());
    QCOMPARE(stored("k"), QString("3"));
    QCOMPARE(log.count("Settings file {*} can be written again"), 1);
}

void tst_Settings::corruptStoreIsPutAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isWrittenTo");
    QTest::newRow("line without meaning") << QByteArray("[s]\nk=v\ngarbage\n") << true;
    QTest::newRow("no UTF-8") << QByteArray("[s]\nk=v\nl=\xff\xfe\n") << true;
    QTest::newRow("zeros at the end") << QByteArray("[s]\nk=v\n") + QByteArray(4096, '\0') << true;
    QTest::newRow("repaired without a write") << QByteArray("[s]\nk=v\n[cut") << false;
}

void tst_Settings::corruptStoreIsPutAside()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isWrittenTo);
    LogCapture log;
    write("user/settings.ini", content);
    setModified("user/settings.ini", QDateTime::currentDateTime().addSecs(-60)); // nobody is editing it
    const auto settings = makeSettings();
    QCOMPARE(get(*settings, View::User, "k"), QString("v"));
    if (isWrittenTo)
        settings->set("s", "new", "n");
    QTRY_COMPARE(corruptCopies().size(), 1);
    QTRY_VERIFY(IniDocument(FileAccess::read(path("user/settings.ini")).bytes).brokenLines().isEmpty());
    QVERIFY(settings->drain());
    QCOMPARE(FileAccess::read(path("user/" + corruptCopies().first())).bytes, content);
    QCOMPARE(stored("k"), QString("v"));
    QCOMPARE(stored("new"), QString(isWrittenTo ? "n" : "-"));
    QVERIFY(
        log.contains("Settings file {*} was damaged; it was kept as {*}" + corruptCopies().first() + "{*}"));
    settings->set("s", "k", "w");
    QVERIFY(settings->drain());
    QCOMPARE(corruptCopies().size(), 1);
}

void tst_Settings::largeStore()
{
    QByteArray content = "[s]\n";
    for (int i = 0; i < 50000; ++i)
        content += "key" + QByteArray::number(i) + '=' + QByteArray(1000, 'v') + '\n';
    write("user/settings.ini", content);
    const auto settings = makeSettings();
    QCOMPARE(get(*settings, View::User, "key49999").size(), 1000);
    const QString large(5 * 1024 * 1024, QChar(0x20ac));
    settings->set("s", "large", large);
    QTRY_VERIFY_WITH_TIMEOUT(settings->drain(), 60000);
    QCOMPARE(stored("large"), large);
    QCOMPARE(stored("key49999").size(), 1000);
}

/// Whether the value stays for a while, whatever flushes are under way.
static bool keeps(const Settings& settings, const QString& key, const QString& value)
{
    QElapsedTimer timer;
    timer.start();
    bool isKept = true;
    while (isKept && timer.elapsed() < 10)
        isKept = get(settings, View::Merged, key) == value;
    return isKept;
}

void tst_Settings::manyThreads()
{
    const auto settings = makeSettings();
    std::atomic<bool> isSound{true};
    const auto work = [&](const QString& key) {
        for (int i = 0; i <= 500; ++i) {
            settings->set("s", key, QString::number(i));
            if (i % 50 == 0 && !keeps(*settings, key, QString::number(i)))
                isSound = false;
        }
    };
    const QStringList keys = {"k1", "k2", "k3", "k4"};
    std::vector<std::thread> threads;
    threads.reserve(std::size_t(keys.size()));
    for (const QString& key : keys)
        threads.emplace_back(work, key);
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(isSound);
    QVERIFY(settings->drain());
    for (const QString& key : keys)
        QCOMPARE(stored(key), QString("500"));
}

void tst_Settings::finishedStoreWritesAtOnce()
{
    const auto settings = makeSettings();
    settings->set("s", "before", "1");
    settings->finish();
    QCOMPARE(stored("before"), QString("1"));
    QVERIFY(settings->set("s", "after", "2"));
    QCOMPARE(stored("after"), QString("2"));
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
