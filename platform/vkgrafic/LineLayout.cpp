#include "vkgrafic/LineLayout.h"

#include <algorithm>
#include <cstdint>

namespace vkgrafic
{

Part VisibleCells(int x, int length, int cellWidth, Span clip)
{
    if (length <= 0 || cellWidth <= 0 || clip.begin >= clip.end)
        return {0, 0};
    // A long row reaches beyond the range of int. The divisions below round down where it matters: left of
    // the row the bound is cut off at 0.
    const std::int64_t left = static_cast<std::int64_t>(clip.begin) - x;
    const std::int64_t right = static_cast<std::int64_t>(clip.end) - x;
    if (right <= -cellWidth)
        return {0, 0};
    const std::int64_t first = std::max<std::int64_t>(left / cellWidth - 1, 0);
    const std::int64_t end = std::min<std::int64_t>((right + cellWidth - 1) / cellWidth + 1, length);
    if (first >= end)
        return {0, 0};
    return {static_cast<int>(first), static_cast<int>(end - first)};
}

int AlignedBegin(Span room, int size, Align align)
{
    const int rest = room.end - room.begin - size;
    switch (align)
    {
    case Align::Begin:
        return room.begin;
    case Align::Middle:
        return room.begin + std::max(rest, 0) / 2;
    case Align::End:
        return room.begin + rest;
    }
    return room.begin;
}

} // namespace vkgrafic
