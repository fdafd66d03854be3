#pragma once

#include <QString>

/// The dial string for a phone number as people write it: spaces, dashes, invisible characters and . / ( ) are removed,
/// digits of other scripts become Latin ones.
/// @return at most 32 characters: digits, * and #, with at least one digit and an optional leading +; empty
///         when the number is invalid
QString dialString(const QString& number);

/// Whether a dial string is a service code such as "*100#", which is sent to the network instead of being called.
bool isServiceCode(const QString& dialString);

/// A dial string for display: keeps the order of its characters in right-to-left text.
QString unmirrored(const QString& dialString);
