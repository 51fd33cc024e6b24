// What it costs to edit a cell in place.
#pragma once

#include "Bench.h"
#include "ReportLists.h"

namespace bench
{

// An edit that is begun and ended, against the least that needs: a field that is made with the cell's text,
// gets the focus, loses it and is destroyed. Nothing is painted in either.
Measure MeasureEdit(ReportList& list, const Options& options);

} // namespace bench
