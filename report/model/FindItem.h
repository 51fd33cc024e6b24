// Finding items.
#pragma once

#include "ReportItem.h"
#include "report/model/CellCodec.h"

#include <functional>

namespace report
{

// Looks for an item from the neighbour of `start` on, one step up, or down with RVFI_BACKWARD, at a time;
// with RVFI_WRAP over the end and on from the other. The default item -1 lies between the ends and is looked
// at too, and may be the answer. -2 when `matches` is false for all, or `start` is met again; at most one
// walk over the `count` items, which may be none.
int FindItem(std::uint32_t flags, int start, int count, const std::function<bool(int item)>& matches);

// Whether a cell meets the criteria. A null text counts as the empty one.
bool Matches(const _RVFINDINFO& info, const Cell& cell, std::int64_t itemData);

} // namespace report
