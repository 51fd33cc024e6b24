#include "logview/LookColors.h"

#include "vkgrafic/UiColors.h"

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

} // namespace

const QmLogColors& ThemeColors(QmLogTheme theme)
{
    return theme == QmLogTheme::Dark ? kDark : kLight;
}

QmLogTheme ThemeFor(std::uint32_t window)
{
    const bool isDark =
        VkGrafic::Contrast(window, kDark.kinds[0]) > VkGrafic::Contrast(window, kLight.kinds[0]);
    return isDark ? QmLogTheme::Dark : QmLogTheme::Light;
}

} // namespace logview
