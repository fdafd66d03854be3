#pragma once

#include <QtGlobal>

/// How much of the limit is used up. Each state includes those before it.
enum class LimitState { Below, Near, Reached };

/// The user's choices, kept in the section "data" of the settings. GUI thread.
struct DataLimit
{
    enum Unit { Megabytes, Gigabytes };

    static constexpr int MostAmount = 99999;
    static constexpr int LeastShare = 50;
    static constexpr int MostShare = 99;

    bool isOn = false;
    int amount = 10;
    Unit unit = Gigabytes;
    int warnAt = 80;  ///< per cent
    int firstDay = 1; ///< of a period, see periodOf()

    /// Values that are missing or not valid are the defaults above.
    static DataLimit load();
    void save() const;

    /// @param base the factor between two units, Units::base()
    quint64 bytes(int base) const;
};

/// The share of a limit in per cent, rounded down; 0 without a limit.
int shareOf(quint64 used, quint64 limit);

/// @param limit  in bytes; 0 without a limit
/// @param warnAt percentage of the limit at which the user is warned
LimitState limitState(quint64 used, quint64 limit, int warnAt);
