// What a tree in a report control costs, against the system's tree view.
#pragma once

#include "Bench.h"
#include "ReportLists.h"

namespace bench
{

void MeasureTree(const Options& options, Frame& frame, Report& report);

} // namespace bench
