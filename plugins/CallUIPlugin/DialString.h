#pragma once

#include <QString>

/// What is sent to the network for a number as people write it: blanks and the separators - . / ( ) are left
/// out.
/// @return digits, * and # with an optional leading +, at most 32 signs with one digit at least; empty when
/// the
///         number is none
QString dialString(const QString& number);
