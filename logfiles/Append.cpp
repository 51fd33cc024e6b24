#include "logfiles/Append.h"

#include "zemacore/FileCalls.h"

namespace logfiles
{

bool AppendOrNothing(HANDLE file, std::uint64_t position, const void* data, std::size_t size)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    DWORD written = 0;
    const bool accepted = files.Write(file, data, static_cast<DWORD>(size), written);
    if (accepted && written == size)
        return true;
    const DWORD error = accepted ? DWORD{ERROR_DISK_FULL} : files.LastError();
    if (written > 0 && files.Seek(file, static_cast<std::int64_t>(position), FILE_BEGIN, position))
        files.SetEnd(file);
    files.SetLastError(error);
    return false;
}

} // namespace logfiles
