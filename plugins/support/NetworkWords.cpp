#include "support/NetworkWords.h"

#include "support/OperatorNames.h"

#include <algorithm>
#include <iterator>

namespace {

struct Technology
{
    const char* value;
    const char* name; ///< the same in all languages
};

constexpr Technology Technologies[] = {
    {"gsm", "GSM (2G)"},   {"gprs", "GPRS (2G)"},   {"edge", "EDGE (2G)"}, {"umts", "UMTS (3G)"},
    {"hspa", "HSPA (3G)"}, {"hspa+", "HSPA+ (3G)"}, {"lte", "LTE (4G)"},   {"5g", "5G"},
};

} // namespace

QString technologyName(const QString& technology)
{
    const auto* const found =
        std::find_if(std::begin(Technologies), std::end(Technologies), [&](const Technology& candidate) {
            return technology == QLatin1String(candidate.value);
        });
    return found == std::end(Technologies) ? technology.toUpper() : QString::fromLatin1(found->name);
}

QString networkName(const Modem& modem, const OperatorNames& names)
{
    const QString network = modemValue(modem.id, QStringLiteral("network"));
    if (network.isEmpty())
        return {};
    const QString reported = modemValue(modem.id, QStringLiteral("network-name"));
    const QString name = names.nameOf(network, modem.imsi, reported);
    return name.isEmpty() ? reported : name; // the lists may not have been read yet
}
