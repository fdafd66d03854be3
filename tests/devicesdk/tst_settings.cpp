#include "LogCapture.h"
#include "files/FileAccess.h"
#include "files/IniDocument.h"
#include "settings/Settings.h"

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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
    void writtenValuesStay();
    void finishedStoreWritesAtOnce();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    void write(const QString& name, const QByteArray& content, const QDateTime& modified = {}) const;
    QString stored(const QString& key) const;
    QStringList corruptCopies() const;
    std::unique_ptr<Settings> makeSettings() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// A value as text, "-" when there is none.
QString get(const Settings& settings, View view, const QString& key)
{
    QString value = "-";
    settings.get(view, SettingName(QStringView(u"s"), key), [&value](const QString& text) { value = text; });
    return value;
}

} // namespace

void tst_Settings::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_Settings::write(const QString& name, const QByteArray& content, const QDateTime& modified) const
{
    QString error;
    QVERIFY2(FileAccess::replace(path(name), content, error), qPrintable(error));
    QFile file(path(name));
    if (modified.isValid())
        QVERIFY(file.open(QFile::ReadWrite) && file.setFileTime(modified, QFile::FileModificationTime));
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
    write("user/settings.ini", "[s]\nk=2\n", time);
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::User, "k"), QString("2"), 2000);
    write("defaults.ini", "[s]\nd=1\n");
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::Merged, "d"), QString("1"), 2000);
    QVERIFY(QFile::remove(path("user/settings.ini")));
    QTRY_COMPARE_WITH_TIMEOUT(get(*settings, View::Merged, "k"), QString("-"), 2000);
}

/// What another process wrote is neither lost by a write nor hidden from the one who writes.
void tst_Settings::writesMergeWithOtherProcessesChanges()
{
    const auto mine = makeSettings();
    const auto other = makeSettings();
    other->set("s", "other", "o");
    QVERIFY(other->drain());
    for (int i = 0; i < 50; ++i)
        mine->set("s", "mine", QString::number(i));
    QVERIFY(mine->drain());
    QCOMPARE(stored("mine"), QString("49"));
    QCOMPARE(stored("other"), QString("o"));
    QTRY_COMPARE_WITH_TIMEOUT(get(*mine, View::User, "other"), QString("o"), 2000);
}

void tst_Settings::storeThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("hindrance");
    for (const char* hindrance : {"folder in its place", "file in its folder's place", "lock"})
        QTest::newRow(hindrance) << hindrance;
}

/// The application goes on with its values, hears of the trouble once, and nothing is lost when it is over.
void tst_Settings::storeThatCannotBeWritten()
{
    QFETCH(QString, hindrance);
    LogCapture log;
    QLockFile lock(path("user/settings.ini.lock"));
    if (hindrance.startsWith("folder"))
        QVERIFY(QDir().mkpath(path("user/settings.ini/x")));
    else if (hindrance.startsWith("file"))
        write("user", "x");
    else
        QVERIFY(QDir().mkpath(path("user")) && lock.tryLock());
    const auto settings = makeSettings();
    settings->set("s", "k", "1");
    QTRY_VERIFY_WITH_TIMEOUT(!settings->set("s", "k", "2"), 10000);
    QTest::qWait(500); // some attempts more
    QCOMPARE(get(*settings, View::Merged, "k"), QString("2"));
    QCOMPARE(log.count("Settings file {*} cannot be {*}"), 1);
    if (lock.isLocked())
        lock.unlock();
    else
        QVERIFY(QFile::remove(path("user")) || QDir(path("user/settings.ini")).removeRecursively());
    QTRY_COMPARE_WITH_TIMEOUT(stored("k"), QString("2"), 15000);
    QTRY_VERIFY(settings->set("s", "k", "3"));
    QVERIFY(settings->drain());
    QCOMPARE(stored("k"), QString("3"));
    QCOMPARE(log.count("Settings file {*} can be written again"), 1);
}

void tst_Settings::corruptStoreIsPutAside_data()
{
    QTest::addColumn<bool>("isWrittenTo");
    QTest::newRow("at the next write") << true;
    QTest::newRow("without a write") << false;
}

void tst_Settings::corruptStoreIsPutAside()
{
    QFETCH(bool, isWrittenTo);
    LogCapture log;
    const QByteArray content = QByteArray("[s]\nk=v\nl=\xff\xfe\n[cut\n") + QByteArray(4096, '\0');
    write("user/settings.ini", content, QDateTime::currentDateTime().addSecs(-60)); // nobody is editing it
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

/// Nobody ever reads an older value than the own last one, whatever flushes are under way.
void tst_Settings::writtenValuesStay()
{
    const auto settings = makeSettings();
    for (int i = 0; i <= 500; ++i) {
        settings->set("s", "k", QString::number(i));
        QElapsedTimer timer;
        timer.start();
        while (i % 50 == 0 && timer.elapsed() < 10)
            QCOMPARE(get(*settings, View::Merged, "k"), QString::number(i));
    }
    QVERIFY(settings->drain());
    QCOMPARE(stored("k"), QString("500"));
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
