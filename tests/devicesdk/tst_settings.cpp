#include "LogCapture.h"
#include "ReplaceFile.h"
#include "files/IniDocument.h"
#include "settings/Settings.h"

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <utility>

using View = Settings::View;

class tst_Settings : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void viewsFollowFiles();
    void writesMergeWithOtherProcessesChanges();
    void storeThatCannotBeWritten();
    void valuesOutliveTrouble();
    void corruptStoreIsPutAside();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    void write(const QString& name, const QByteArray& content) const { replaceFile(path(name), content); }
    QString stored(const QString& key) const
    {
        const IniDocument document(FileAccess::read(path("user/settings.ini")).bytes);
        const QString* value = document.find("s", key);
        return value ? *value : "-";
    }
    QStringList corruptCopies() const { return QDir(path("user")).entryList({"settings.ini.corrupt-*"}); }
    std::unique_ptr<Settings> makeSettings() const
    {
        return std::make_unique<Settings>(path("user/settings.ini"), path("defaults.ini"));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// A value, "-" if there is none.
QString get(const Settings& settings, View view, const QString& key)
{
    QString value = "-";
    settings.get(view, SettingName(QStringView(u"s"), key), [&value](const QString& text) { value = text; });
    return value;
}

} // namespace

void tst_Settings::viewsFollowFiles()
{
    write("defaults.ini", "[s]\nboth = default, \"100%\"\nonly = default\n");
    const auto settings = makeSettings();
    QVERIFY(settings->set("s", "both", "") && settings->set("s", "mine", "user"));
    const std::pair<QString, QStringList> rows[] = {
        {"both", {"", "", "default, \"100%\""}},
        {"only", {"default", "-", "default"}},
        {"mine", {"user", "user", "-"}},
        {"Mine", {"-", "-", "-"}},
    };
    for (const auto& [key, values] : rows) {
        QStringList found;
        for (const View view : {View::Merged, View::User, View::Defaults})
            found << get(*settings, view, key);
        QCOMPARE(found, values);
    }
    QVERIFY(settings->drain());
    QCOMPARE(stored("mine") + stored("only"), QString("user-"));
    write("user/settings.ini", "[s]\nmine=resu\n");
    QTRY_COMPARE(get(*settings, View::Merged, "mine") + get(*settings, View::User, "both"), QString("resu-"));
    write("defaults.ini", "[s]\nonly=1\n");
    QTRY_COMPARE(get(*settings, View::Merged, "only"), QString("1"));
    QVERIFY(QFile::remove(path("user/settings.ini")));
    QTRY_COMPARE(get(*settings, View::Merged, "mine"), QString("-"));
}

/// What another process wrote is not lost by a write, and is adopted by it. Meanwhile nobody ever reads a value
/// older than the last one set.
void tst_Settings::writesMergeWithOtherProcessesChanges()
{
    const auto mine = makeSettings();
    const auto other = makeSettings();
    other->set("s", "other", "o");
    QVERIFY(other->drain());
    for (int i = 0; i <= 500; ++i) {
        mine->set("s", "mine", QString::number(i));
        const QDeadlineTimer deadline(10);
        while (i % 50 == 0 && !deadline.hasExpired())
            QCOMPARE(get(*mine, View::Merged, "mine"), QString::number(i));
    }
    QVERIFY(mine->drain());
    QCOMPARE(stored("mine") + stored("other") + get(*mine, View::User, "other"), QString("500oo"));
}

/// Trouble is logged when it begins and when it is over.
void tst_Settings::storeThatCannotBeWritten()
{
    for (const QString hindrance : {"file", "folder", "lock", "size"}) {
        init();
        LogCapture log;
        const QString store = path("user/settings.ini");
        QLockFile lock(store + ".lock");
        if (hindrance == "file")
            write("user", "x");
        else
            QVERIFY(QDir().mkpath(hindrance == "folder" ? store + "/x" : path("user")));
        QVERIFY(hindrance != "lock" || lock.tryLock());
        if (hindrance == "size") {
            write("user/settings.ini", {});
            QVERIFY(QFile::resize(store, FileAccess::MaximalSize + 1));
        }
        SettingsFile file(store);
        for (int tries = hindrance == "lock" ? 1 : 2; tries > 0; --tries) // a lock is waited for
            QVERIFY2(!file.write({{{"s", "k"}, "v"}}), qPrintable(hindrance));
        QCOMPARE(log.count("Settings file {*} cannot be {*}"), 1);
        lock.unlock();
        QVERIFY(QFile::remove(store) || QFile::remove(path("user")) || QDir(store).removeRecursively());
        QVERIFY2(file.write({{{"s", "k"}, "v"}}), qPrintable(hindrance));
        QCOMPARE(stored("k"), QString("v"));
        QCOMPARE(log.count("Settings file {*} can be written again"), 1);
    }
}

void tst_Settings::valuesOutliveTrouble()
{
    write("user", "x");
    const auto settings = makeSettings();
    QTRY_VERIFY(!settings->set("s", "k", "1"));
    QVERIFY(!settings->set("s", "l", "2") && !settings->drain());
    QCOMPARE(get(*settings, View::Merged, "l"), QString("2"));
    QVERIFY(QFile::remove(path("user")));
    QTRY_COMPARE_WITH_TIMEOUT(stored("k") + stored("l"), QString("12"), 15000);
    QTRY_VERIFY(settings->set("s", "k", "3"));
    settings->finish(); // writes everything, and from then on at once
    QCOMPARE(stored("k"), QString("3"));
    QVERIFY(settings->set("s", "k", "4") && stored("k") == "4");
}

/// At the next write, or after a while without one.
void tst_Settings::corruptStoreIsPutAside()
{
    for (const bool isWrittenTo : {true, false}) {
        init();
        LogCapture log;
        const QByteArray content = QByteArray("[s]\nk=v\nl=\xff\xfe\n[cut\n") + QByteArray(4096, '\0');
        write("user/settings.ini", content);
        QElapsedTimer timer;
        timer.start();
        const auto settings = makeSettings();
        QCOMPARE(get(*settings, View::User, "k"), QString("v"));
        QVERIFY(log.contains("Settings file {*}: {n} lines are broken, the first is line 3"));
        if (isWrittenTo)
            settings->set("s", "new", "n");
        QVERIFY(log.waitFor("Settings file {*} was damaged; it was kept as {*}"));
        QVERIFY(isWrittenTo || timer.elapsed() >= 1990); // somebody may be editing it
        QTRY_VERIFY(IniDocument(FileAccess::read(path("user/settings.ini")).bytes).brokenLines().isEmpty());
        QVERIFY(settings->drain());
        QCOMPARE(stored("k") + stored("new"), QString(isWrittenTo ? "vn" : "v-"));
        settings->set("s", "k", "w");
        QVERIFY(settings->drain());
        QCOMPARE(corruptCopies().size(), 1);
        QVERIFY(log.contains("{*} kept as {*}" + corruptCopies().first() + "{*}"));
        QCOMPARE(FileAccess::read(path("user/" + corruptCopies().first())).bytes, content);
    }
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_settings.moc"
