// Leads to a message of a list.
#pragma once

#include "ReportCtrlLog.h"

#include <algorithm>

namespace logdesk
{

constexpr int kRowsAround = 3;

// Selects a message and shows it with some rows around it, so that what led to it is in sight. Does nothing
// if the list does not have it.
inline void SelectMessage(CReportCtrlLog& list, std::uint32_t id)
{
    const std::int64_t row = std::int64_t{id} - list.GetMessageOffset();
    const int count = list.GetRowCount();
    if (row < 0 || row >= count)
        return;
    const int shown = static_cast<int>(row);
    list.EnsureVisible(std::max(shown - kRowsAround, 0), 0);
    list.EnsureVisible(shown < count - kRowsAround ? shown + kRowsAround : count - 1, 0);
    list.SelectMsg(id); // in sight even in a list of few rows
}

} // namespace logdesk
