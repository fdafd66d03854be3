#pragma once

#include <QString>

/// A message for a rich-text widget: exactly what the sender wrote, with links on what looks like an address.
QString richMessage(const QString& plain);

/// What to give CommonUtils::OpenUrl() for a link of richMessage().
QString urlToOpen(const QString& target);
