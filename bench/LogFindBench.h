// What finding in all logs costs, against a plain scan of their texts, and what marking matches does.
#pragma once

#include "Bench.h"
#include "BenchFiles.h"

namespace bench
{

// Logs are written into `folder`, the log folder of this process.
void MeasureFind(const Options& options, const TemporaryFolder& folder, Report& report);

} // namespace bench
