#include "common/RecentLog.h"

#include "common/Log.h"

#include <QMutex>
#include <QQueue>

namespace {

struct Lines
{
    QMutex lock;
    QQueue<QString> latest;
    QtMessageHandler before = nullptr;
};

/// Never destroyed: objects may log while the process ends.
Lines& kept()
{
    static auto* const lines = new Lines;
    return *lines;
}

void keep(const QString& message)
{
    const QString line = QString::fromLatin1(Log::timeText()) + QLatin1Char(' ') + message;
    Lines& lines = kept();
    const QMutexLocker locker(&lines.lock);
    if (lines.latest.size() == RecentLog::MostLines)
        lines.latest.dequeue();
    lines.latest.enqueue(line.left(RecentLog::LongestLine));
}

void keepAndPassOn(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    keep(message); // first: a fatal message ends the process
    kept().before(type, context, message);
}

} // namespace

void RecentLog::start()
{
    kept().before = qInstallMessageHandler(keepAndPassOn);
}

QStringList RecentLog::lines()
{
    Lines& lines = kept();
    const QMutexLocker locker(&lines.lock);
    return lines.latest;
}
