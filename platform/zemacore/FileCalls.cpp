#include "zemacore/FileCalls.h"

#ifdef _WIN32
#include "WindowsFiles.h"
#endif

#include <atomic>
#include <cassert>

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
