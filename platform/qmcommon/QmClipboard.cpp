#include "qmcommon/QmClipboard.h"

#include <cstring>

static bool SetItem(const QmClipboardItem& item)
{
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, item.size);
    void* const room = block ? ::GlobalLock(block) : nullptr;
    bool isDone = false;
    if (room)
    {
        std::memcpy(room, item.bytes, item.size);
        ::GlobalUnlock(block);
        isDone = ::SetClipboardData(item.format, block) != nullptr; // the system owns the block from here on
    }
    if (!isDone)
        ::GlobalFree(block);
    return isDone;
}

bool QmSetClipboard(HWND owner, const QmClipboardItem* items, std::size_t count)
{
    if (!::OpenClipboard(owner))
        return false;
    ::EmptyClipboard();
    bool isDone = count > 0;
    for (std::size_t i = 0; i < count && isDone; ++i)
        isDone = SetItem(items[i]);
    ::CloseClipboard();
    return isDone;
}

bool QmSetClipboard(HWND owner, UINT format, const void* bytes, std::size_t size)
{
    const QmClipboardItem item = {format, bytes, size};
    return QmSetClipboard(owner, &item, 1);
}
