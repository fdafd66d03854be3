#pragma once

#include "MessageWatch.h"

/// What a notification says about messages that have arrived.
struct MessageNotice
{
    /// @param messages not empty
    /// @param withText whether it quotes a message
    MessageNotice(const NewMessages& messages, bool withText);

    QString title;
    QString body; ///< may be empty
};
