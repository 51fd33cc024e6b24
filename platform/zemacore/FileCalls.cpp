#include "zemacore/FileCalls.h"

#ifdef _WIN32
#include "WindowsFiles.h"
#endif

#include <atomic>
#include <cassert>
#include <chrono>

namespace ZEMA
{
namespace
{

IFileCalls* OwnTable()
{
#ifdef _WIN32
    return &WindowsFileCalls();
#else
    return nullptr;
#endif
}

// A static of this function, so that the table is there for the constructors of other files' statics.
std::atomic<IFileCalls*>& Installed()
{
    static std::atomic<IFileCalls*> installed = OwnTable();
    return installed;
}

} // namespace

IFileCalls::~IFileCalls() = default;

std::int64_t IFileCalls::UtcTime()
{
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10000000>>;
    constexpr std::int64_t k1970 = 116444736000000000;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<Ticks>(now).count() + k1970;
}

IFileCalls& FileCalls()
{
    IFileCalls* const installed = Installed();
    assert(installed);
    return *installed;
}

IFileCalls* SetFileCalls(IFileCalls* calls)
{
    return Installed().exchange(calls ? calls : OwnTable());
}

} // namespace ZEMA
