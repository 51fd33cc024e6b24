#include "logview/find/FindColors.h"

#include "vkgrafic/UiColors.h"

namespace logview
{

using VkGrafic::Contrast;

namespace
{

constexpr std::uint32_t kLightMark = 0x4AD5FF; // yellow
constexpr std::uint32_t kDarkMark = 0x005A78;  // brown
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr double kReadable = 4.5;

} // namespace

std::uint32_t MatchBackground(std::uint32_t window)
{
    return Contrast(window, kBlack) > Contrast(window, kWhite) ? kLightMark : kDarkMark;
}

std::uint32_t MatchText(std::uint32_t wanted, std::uint32_t background)
{
    if (Contrast(wanted, background) >= kReadable)
        return wanted;
    return Contrast(kBlack, background) > Contrast(kWhite, background) ? kBlack : kWhite;
}

} // namespace logview
