#pragma once

#include <QString>

/// A message as rich text: exactly what the sender wrote, with addresses turned into links. Punctuation around an address
/// is not part of the link: "(www.example.org)."
QString richMessage(const QString& plain);

/// The argument for CommonUtils::OpenUrl() that opens a link of richMessage().
QString urlToOpen(const QString& target);
