#pragma once

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// The sum of two volumes, or the largest number: a damaged file can contain any.
inline quint64 saturatedSum(quint64 left, quint64 right)
{
    return left + std::min(right, std::numeric_limits<quint64>::max() - left);
}

/// Bytes in both directions.
struct Traffic
{
    quint64 received = 0;
    quint64 sent = 0;

    quint64 total() const { return saturatedSum(received, sent); }

    Traffic& operator+=(const Traffic& other)
    {
        received = saturatedSum(received, other.received);
        sent = saturatedSum(sent, other.sent);
        return *this;
    }
};

inline bool operator==(const Traffic& left, const Traffic& right)
{
    return left.received == right.received && left.sent == right.sent;
}

/// What was transferred between two readings of a modem's counters, at least. A counter that went down was reset, by a new
/// connection, in another modem or because it has overflowed, so its whole value is new traffic.
inline Traffic growth(const Traffic& before, const Traffic& now)
{
    const auto grown = [](quint64 from, quint64 to) {
        return to >= from ? to - from : to;
    };
    return {grown(before.received, now.received), grown(before.sent, now.sent)};
}
