#include "report/model/FindItem.h"

namespace report
{

int FindItem(std::uint32_t flags, int start, int count, const std::function<bool(int item)>& matches)
{
    const bool wrap = (flags & RVFI_WRAP) != 0;
    const int step = (flags & RVFI_BACKWARD) != 0 ? -1 : 1;
    std::int64_t item = std::int64_t{start} + step;
    // A walk may begin outside the items and pass over `start` where it wraps, so it is counted.
    for (std::int64_t looked = 0; looked <= count; ++looked)
    {
        if ((item >= count || item < RVI_DEFAULT) && !wrap)
            return RVI_NONE;
        if (item >= count)
            item = RVI_DEFAULT;
        else if (item < RVI_DEFAULT)
            item = count - 1;
        if (matches(static_cast<int>(item)))
            return static_cast<int>(item);
        item += step;
        if (item == start)
            return RVI_NONE;
    }
    return RVI_NONE;
}

bool Matches(const _RVFINDINFO& info, const Cell& cell, std::int64_t itemData)
{
    if ((info.flags & RVFI_TEXT) != 0)
    {
        const std::string_view wanted = info.text ? info.text : "";
        const bool prefix = (info.flags & RVFI_PREFIX) != 0;
        if (!cell.hasText || (prefix ? !cell.text.starts_with(wanted) : cell.text != wanted))
            return false;
    }
    if ((info.flags & RVFI_IMAGE) != 0 && (cell.image < 0 || cell.image != info.image))
        return false;
    if ((info.flags & RVFI_CHECK) != 0 && (cell.check < 0 || cell.check != info.check))
        return false;
    return (info.flags & RVFI_ITEMDATA) == 0 || itemData == info.itemData;
}

} // namespace report
