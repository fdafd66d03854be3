#include "DarkColours.h"

namespace {

constexpr QRgb Text = 0xffe8ebee;
constexpr QRgb DisabledText = 0xff8d959e;
/// If it were lighter, the style sheet's grey of disabled buttons would be too faint on it.
constexpr QRgb Button = 0xff30363d;

struct Colour
{
    QPalette::ColorRole role;
    QRgb usual;
    QRgb disabled;
};

constexpr Colour Colours[] = {
    {QPalette::Window, 0xff202429, 0xff202429},
    {QPalette::WindowText, Text, DisabledText},
    {QPalette::Base, 0xff292e34, 0xff202429},
    {QPalette::AlternateBase, 0xff2d3239, 0xff202429},
    {QPalette::Text, Text, DisabledText},
    {QPalette::PlaceholderText, 0xffa9b1ba, DisabledText},
    {QPalette::ToolTipBase, Button, Button},
    {QPalette::ToolTipText, Text, Text},
    {QPalette::Button, Button, Button},
    {QPalette::ButtonText, Text, DisabledText},
    {QPalette::BrightText, 0xffffffff, DisabledText},
    {QPalette::Highlight, 0xff4c9be8, 0xff454e59},
    {QPalette::HighlightedText, 0xff0f1216, Text},
    {QPalette::Link, 0xff8cc1ff, DisabledText},
    {QPalette::LinkVisited, 0xffc3a6ff, DisabledText},
    // Edges. The style draws disabled text twice, the second time in the colour Light.
    {QPalette::Light, 0xff39404a, 0xff202429},
    {QPalette::Midlight, 0xff343a42, 0xff202429},
    {QPalette::Mid, 0xff1a1d21, 0xff1a1d21},
    {QPalette::Dark, 0xff15181b, 0xff15181b},
    {QPalette::Shadow, 0xff000000, 0xff000000},
};

} // namespace

QPalette darkColours()
{
    QPalette palette;
    for (const auto& [role, usual, disabled] : Colours) {
        palette.setColor(role, usual);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}
