// What the merged view of the log text window costs.
#pragma once

#include "Bench.h"
#include "BenchFiles.h"

namespace bench
{

// Logs are written into `folder`, the log folder of this process.
void MeasureMerged(const Options& options, const TemporaryFolder& folder, Report& report);

} // namespace bench
