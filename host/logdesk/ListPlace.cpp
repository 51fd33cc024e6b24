#include "logdesk/ListPlace.h"

#include <algorithm>
#include <cstdlib>

namespace logdesk
{

namespace
{

std::int32_t TagOf(std::optional<int> row, std::uint32_t offset, ILogMsgService& service)
{
    const ILogMsgData* const message =
        row ? service.GetMsg(offset + static_cast<std::uint32_t>(*row)) : nullptr;
    return message ? message->GetTag() : 0;
}

std::optional<int> RowOf(std::int32_t tag, std::uint32_t offset, ILogMsgService& service)
{
    const std::uint32_t id = tag != 0 ? service.FindTag(tag) : kNoLogMsgId;
    if (id == kNoLogMsgId || id < offset)
        return {};
    return static_cast<int>(id - offset);
}

} // namespace

ListTags TagsOf(const ListRows& rows, std::uint32_t offset, ILogMsgService& service)
{
    ListTags tags;
    tags.top = TagOf(rows.top, offset, service);
    tags.focus = TagOf(rows.focus, offset, service);
    tags.first = TagOf(rows.first, offset, service);
    tags.last = TagOf(rows.last, offset, service);
    tags.selected = rows.first && rows.last ? *rows.last - *rows.first + 1 : 0;
    return tags;
}

ListRows RowsOf(const ListTags& tags, std::uint32_t offset, ILogMsgService& service)
{
    ListRows rows;
    rows.top = RowOf(tags.top, offset, service);
    rows.focus = RowOf(tags.focus, offset, service);
    const std::optional<int> first = RowOf(tags.first, offset, service);
    const std::optional<int> last = RowOf(tags.last, offset, service);
    if (tags.selected > 0 && first && last && std::abs(*last - *first) + 1 == tags.selected)
    {
        rows.first = std::min(*first, *last); // a reversed order reverses them
        rows.last = std::max(*first, *last);
    }
    else if (tags.selected > 0)
        rows.first = rows.last = rows.focus;
    return rows;
}

} // namespace logdesk
