// What memory this process has.
#pragma once

#include <functional>

namespace bench
{

// How much more memory, in KiB, this process comes to need at once while `action` runs.
double MemoryGrowth(const std::function<void()>& action);

// What the system counts as this process's own, freed blocks included that it has not been given back.
double PrivateBytes();

// The blocks in use in all heaps of this process, whoever made them: without what a block costs beside its
// contents, and without what is free. Walks them one by one.
double HeapBytes();

} // namespace bench
