#include "LogCapture.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

std::mutex mutex; // guards all captures
std::condition_variable changed;
LogCapture* current = nullptr;

QRegularExpression expression(const QString& pattern)
{
    const QString text = QRegularExpression::escape(pattern)
                             .replace(R"(\{time\})", R"(\d\d:\d\d:\d\d:\d\d\d)")
                             .replace(R"(\{file\})", R"(src/core/[\w/]+\.(cpp|h))")
                             .replace(R"(\{func\})", R"(~?\w+)")
                             .replace(R"(\{n\})", R"(-?\d+)")
                             .replace(R"(\{\*\})", ".*");
    return QRegularExpression(QRegularExpression::anchoredPattern(text),
                              QRegularExpression::DotMatchesEverythingOption);
}

} // namespace

LogCapture::LogCapture()
{
    const std::lock_guard lock(mutex);
    current = this;
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        const std::lock_guard handlerLock(mutex);
        if (!current)
            return;
        current->m_lines.append(text);
        current->m_linesOfType[type].append(text);
        changed.notify_all();
    });
}

LogCapture::~LogCapture()
{
    const std::lock_guard lock(mutex);
    current = nullptr;
    qInstallMessageHandler(nullptr);
}

QStringList LogCapture::lines(const QString& pattern) const
{
    const std::lock_guard lock(mutex);
    return m_lines.filter(expression(pattern));
}

QStringList LogCapture::lines(QtMsgType type, const QString& pattern) const
{
    const std::lock_guard lock(mutex);
    return m_linesOfType[type].filter(expression(pattern));
}

QString LogCapture::firstMissingInOrder(const QStringList& patterns) const
{
    const std::lock_guard lock(mutex);
    int line = -1;
    for (const QString& pattern : patterns) {
        line = m_lines.indexOf(expression(pattern), line + 1);
        if (line < 0)
            return pattern;
    }
    return {};
}

bool LogCapture::waitFor(const QString& pattern, int count, int timeout) const
{
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(timeout), [&, wanted = expression(pattern)] {
        return m_lines.filter(wanted).size() >= count;
    });
}

void LogCapture::allow(const QString& pattern)
{
    m_allowed.append(expression(pattern));
}

QStringList LogCapture::unexpected() const
{
    QStringList unexpected = lines(QtWarningMsg) + lines(QtCriticalMsg);
    for (const QRegularExpression& allowed : m_allowed)
        for (const QString& line : unexpected.filter(allowed))
            unexpected.removeAll(line);
    return unexpected;
}

void LogCapture::clear()
{
    const std::lock_guard lock(mutex);
    m_lines.clear();
    m_linesOfType.clear();
}
