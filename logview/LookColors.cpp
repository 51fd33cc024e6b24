#include "logview/LookColors.h"

#include <algorithm>
#include <cmath>

namespace logview
{

namespace
{

constexpr std::uint32_t Rgb(unsigned red, unsigned green, unsigned blue)
{
    return red | green << 8 | blue << 16;
}

constexpr QmLogColors kLight = {
    .window = Rgb(255, 255, 255),
    .kinds = {Rgb(0, 0, 0), Rgb(138, 84, 0), Rgb(192, 0, 0), Rgb(96, 96, 96)},
    .selection = Rgb(0, 84, 166),
    .selectionText = Rgb(255, 255, 255),
    .inactiveSelection = Rgb(208, 212, 218),
    .inactiveSelectionText = Rgb(0, 0, 0),
    .logs = {Rgb(88, 96, 105), Rgb(60, 80, 200), Rgb(24, 112, 36), Rgb(0, 108, 120), Rgb(128, 40, 128)},
    .caretMargin = Rgb(226, 236, 248),
    .mark = Rgb(64, 72, 84),
};

constexpr QmLogColors kDark = {
    .window = Rgb(30, 30, 30),
    .kinds = {Rgb(222, 222, 222), Rgb(230, 176, 72), Rgb(255, 128, 128), Rgb(160, 160, 160)},
    .selection = Rgb(38, 79, 120),
    .selectionText = Rgb(255, 255, 255),
    .inactiveSelection = Rgb(64, 68, 74),
    .inactiveSelectionText = Rgb(240, 240, 240),
    .logs = {Rgb(176, 184, 192), Rgb(138, 160, 255), Rgb(112, 200, 120), Rgb(84, 204, 214),
             Rgb(226, 140, 226)},
    .caretMargin = Rgb(48, 54, 66),
    .mark = Rgb(190, 196, 206),
};

double Luminance(std::uint32_t color)
{
    const auto channel = [color](unsigned shift) {
        const double value = (color >> shift & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(8) + 0.0722 * channel(16);
}

} // namespace

const QmLogColors& ThemeColors(QmLogTheme theme)
{
    return theme == QmLogTheme::Dark ? kDark : kLight;
}

QmLogTheme ThemeFor(std::uint32_t window)
{
    const bool isDark = Contrast(window, kDark.kinds[0]) > Contrast(window, kLight.kinds[0]);
    return isDark ? QmLogTheme::Dark : QmLogTheme::Light;
}

double Contrast(std::uint32_t a, std::uint32_t b)
{
    const double first = Luminance(a) + 0.05;
    const double second = Luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

} // namespace logview
