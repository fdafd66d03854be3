#include "LogCapture.h"

#include <QRegularExpression>

#include <algorithm>
#include <chrono>

namespace {

LogCapture* current = nullptr;
std::mutex currentMutex;

QRegularExpression expression(const QString& pattern)
{
    static const QVector<QPair<QString, QString>> placeholders = {
        {QStringLiteral("{time}"), QStringLiteral(R"(\d\d:\d\d:\d\d:\d\d\d)")},
        {QStringLiteral("{file}"), QStringLiteral(R"(src/core/[\w/]+\.(cpp|h))")},
        {QStringLiteral("{func}"), QStringLiteral(R"(~?\w+)")},
        {QStringLiteral("{n}"), QStringLiteral(R"(-?\d+)")},
        {QStringLiteral("{*}"), QStringLiteral(".*")},
    };
    QString text = QRegularExpression::escape(pattern);
    for (const auto& [name, meaning] : placeholders)
        text.replace(QRegularExpression::escape(name), meaning);
    return QRegularExpression(QRegularExpression::anchoredPattern(text),
                              QRegularExpression::DotMatchesEverythingOption);
}

/// The test whether a line matches.
auto matching(const QString& pattern)
{
    return [wanted = expression(pattern)](const auto& line) {
        return wanted.match(line.text).hasMatch();
    };
}

} // namespace

LogCapture::LogCapture()
{
    const std::lock_guard<std::mutex> lock(currentMutex);
    current = this;
    m_previous = qInstallMessageHandler(&LogCapture::handle);
}

LogCapture::~LogCapture()
{
    const std::lock_guard<std::mutex> lock(currentMutex);
    current = nullptr;
    qInstallMessageHandler(m_previous);
}

QStringList LogCapture::lines(const QString& pattern) const
{
    return select(matching(pattern));
}

QStringList LogCapture::lines(QtMsgType type, const QString& pattern) const
{
    const auto isWanted = matching(pattern);
    return select([&](const Line& line) { return line.type == type && isWanted(line); });
}

QString LogCapture::firstMissingInOrder(const QStringList& patterns) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
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
    const auto isEnough = [this, count, isWanted = matching(pattern)] {
        return std::count_if(m_lines.cbegin(), m_lines.cend(), isWanted) >= count;
    };
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeout), isEnough);
}

void LogCapture::allow(const QString& pattern)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_allowed.append(pattern);
}

QStringList LogCapture::unexpected() const
{
    return select([this](const Line& line) {
        return line.type != QtDebugMsg && line.type != QtInfoMsg &&
               std::none_of(m_allowed.cbegin(), m_allowed.cend(),
                            [&](const QString& pattern) { return matching(pattern)(line); });
    });
}

void LogCapture::clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.clear();
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const std::lock_guard<std::mutex> lock(currentMutex);
    if (current)
        current->append(type, text);
}

QStringList LogCapture::select(const std::function<bool(const Line&)>& isWanted) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList found;
    for (const Line& line : m_lines) {
        if (isWanted(line))
            found.append(line.text);
    }
    return found;
}

void LogCapture::append(QtMsgType type, const QString& text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.append({type, text});
    m_changed.notify_all();
}
