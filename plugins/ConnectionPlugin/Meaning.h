#pragma once

#include "support/ConnectionState.h"

using Action = ConnectionAction; ///< what the page's button does; without an action there is no button

/// What the page says. The strings are identifiers of the plugin's strings.
struct Meaning
{
    Look::Sign sign;
    const char* title;    ///< null: that of the failure
    const char* sentence; ///< what to do; null: the hint of the failure
    Action action = Action::None;
    bool isPossible = true; ///< whether the button is on
    int failure = 0;        ///< for resultWords()
};

Meaning meaningOf(const ConnectionReport& report);
