// What memory this process has.
#pragma once

#include <functional>

namespace bench
{

// How much more memory, in KiB, this process comes to need at once while `action` runs.
double MemoryGrowth(const std::function<void()>& action);

// What the system counts as this process's own, freed blocks included that it has not been given back.
double PrivateBytes();

// What the blocks in use take in all heaps of this process, whoever made them; not what is free in between.
// Walks them one by one.
double HeapBytes();

} // namespace bench
