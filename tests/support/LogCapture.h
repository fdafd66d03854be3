#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <QtGlobal>

#include <condition_variable>
#include <functional>
#include <mutex>

/// Records every line that goes through Qt's message logger while it lives; any thread may log.
///
/// Lines are sought by patterns: the literal text of a whole line with these placeholders:
/// {time} a time "hh:mm:ss:zzz", {file} a source file relative to the source root, {func} a function name,
/// {n} a whole number, {*} anything.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();

    int count(const QString& pattern) const { return lines(pattern).size(); }
    bool contains(const QString& pattern) const { return count(pattern) > 0; }

    /// The recorded lines that match, in order; those of one type alone if given.
    QStringList lines(const QString& pattern = QStringLiteral("{*}")) const;
    QStringList lines(QtMsgType type, const QString& pattern = QStringLiteral("{*}")) const;

    /// The first of the patterns that does not follow the ones before it; empty when all do, in this order.
    QString firstMissingInOrder(const QStringList& patterns) const;

    /// Blocks until so many lines match. False after the time-out (milliseconds).
    bool waitFor(const QString& pattern, int count = 1, int timeout = 15000) const;

    /// Warnings and critical lines are unexpected unless they match an allowed pattern.
    void allow(const QString& pattern);
    QStringList unexpected() const;

    void clear();

private:
    struct Line
    {
        QtMsgType type;
        QString text;
    };

    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);
    QStringList select(const std::function<bool(const Line&)>& isWanted) const;
    void append(QtMsgType type, const QString& text);

    QtMessageHandler m_previous;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    QVector<Line> m_lines;
    QStringList m_allowed;
};
