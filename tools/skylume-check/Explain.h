#pragma once

#include <QString>

/// A modem and its SIM card. Unknown values are empty.
struct Situation
{
    QString operatorName; ///< customisation name; null for the installation's default
    QString device;
    QString imsi;
    QString gid;
};

/// Says for every plugin of an installation whether it is on, and which rule decided, on standard output.
/// @return the exit code: Failure if a file is faulty or a plugin that is on cannot be loaded
int explain(const QString& folder, const Situation& situation);
