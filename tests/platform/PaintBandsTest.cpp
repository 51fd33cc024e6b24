#include "vkgrafic/PaintBands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>

// Every pixel once, no row in two bands where that can be, and no band larger than a row or what it may be.
TEST(PaintBands, DivideWhatIsPainted)
{
    constexpr int kBottom = 700;
    constexpr int kRowsTop = 20;
    for (const int line : {0, 1, 16, 5000, INT_MAX})
        for (const int width : {0, 1, 1000, 70000, INT_MAX})
            for (int top : {-50, 20, 25, 40})
                while (top < kBottom)
                {
                    const int end = VkGrafic::EndOfBand(top, kBottom, width, kRowsTop, line);
                    ASSERT_TRUE(top < end && end <= kBottom);
                    const std::int64_t height = end - top;
                    ASSERT_TRUE(height * width <= VkGrafic::kBandPixels || height <= std::max(1, line));
                    const bool isLast = end == kBottom;
                    ASSERT_TRUE(isLast || end == kRowsTop || height * width >= VkGrafic::kBandPixels / 3);
                    ASSERT_TRUE(isLast || end < kRowsTop || (end - kRowsTop) % std::max(1, line) == 0);
                    top = end;
                }
}
