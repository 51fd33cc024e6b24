#include "BenchMemory.h"
#include "BenchFiles.h"

#include <psapi.h>

#include <vector>

namespace bench
{
namespace
{

PROCESS_MEMORY_COUNTERS ProcessMemory()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    Check(::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters)) != FALSE,
          "GetProcessMemoryInfo");
    return counters;
}

} // namespace

double MemoryGrowth(const std::function<void()>& action)
{
    // The system keeps the peak of the whole life of the process. Filled up to that, it grows with us.
    const PROCESS_MEMORY_COUNTERS start = ProcessMemory();
    const std::vector<char> filling(start.PeakWorkingSetSize - start.WorkingSetSize, 1);
    const SIZE_T before = ProcessMemory().PeakWorkingSetSize;
    action();
    return static_cast<double>(ProcessMemory().PeakWorkingSetSize - before) / 1024;
}

double PrivateBytes()
{
    return static_cast<double>(ProcessMemory().PagefileUsage);
}

double HeapBytes()
{
    std::vector<HANDLE> heaps(::GetProcessHeaps(0, nullptr));
    const DWORD count = static_cast<DWORD>(heaps.size());
    Check(::GetProcessHeaps(count, heaps.data()) == count, "GetProcessHeaps");
    double bytes = 0;
    for (const HANDLE heap : heaps)
    {
        PROCESS_HEAP_ENTRY entry = {};
        while (::HeapWalk(heap, &entry))
        {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
                bytes += entry.cbData + entry.cbOverhead;
        }
    }
    return bytes;
}

} // namespace bench
