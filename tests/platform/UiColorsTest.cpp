// The dark colours of windows: every text can be read on what it stands on.
#include "vkgrafic/UiColors.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

using namespace VkGrafic;

namespace
{

TEST(UiColors, EveryDarkTextCanBeRead)
{
    using enum UiColor;
    const std::pair<UiColor, std::vector<UiColor>> texts[] = {
        {WindowText, {Window, Face, Menu}},
        {HighlightText, {Highlight}},
        {InactiveHighlightText, {InactiveHighlight}},
        {FaceText, {Face, Light, FaceHighlight, Window}},
        {GreyText, {Face, Menu}},
        {Link, {Face, Window}},
        {MenuText, {Menu}},
        {NoticeText, {Notice}},
    };
    for (const auto& [text, grounds] : texts)
        for (const UiColor ground : grounds)
            EXPECT_GE(Contrast(DarkColor(text), DarkColor(ground)), 4.5)
                << static_cast<int>(text) << " on " << static_cast<int>(ground);
    for (const UiColor line : {Edge, DarkShadow}) // lines are to be seen
        for (const UiColor ground : {Window, Face, Menu})
            EXPECT_GE(Contrast(DarkColor(line), DarkColor(ground)), 1.8) << static_cast<int>(line);
}

TEST(UiColors, AnyColourBecomesReadableOnAnyGround)
{
    Random random(18);
    for (int i = 0; i < 20000; ++i)
    {
        const COLORREF text = static_cast<COLORREF>(random(0x1000000));
        const COLORREF ground = static_cast<COLORREF>(random(0x1000000));
        const COLORREF readable = ReadableColor(text, ground);
        ASSERT_GE(Contrast(readable, ground), 4.5) << std::hex << text << ' ' << ground;
        if (Contrast(text, ground) >= 4.5)
            ASSERT_EQ(text, readable) << std::hex << ground;
    }
    const COLORREF red = ReadableColor(RGB(255, 0, 0), DarkColor(UiColor::Window));
    EXPECT_GT(red & 0xFF, (red >> 8 & 0xFF) + 100) << "it stays red";
}

} // namespace
