#pragma once

#include <array>

/// Which entries of its system menu a window offers. Plain logic.
namespace SystemMenuStates {

/// Commands of the entries, numbered as on Windows.
enum Entry : unsigned int {
    Size = 0xF000,
    Move = 0xF010,
    Minimize = 0xF020,
    Maximize = 0xF030,
    Restore = 0xF120,
};

struct EntryState
{
    Entry entry;
    bool isEnabled;
};

/// @param isCompact whether the application is in mini mode
constexpr std::array<EntryState, 5> of(bool isMaximized, bool isCompact)
{
    const bool fillsScreen = isMaximized && !isCompact;
    const bool isNormal = !isMaximized && !isCompact;
    return {{{Restore, fillsScreen},
             {Move, !fillsScreen},
             {Size, isNormal},
             {Minimize, true},
             {Maximize, isNormal}}};
}

} // namespace SystemMenuStates
