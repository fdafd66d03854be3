#include "LogCapture.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

std::mutex mutex; // guards all captures
std::condition_variable changed;
LogCapture* current = nullptr;

QRegularExpression expression(const QString& pattern)
{
    QString text = QRegularExpression::escape(pattern);
    for (const auto& [name, meaning] : {std::pair{"{time}", R"(\d\d:\d\d:\d\d:\d\d\d)"},
                                        {"{file}", R"(src/core/[\w/]+\.(cpp|h))"},
                                        {"{func}", R"(~?\w+)"},
                                        {"{n}", R"(-?\d+)"},
                                        {"{*}", ".*"}})
        text.replace(QRegularExpression::escape(QLatin1String(name)), QLatin1String(meaning));
    return QRegularExpression(QRegularExpression::anchoredPattern(text),
                              QRegularExpression::DotMatchesEverythingOption);
}

auto matching(const QString& pattern)
{
    return [wanted = expression(pattern)](const auto& line) {
        return wanted.match(line.text).hasMatch();
    };
}

} // namespace

LogCapture::LogCapture()
{
    const std::lock_guard lock(mutex);
    current = this;
    qInstallMessageHandler(&LogCapture::handle);
}

LogCapture::~LogCapture()
{
    const std::lock_guard lock(mutex);
    current = nullptr;
    qInstallMessageHandler(nullptr);
}

QStringList LogCapture::lines(const QString& pattern) const
{
    return select(matching(pattern));
}

QStringList LogCapture::lines(QtMsgType type, const QString& pattern) const
{
    const auto isMatch = matching(pattern);
    return select([&](const Line& line) { return line.type == type && isMatch(line); });
}

QString LogCapture::firstMissingInOrder(const QStringList& patterns) const
{
    const std::lock_guard lock(mutex);
    auto line = m_lines.cbegin();
    for (const QString& pattern : patterns) {
        line = std::find_if(line, m_lines.cend(), matching(pattern));
        if (line == m_lines.cend())
            return pattern;
        ++line;
    }
    return {};
}

bool LogCapture::waitFor(const QString& pattern, int count, int timeout) const
{
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::milliseconds(timeout),
                            [this, count, isMatch = matching(pattern)] {
                                return std::count_if(m_lines.cbegin(), m_lines.cend(), isMatch) >= count;
                            });
}

void LogCapture::allow(const QString& pattern)
{
    m_allowed.append(expression(pattern));
}

QStringList LogCapture::unexpected() const
{
    return select([this](const Line& line) {
        return line.type != QtDebugMsg && line.type != QtInfoMsg &&
               std::none_of(m_allowed.cbegin(), m_allowed.cend(),
                            [&](const auto& allowed) { return allowed.match(line.text).hasMatch(); });
    });
}

void LogCapture::clear()
{
    const std::lock_guard lock(mutex);
    m_lines.clear();
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const std::lock_guard lock(mutex);
    if (!current)
        return;
    current->m_lines.append({type, text});
    changed.notify_all();
}

template <typename Test>
QStringList LogCapture::select(Test isWanted) const
{
    const std::lock_guard lock(mutex);
    QStringList texts;
    for (const Line& line : m_lines) {
        if (isWanted(line))
            texts.append(line.text);
    }
    return texts;
}
