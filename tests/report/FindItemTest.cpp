#include "report/model/FindItem.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

using report::FindItem;

// The loop without an end to it, but for a limit that is no multiple of a walk.
int Looped(std::uint32_t flags, std::int64_t start, int count, const std::function<bool(int)>& matches)
{
    const int step = (flags & RVFI_BACKWARD) != 0 ? -1 : 1;
    std::int64_t i = start + step;
    for (int steps = 0; steps < 50; ++steps)
    {
        if (i >= count || i < -1)
        {
            if ((flags & RVFI_WRAP) == 0)
                return -2;
            i = i >= count ? -1 : count - 1;
        }
        if (matches(static_cast<int>(i)))
            return static_cast<int>(i);
        i += step;
        if (i == start)
            return -2;
    }
    return -2;
}

TEST(FindItem, EndsAndAnswersAsTheEndlessLoop)
{
    for (const std::uint32_t flags : {0u, RVFI_WRAP, RVFI_BACKWARD, RVFI_WRAP | RVFI_BACKWARD})
    {
        for (const int start : {INT_MIN, -5, -3, -2, -1, 0, 1, 2, 3, 4, 5, 7, INT_MAX})
        {
            for (int count = 0; count <= 4; ++count)
            {
                for (unsigned matching = 0; matching < 32; ++matching)
                {
                    int looked = 0;
                    const auto matches = [&](int item) {
                        ++looked;
                        return (matching >> (item + 1) & 1) != 0;
                    };
                    const int expected = Looped(flags, start, count, matches);
                    looked = 0;
                    ASSERT_EQ(expected, FindItem(flags, start, count, matches))
                        << flags << " from " << start << " of " << count << ": " << matching;
                    ASSERT_LE(looked, count + 1);
                }
            }
        }
    }
}

TEST(FindItem, MatchesWhenEachCriterionHolds)
{
    report::Cell cell;
    cell.image = 3;
    cell.check = 0;
    cell.hasText = true;
    cell.text = "Text";
    constexpr std::uint32_t kAll = RVFI_TEXT | RVFI_IMAGE | RVFI_CHECK | RVFI_ITEMDATA;
    const struct
    {
        _RVFINDINFO info;
        bool full, bare; // on the cell, and on one that has nothing
    } cases[] = {
        {{0, "x", 9, 9, 9}, true, true},
        {{kAll, "Text", 3, 0, 7}, true, false},
        {{kAll, "Text", 3, 1, 7}, false, false},
        {{kAll, "Text", 4, 0, 7}, false, false},
        {{RVFI_TEXT, "text"}, false, false},
        {{RVFI_TEXT, "Tex"}, false, false},
        {{RVFI_TEXT | RVFI_PREFIX, "Tex"}, true, false},
        {{RVFI_TEXT | RVFI_PREFIX, "Texts"}, false, false},
        {{RVFI_TEXT | RVFI_PREFIX, nullptr}, true, false},
        {{RVFI_IMAGE, nullptr, -1}, false, false},
        {{RVFI_CHECK, nullptr, -1, -1}, false, false},
        {{RVFI_ITEMDATA, nullptr, -1, -1, 7}, true, true},
    };
    for (const auto& test : cases)
    {
        EXPECT_EQ(test.full, report::Matches(test.info, cell, 7)) << &test - cases;
        EXPECT_EQ(test.bare, report::Matches(test.info, {}, 7)) << &test - cases;
    }
}

} // namespace
