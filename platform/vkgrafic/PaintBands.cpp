#include "vkgrafic/PaintBands.h"

#include <algorithm>
#include <cstdint>

int VkGrafic::EndOfBand(int top, int bottom, int width, int rowsTop, int rowHeight)
{
    const std::int64_t row = std::max(1, rowHeight);
    std::int64_t end = top + std::max<std::int64_t>(row, kBandPixels / std::max(1, width));
    const std::int64_t beyond = (end - rowsTop) % row;
    if (beyond > 0 && end - beyond > top)
        end -= beyond;
    return static_cast<int>(std::min<std::int64_t>(end, bottom));
}
