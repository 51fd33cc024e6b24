#include "qmcommon/QmClipboard.h"

#include <cstring>

bool QmSetClipboard(HWND owner, UINT format, const void* bytes, std::size_t size)
{
    if (!::OpenClipboard(owner))
        return false;
    ::EmptyClipboard();
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, size);
    void* const room = block ? ::GlobalLock(block) : nullptr;
    bool isDone = false;
    if (room)
    {
        std::memcpy(room, bytes, size);
        ::GlobalUnlock(block);
        isDone = ::SetClipboardData(format, block) != nullptr; // the system owns the block from here on
    }
    if (!isDone)
        ::GlobalFree(block);
    ::CloseClipboard();
    return isDone;
}
