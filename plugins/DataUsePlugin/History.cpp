#include "History.h"

#include <QList>

#include <algorithm>

namespace {

constexpr int MostDays = 800;
constexpr char Counters[] = "counters";
constexpr char Warned[] = "warned";
constexpr char Heading[] = "# What a SIM card has transferred by day: bytes received, bytes sent\n";

using Words = QList<QByteArray>;

bool readTraffic(const Words& words, Traffic& traffic)
{
    bool isReceived = false;
    bool isSent = false;
    traffic.received = words[1].toULongLong(&isReceived);
    traffic.sent = words[2].toULongLong(&isSent);
    return isReceived && isSent;
}

QDate dateFrom(const QByteArray& word)
{
    return QDate::fromString(QString::fromLatin1(word), Qt::ISODate);
}

bool readWarned(const Words& words, History& history)
{
    const QDate period = dateFrom(words[1]);
    const int state = words[2].toInt();
    if (!period.isValid() || state < int(LimitState::Below) || state > int(LimitState::Reached))
        return false;
    history.warnedPeriod = period;
    history.warned = LimitState(state);
    return true;
}

bool readLine(const QByteArray& line, History& history)
{
    const Words words = line.split(' ');
    if (words.size() != 3)
        return false;
    if (words[0] == Warned)
        return readWarned(words, history);
    Traffic traffic;
    if (!readTraffic(words, traffic))
        return false;
    if (words[0] == Counters) {
        history.counters = traffic;
        return true;
    }
    const QDate day = dateFrom(words[0]);
    if (day.isValid())
        history.days[day] = traffic;
    return day.isValid();
}

QByteArray lineOf(const QByteArray& name, quint64 first, quint64 second)
{
    return name + ' ' + QByteArray::number(first) + ' ' + QByteArray::number(second) + '\n';
}

QByteArray isoDate(const QDate& day)
{
    return day.toString(Qt::ISODate).toLatin1();
}

/// Quoted, because the headings come from translators.
QByteArray quoted(QString field)
{
    field.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return '"' + field.toUtf8() + '"';
}

} // namespace

Traffic History::take(const Traffic& now, const QDate& today)
{
    const Traffic added = counters ? growth(*counters, now) : Traffic();
    counters = now;
    if (added.total() > 0)
        days[today] += added;
    return added;
}

Traffic History::sum(const Period& period) const
{
    Traffic sum;
    for (auto day = days.lowerBound(period.first); day != days.end() && day.key() <= period.last; ++day)
        sum += *day;
    return sum;
}

bool History::noteState(LimitState state, const Period& period)
{
    const LimitState before = warnedPeriod == period.first ? warned : LimitState::Below;
    warnedPeriod = period.first;
    warned = state; // it falls when the user raises the limit
    return state > before;
}

QByteArray textOf(const History& history)
{
    QByteArray text = Heading;
    if (history.counters)
        text += lineOf(Counters, history.counters->received, history.counters->sent);
    if (history.warnedPeriod.isValid())
        text += QByteArray(Warned) + ' ' + isoDate(history.warnedPeriod) + ' ' +
                QByteArray::number(int(history.warned)) + '\n';
    auto day = history.days.begin();
    std::advance(day, std::max(0, history.days.size() - MostDays));
    for (; day != history.days.end(); ++day)
        text += lineOf(isoDate(day.key()), day->received, day->sent);
    return text;
}

History historyFrom(const QByteArray& text, int& badLines)
{
    History history;
    badLines = 0;
    const Words lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const QByteArray content = line.trimmed();
        const bool isGood = content.isEmpty() || content.startsWith('#') || readLine(content, history);
        badLines += isGood ? 0 : 1;
    }
    return history;
}

QByteArray csvOf(const History::Days& days, const QStringList& headings)
{
    Words fields;
    for (const QString& heading : headings)
        fields.append(quoted(heading));
    QByteArray text = fields.join(',') + "\r\n";
    for (auto day = days.begin(); day != days.end(); ++day)
        text += isoDate(day.key()) + ',' + QByteArray::number(day->received) + ',' +
                QByteArray::number(day->sent) + "\r\n";
    return text;
}
