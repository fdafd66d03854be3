#pragma once

#include <QString>

/// The dial string for a phone number as people write it: spaces and the separators - . / ( ) are removed.
/// @return at most 32 characters: digits, * and #, with at least one digit and an optional leading +; empty
///         when the number is invalid
QString dialString(const QString& number);
