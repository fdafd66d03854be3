#include "files/FileAccess.h"
#include "files/FileWatch.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;
using Clock = FileWatch::Clock;

class tst_FileWatch : public QObject
{
    Q_OBJECT

private slots:
    void watches();
};

namespace {

/// Makes the change "<verb> <path> [<new path>]" in this folder.
bool change(const QDir& root, QFile& file, const QString& step)
{
    const QStringList words = step.split(' ');
    const QString path = root.filePath(words[1]);
    QString error;
    if (words[0] == "replace")
        return FileAccess::replace(path, "x", error);
    if (words[0] == "remove")
        return QFile::remove(path) || QDir(path).removeRecursively();
    if (words[0] == "rename")
        return QDir(root).rename(words[1], words[2]);
    if (words[0] == "link")
        return QFile::link(root.filePath(words[2]), path);
    file.setFileName(path);
    return file.open(QFile::Append | QFile::Unbuffered) && file.write("x") == 1;
}

bool reports(FileWatch& watch, Clock::duration patience)
{
    const Clock::time_point end = Clock::now() + patience;
    while (Clock::now() < end) {
        if (watch.wait(end))
            return true;
    }
    return false;
}

} // namespace

/// However a change is made, and the next one too.
void tst_FileWatch::watches()
{
    const QTemporaryDir folder;
    QFile file;
    FileWatch watch({folder.filePath("link"), QString(), folder.filePath("a/b/c/file")});
    const auto until = Clock::now() + 30ms;
    QVERIFY(!watch.wait(until) && Clock::now() >= until);
    watch.wake();
    QVERIFY(!watch.wait());
    QStringList steps = {"replace a/b/c/file", "append a/b/c/file", "replace a/b/c/file", "remove a/b/c/file",
                         "append a/b/c/file"};
#ifndef Q_OS_WIN // where a folder in use keeps its name, and links need rights
    QVERIFY(QDir(folder.path()).mkdir("t"));
    steps += {"remove a/b",     "replace a/b/c/file", "remove a",   "replace a/b/c/file",
              "rename a/b a/c", "rename a/c a/b",     "rename a z", "rename z a",
              "link link t/t",  "replace t/t",        "write t/t"};
#endif
    for (const QString& step : qAsConst(steps)) {
        while (reports(watch, 20ms)) {
        } // one change may be reported several times
        QVERIFY2(change(folder.path(), file, step), qPrintable(step));
        if (!step.startsWith("write"))
            file.close();
        watch.wake(); // must not hide the change
        QVERIFY2(reports(watch, 10s), qPrintable(step));
    }
    FolderWatch folders;
    QVERIFY(!folders.watch({folder.path(), folder.filePath("missing")}));
    QVERIFY(folders.watch({folder.path()}));
}

QTEST_APPLESS_MAIN(tst_FileWatch)
#include "tst_filewatch.moc"
