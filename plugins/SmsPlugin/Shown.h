#pragma once

#include "Message.h"

#include <QLocale>

// Parts of messages in the current language.

/// The address for the user; an empty one has a name.
QString shownAddress(const QString& address);

/// The time of a message; empty when it has none.
QString shownTime(const Message& message, QLocale::FormatType dateFormat);

/// The time of a message, and what has become of one that was sent.
QString shownFate(const Message& message);

/// A number in the digits of the language.
QString shownNumber(int number);
