#include "logview/LogNames.h"

#include "logview/RowSource.h"

#include <iterator>

namespace logview
{

namespace
{

struct Log
{
    const char* name;
    std::uint32_t color;
};

constexpr Log kLogs[] = {
    {"Main", 0xC8C8C8}, {"Run", 0xC86464}, {"Source", 0x64C864}, {"SQL", 0xC8C864}, {"Service", 0},
};
static_assert(std::size(kLogs) == kFileCount);

bool IsLog(int file)
{
    return file >= 0 && file < static_cast<int>(kFileCount);
}

} // namespace

const char* GetLogName(int file)
{
    return IsLog(file) ? kLogs[file].name : nullptr;
}

std::uint32_t GetLogColor(int file)
{
    return IsLog(file) ? kLogs[file].color : 0;
}

} // namespace logview
