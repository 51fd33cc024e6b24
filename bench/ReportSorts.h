// What sorting a report control costs, against the system's list view and from orders that are hard to sort.
#pragma once

#include "Bench.h"
#include "ReportLists.h"

namespace bench
{

// `view` and `list` have the same number of rows, `large` has more. What their cells hold changes.
void MeasureSorts(const Options& options, Frame& frame, const ListView& view, ReportList& list,
                  ReportList& large, Report& report);

} // namespace bench
