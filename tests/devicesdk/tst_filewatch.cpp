#include "files/FileAccess.h"
#include "files/FileWatch.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <tuple>

using namespace std::chrono_literals;

class tst_FileWatch : public QObject
{
    Q_OBJECT

private slots:
    void reportsChanges();
    void waits();
};

namespace {

bool replace(const QString& path)
{
    QString error;
    return FileAccess::replace(path, "x", error);
}

bool append(const QString& path)
{
    QFile file(path);
    return file.open(QFile::Append) && file.write("x") == 1;
}

bool isReported(FileWatch& watch)
{
    return watch.wait(FileWatch::Clock::now() + 10s);
}

/// Changes of a file show in several folders, or one after the other.
bool isQuiet(FileWatch& watch)
{
    for (int i = 0; i < 100; ++i) {
        if (!watch.wait(FileWatch::Clock::now() + 20ms))
            return true;
    }
    return false;
}

} // namespace

/// However a change is made, and the next one as well.
void tst_FileWatch::reportsChanges()
{
    const QTemporaryDir root;
    const QString folder = root.filePath("a/b"), file = folder + "/file";
    FileWatch watch({root.filePath("link"), QString(), file});
    const std::tuple<const char*, std::function<bool()>> steps[] = {
        {"created with its folders",
         [&] {
             return replace(file);
         }},
        {"written",
         [&] {
             return append(file);
         }},
        {"replaced",
         [&] {
             return replace(file);
         }},
        {"permissions",
         [&] {
             return QFile::setPermissions(file, QFile::ReadOwner);
         }},
        {"permissions back",
         [&] {
             return QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
         }},
        {"removed",
         [&] {
             return QFile::remove(file);
         }},
        {"created",
         [&] {
             return append(file);
         }},
        {"folder removed",
         [&] {
             return QDir(folder).removeRecursively();
         }},
        {"all folders removed",
         [&] {
             return QDir().rmdir(root.filePath("a"));
         }},
        {"created in new folders",
         [&] {
             return replace(file);
         }},
#ifndef Q_OS_WIN
        {"folder exchanged",
         [&] {
             return QDir().rename(folder, folder + '2') && replace(file);
         }},
        {"written in the new folder",
         [&] {
             return append(file);
         }},
        {"link created",
         [&] {
             return replace(root.filePath("t/t")) && QFile::link("t/t", root.filePath("link"));
         }},
        {"target of the link",
         [&] {
             return append(root.filePath("t/t"));
         }},
#endif
    };
    for (const auto& [name, change] : steps) {
        QVERIFY2(isQuiet(watch), name);
        QVERIFY2(change(), name);
        QVERIFY2(isReported(watch), name);
    }
}

void tst_FileWatch::waits()
{
    const QTemporaryDir root;
    FileWatch watch({root.filePath("file")});
    const auto until = FileWatch::Clock::now() + 30ms;
    QVERIFY(!watch.wait(until) && FileWatch::Clock::now() >= until);
    watch.wake();
    QVERIFY(!watch.wait());
    QVERIFY(replace(root.filePath("file")));
    watch.wake(); // does not hide the change
    QVERIFY(watch.wait() || isReported(watch));
    FolderWatch folders;
    QVERIFY(!folders.watch({root.filePath("missing")}));
    QVERIFY(folders.watch({root.path()}));
}

QTEST_APPLESS_MAIN(tst_FileWatch)
#include "tst_filewatch.moc"
