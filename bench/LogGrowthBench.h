// What the log text window costs with many errors, and how long it lets messages wait while logs grow.
#pragma once

#include "Bench.h"
#include "BenchFiles.h"

namespace bench
{

// Writes its own sessions, and closes the readers of the logs.
void MeasureGrowth(const Options& options, const TemporaryFolder& folder, Report& report);

} // namespace bench
