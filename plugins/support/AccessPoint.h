#pragma once

#include "support/Modems.h"

/// How the user wants a SIM card to be connected. Stored in the user's settings for each card; the password is encrypted.
/// That hides it from view, but whoever has the settings and knows the IMSI can decrypt it. Any thread.
struct AccessPoint
{
    QString name; ///< empty: chosen automatically
    QString user;
    QString protectedPassword; ///< as CommonUtils::Encrypt() made it
    bool isHomeOnly = false;

    /// Whether the SIM card of a modem is known well enough to store something for it.
    static bool isStorable(const Modem& modem);

    /// What is stored for the SIM card in a modem; otherwise the default.
    static AccessPoint load(const Modem& modem);
    void save(const Modem& modem) const;

    /// The password in plain text. The caller wipes it.
    QString password(const Modem& modem) const;

    /// @param plain wiped by the caller
    void setPassword(const Modem& modem, const QString& plain);
};
