#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Contrast as the Web Content Accessibility Guidelines define it.
namespace Contrast {

constexpr double ForText = 4.5;
constexpr double ForOthers = 3; ///< frames, and text of what cannot be used now

inline double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// From 1 to 21, for opaque colours.
inline double of(const QColor& first, const QColor& second)
{
    const auto [dark, light] = std::minmax({luminance(first), luminance(second)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace Contrast
