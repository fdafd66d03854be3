#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

/// Records all lines that go through Qt's message logger, on any thread, while it exists. One at a time.
///
/// Patterns match whole lines. They consist of literal text and the placeholders {time} (hh:mm:ss:zzz), {file}
/// (a source file relative to the source root), {func} (a function name), {n} (an integer) and {*} (anything).
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    Q_DISABLE_COPY_MOVE(LogCapture)

    int count(const QString& pattern) const { return lines(pattern).size(); }
    bool contains(const QString& pattern) const { return count(pattern) > 0; }

    /// The matching lines in order, of all types or one.
    QStringList lines(const QString& pattern = QStringLiteral("{*}")) const;
    QStringList lines(QtMsgType type, const QString& pattern = QStringLiteral("{*}")) const;

    /// The first pattern that no line matches after those of the previous patterns; empty if there is none.
    QString firstMissingInOrder(const QStringList& patterns) const;

    /// Waits until `count` lines match. False after `timeout` milliseconds.
    bool waitFor(const QString& pattern, int count = 1, int timeout = 15000) const;

    /// Warnings and critical lines are unexpected unless they match an allowed pattern.
    void allow(const QString& pattern);
    QStringList unexpected() const;

    void clear();

private:
    QStringList m_lines;
    QHash<QtMsgType, QStringList> m_linesOfType;
    QVector<QRegularExpression> m_allowed;
};
