#include "files/FileAccess.h"
#include "files/FileWatch.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;

class tst_FileWatch : public QObject
{
    Q_OBJECT

private slots:
    void reportsChanges();
    void waits();
};

namespace {

/// Makes the change "<verb> <path> [<new path>]" in this folder.
bool change(const QDir& root, const QString& step)
{
    const QString verb = step.section(' ', 0, 0), path = root.filePath(step.section(' ', 1, 1));
    const QString newPath = root.filePath(step.section(' ', 2, 2));
    QFile file(path);
    QString error;
    if (verb == "replace")
        return FileAccess::replace(path, "x", error);
    if (verb == "append")
        return file.open(QFile::Append) && file.write("x") == 1;
    if (verb == "protect")
        return file.setPermissions(QFile::ReadOwner);
    if (verb == "remove")
        return QFile::remove(path) || QDir(path).removeRecursively();
    return verb == "link" ? QFile::link(newPath, path) : QDir().rename(path, newPath);
}

/// One change may be reported several times.
bool becomesQuiet(FileWatch& watch)
{
    for (int i = 0; i < 100; ++i) {
        if (!watch.wait(FileWatch::Clock::now() + 20ms))
            return true;
    }
    return false;
}

} // namespace

/// However a change is made, and the next one too.
void tst_FileWatch::reportsChanges()
{
    const QTemporaryDir folder;
    FileWatch watch({folder.filePath("link"), QString(), folder.filePath("a/b/file")});
    QStringList steps = {"replace a/b/file", "append a/b/file", "replace a/b/file",
                         "remove a/b/file",  "append a/b/file", "protect a/b/file"};
#ifndef Q_OS_WIN // where a folder in use keeps its name, and links need rights
    QVERIFY(change(folder.path(), "replace t/t"));
    steps += {"remove a/b",     "replace a/b/file", "remove a",      "replace a/b/file",
              "rename a/b a/c", "replace a/b/file", "link link t/t", "append t/t"};
#endif
    for (const QString& step : qAsConst(steps)) {
        QVERIFY2(becomesQuiet(watch), qPrintable(step));
        QVERIFY2(change(folder.path(), step), qPrintable(step));
        QVERIFY2(watch.wait(FileWatch::Clock::now() + 10s), qPrintable(step));
    }
}

void tst_FileWatch::waits()
{
    const QTemporaryDir folder;
    FileWatch watch({folder.filePath("file")});
    const auto until = FileWatch::Clock::now() + 30ms;
    QVERIFY(!watch.wait(until) && FileWatch::Clock::now() >= until);
    watch.wake();
    QVERIFY(!watch.wait());
    QVERIFY(change(folder.path(), "replace file"));
    watch.wake(); // must not hide the change
    QVERIFY(watch.wait() || watch.wait(FileWatch::Clock::now() + 10s));
    FolderWatch folders;
    QVERIFY(!folders.watch({folder.path(), folder.filePath("missing")}));
    QVERIFY(folders.watch({folder.path()}));
}

QTEST_APPLESS_MAIN(tst_FileWatch)
#include "tst_filewatch.moc"
