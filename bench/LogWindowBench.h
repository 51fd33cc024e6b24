// What the log text window costs, against the system's list view showing the same rows.
#pragma once

#include "Bench.h"
#include "BenchFiles.h"

namespace bench
{

// Logs are written into `folder`, the log folder of this process.
void MeasureLogWindow(const Options& options, const TemporaryFolder& folder, Report& report);

} // namespace bench
