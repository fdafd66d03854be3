#pragma once

#include <QStringList>

/// The numbers and service codes that were dialled last, the latest first, kept in the user's settings. GUI thread.
namespace RecentNumbers {

QStringList load();

/// Puts a dial string first. Codes that contain a password, such as those that change a PIN, are not kept.
void add(const QString& dialString);

void remove(const QString& dialString);

} // namespace RecentNumbers
