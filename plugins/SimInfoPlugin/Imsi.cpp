#include "Imsi.h"

#include <algorithm>
#include <iterator>

namespace {

struct CountryCodes
{
    int first;
    int last;
};

// Countries whose networks have three-digit codes: North America and the Caribbean, and some of South
// America.
constexpr CountryCodes ThreeDigitNetworks[] = {
    {302, 302}, {310, 316}, {334, 334}, {338, 338}, {342, 366},
    {374, 376}, {708, 708}, {722, 722}, {732, 732}, {750, 750},
};

int networkCodeLength(int countryCode)
{
    const auto contains = [countryCode](const CountryCodes& range) {
        return range.first <= countryCode && countryCode <= range.last;
    };
    return std::any_of(std::begin(ThreeDigitNetworks), std::end(ThreeDigitNetworks), contains) ? 3 : 2;
}

} // namespace

Imsi Imsi::parse(const QString& digits)
{
    Imsi imsi;
    imsi.countryCode = digits.left(3);
    imsi.networkCode = digits.mid(3, networkCodeLength(imsi.countryCode.toInt()));
    return imsi;
}
