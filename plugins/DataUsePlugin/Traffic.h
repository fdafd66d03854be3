#pragma once

#include <QtGlobal>

/// Bytes in both directions.
struct Traffic
{
    quint64 received = 0;
    quint64 sent = 0;

    quint64 total() const { return received + sent; }

    Traffic& operator+=(const Traffic& other)
    {
        received += other.received;
        sent += other.sent;
        return *this;
    }
};

inline bool operator==(const Traffic& left, const Traffic& right)
{
    return left.received == right.received && left.sent == right.sent;
}

/// What was transferred between two readings of a modem's counters, at least. A counter that has fallen has started
/// anew, with a new connection, in another modem or because it has overflowed: all that it shows has come since then.
inline Traffic growth(const Traffic& before, const Traffic& now)
{
    const auto grown = [](quint64 from, quint64 to) {
        return to >= from ? to - from : to;
    };
    return {grown(before.received, now.received), grown(before.sent, now.sent)};
}
