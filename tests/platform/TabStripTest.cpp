#include "platform/qmflattabctrl/TabStrip.h"

#include <gtest/gtest.h>

namespace
{

using flattab::kNoTab;
using flattab::TabStrip;

TEST(TabStrip, SharesTheClientAreaBetweenTabsAndPage)
{
    const TabStrip top(100, 50, false, 13, {20, 30, 40});
    const TabStrip bottom(100, 50, true, 13, {20, 30, 40});
    const std::tuple<int, int, int, int> cases[] = {
        // x, y, the tab there with tabs at the top, and at the bottom
        {0, 0, 0, kNoTab},       {35, 18, 0, kNoTab},     {36, 18, 1, kNoTab},     {36, 19, kNoTab, kNoTab},
        {81, 31, kNoTab, 1},     {82, 31, kNoTab, 2},     {99, 49, kNoTab, 2},     {100, 49, kNoTab, kNoTab},
        {0, 30, kNoTab, kNoTab}, {-1, 0, kNoTab, kNoTab}, {0, 50, kNoTab, kNoTab},
    };
    for (const auto& [x, y, atTop, atBottom] : cases)
    {
        EXPECT_EQ(atTop, top.HitTest(x, y)) << x << " " << y;
        EXPECT_EQ(atBottom, bottom.HitTest(x, y)) << x << " " << y;
    }
    EXPECT_EQ(19, top.Page().top);
    EXPECT_EQ(31, bottom.Page().bottom);
    EXPECT_EQ(0, TabStrip(100, 5, true, 13, {}).Page().bottom) << "the page is never less than empty";
}

} // namespace
