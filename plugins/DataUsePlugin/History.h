#pragma once

#include "DataLimit.h"
#include "Period.h"
#include "Traffic.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <optional>

/// What one SIM card has transferred by day, in local time. A plain value: files are read and written by HistoryFile.
struct History
{
    using Days = QMap<QDate, Traffic>;

    Days days;
    std::optional<Traffic> counters;       ///< of the modem, when they were last read
    QDate warnedPeriod;                    ///< first day of the period that `warned` belongs to
    LimitState warned = LimitState::Below; ///< what the user has been told about

    /// Adds what has been transferred since the counters were last read, also by an earlier run of the application.
    /// The very first reading adds nothing, because it is not known when the counters started.
    /// @return what was added
    Traffic take(const Traffic& counters, const QDate& today);

    Traffic sum(const Period& period) const;

    /// Whether the user has to be told about a state. Takes note that this has been done.
    bool noteState(LimitState state, const Period& period);
};

/// The text of a file with this history. Only the latest days are kept, more than two years.
QByteArray textOf(const History& history);

/// The history from the text of a file.
/// @param badLines receives the number of lines that make no sense, which are left out
History historyFrom(const QByteArray& text, int& badLines);

/// A table for other programs: dates as 2024-02-29, plain numbers of bytes, lines end as in RFC 4180.
/// @param headings of the three columns
QByteArray csvOf(const History::Days& days, const QStringList& headings);
