#pragma once

#include "Message.h"

#include <QString>

// Parts of messages in the current language.

/// The address for the user; an empty one has a name.
QString shownAddress(const QString& address);

/// Date and time of a message; empty when it has none.
QString shownTime(const Message& message);

/// The time of a message of today, the date of an older one; empty when it has none.
QString shownDay(const Message& message);

/// The time of a message and, if it was sent, its state.
QString shownFate(const Message& message);
