#include "vkgrafic/UiColors.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace VkGrafic
{

namespace
{

constexpr double kReadable = 4.5;
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

constexpr COLORREF Grey(BYTE level)
{
    return RGB(level, level, level);
}

constexpr COLORREF kDark[] = {
    Grey(30),           // Window
    Grey(222),          // WindowText
    RGB(38, 79, 120),   // Highlight
    kWhite,             // HighlightText
    RGB(64, 68, 74),    // InactiveHighlight
    Grey(240),          // InactiveHighlightText
    RGB(45, 45, 48),    // Face
    Grey(222),          // FaceText
    Grey(155),          // GreyText
    RGB(122, 184, 255), // Link
    Grey(70),           // Light
    Grey(92),           // Edge
    Grey(84),           // FaceHighlight
    Grey(170),          // DarkShadow
    RGB(43, 43, 46),    // Menu
    Grey(222),          // MenuText
    RGB(68, 58, 24),    // Notice
    RGB(246, 232, 190), // NoticeText
};
static_assert(std::size(kDark) == static_cast<std::size_t>(UiColor::Count));

// `share` of 256 parts `other`.
COLORREF Mix(COLORREF color, COLORREF other, int share)
{
    const auto channel = [=](unsigned shift) {
        const int from = static_cast<int>(color >> shift & 0xFF);
        const int to = static_cast<int>(other >> shift & 0xFF);
        return static_cast<BYTE>(from + (to - from) * share / 256);
    };
    return RGB(channel(0), channel(8), channel(16));
}

double Luminance(COLORREF color)
{
    const auto channel = [color](unsigned shift) {
        const double value = (color >> shift & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(8) + 0.0722 * channel(16);
}

} // namespace

COLORREF DarkColor(UiColor color)
{
    return kDark[static_cast<std::size_t>(color)];
}

double Contrast(COLORREF a, COLORREF b)
{
    const double first = Luminance(a) + 0.05;
    const double second = Luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

COLORREF ReadableColor(COLORREF text, COLORREF background)
{
    constexpr int kSteps = 16;
    const COLORREF end = Contrast(kWhite, background) > Contrast(kBlack, background) ? kWhite : kBlack;
    for (int step = 0; step < kSteps; ++step)
        if (const COLORREF mixed = Mix(text, end, step * 256 / kSteps);
            Contrast(mixed, background) >= kReadable)
            return mixed;
    return end;
}

} // namespace VkGrafic
