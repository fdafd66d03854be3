#include "common/RecentLog.h"

#include <QtTest>

#include <thread>

class TestRecentLog : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheLatest();
};

namespace {

QMutex lock;
QStringList passedOn;

void passOn(QtMsgType, const QMessageLogContext&, const QString& message)
{
    const QMutexLocker locker(&lock);
    passedOn.append(message);
}

void logWarnings(const char* text, int count)
{
    for (int i = 0; i < count; ++i)
        qWarning("%s %d", text, i);
}

} // namespace

void TestRecentLog::keepsTheLatest()
{
    const auto before = qInstallMessageHandler(passOn);
    qWarning("before");
    QVERIFY(RecentLog::lines().isEmpty());
    RecentLog::start();

    qWarning("%s", QByteArray(2 * RecentLog::LongestLine, 'x').constData());
    logWarnings("first", 1);
    const QStringList lines = RecentLog::lines();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[0].size(), RecentLog::LongestLine);
    QVERIFY2(QRegularExpression(R"(^\d\d:\d\d:\d\d:\d{3} first 0$)").match(lines[1]).hasMatch(),
             qUtf8Printable(lines[1]));
    QCOMPARE(passedOn.size(), 3);
    QCOMPARE(passedOn.last(), "first 0");

    logWarnings("more", RecentLog::MostLines);
    std::thread other([] { logWarnings("more", RecentLog::MostLines); }); // the thread sanitizer watches
    logWarnings("more", RecentLog::MostLines);
    other.join();
    QCOMPARE(RecentLog::lines().size(), RecentLog::MostLines);
    QVERIFY(RecentLog::lines().last().endsWith(QString("more %1").arg(RecentLog::MostLines - 1)));
    qInstallMessageHandler(before);
}

QTEST_GUILESS_MAIN(TestRecentLog)
#include "tst_recentlog.moc"
