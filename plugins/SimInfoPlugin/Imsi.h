#pragma once

#include <QString>

/// The parts of an International Mobile Subscriber Identity (ITU-T E.212) that name the home network.
struct Imsi
{
    QString countryCode; ///< MCC, three digits
    QString networkCode; ///< MNC, two digits or, in some countries, three

    /// Splits an IMSI. In a short or empty string the missing parts are empty.
    static Imsi parse(const QString& digits);
};
