#include "platform/vkgrafic/LineLayout.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

using vkgrafic::VisibleCells;

TEST(LineLayout, CoversTheClipAndLittleMore)
{
    for (int x = -40; x < 40; ++x)
    {
        for (int begin = -30; begin < 30; ++begin)
        {
            const vkgrafic::Span clip = {begin, begin + 9};
            const vkgrafic::Part part = VisibleCells(x, 6, 7, clip);
            for (int cell = 0; cell < 6; ++cell)
            {
                const int left = x + cell * 7;
                const bool drawn = cell >= part.first && cell < part.first + part.count;
                const bool near = left < clip.end + 14 && left + 7 > clip.begin - 14;
                const bool seen = left < clip.end && left + 7 > clip.begin;
                EXPECT_TRUE(drawn ? near : !seen) << x << " " << begin << " " << cell;
            }
        }
    }
    EXPECT_EQ(0, VisibleCells(0, 6, 7, {20, 20}).count);

    const vkgrafic::Part end = VisibleCells(INT_MIN, INT_MAX, 8, {0, 100});
    EXPECT_EQ(0x10000000 - 1, end.first);
    EXPECT_EQ(15, end.count);
}

TEST(LineLayout, PutsALineWhereItIsWanted)
{
    using vkgrafic::Align;
    for (const auto& [align, size, begin] : {std::tuple(Align::Begin, 20, 10),
                                             {Align::Middle, 20, 15},
                                             {Align::Middle, 40, 10},
                                             {Align::End, 20, 20},
                                             {Align::End, 40, 0}})
        EXPECT_EQ(begin, vkgrafic::AlignedBegin({10, 40}, size, align)) << size;
}

} // namespace
