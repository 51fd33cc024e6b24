// Where the user stands in the list of messages, kept over a change of the view.
#pragma once

#include "LogMsg.h"

#include <cstdint>
#include <optional>

namespace logdesk
{

// A place in the list by rows, whose ids count from `offset` on.
struct ListRows
{
    std::optional<int> top;
    std::optional<int> focus;
    std::optional<int> first; // of the selected rows, both or none
    std::optional<int> last;
    bool operator==(const ListRows&) const = default;
};

// The same by the messages' tags, which stay theirs; 0 for none.
struct ListTags
{
    std::int32_t top = 0;
    std::int32_t focus = 0;
    std::int32_t first = 0;
    std::int32_t last = 0;
    int selected = 0; // rows
    bool operator==(const ListTags&) const = default;
};

ListTags TagsOf(const ListRows& rows, std::uint32_t offset, ILogMsgService& service);

// Where the messages are in the present view, as far as they are in it. Of several selected messages either
// all are selected again, if they still stand together, or the one with the focus.
ListRows RowsOf(const ListTags& tags, std::uint32_t offset, ILogMsgService& service);

} // namespace logdesk
