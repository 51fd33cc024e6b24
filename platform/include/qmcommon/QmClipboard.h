// Puts something on the clipboard.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>
#include <windows.h>

// `size` bytes in a format such as CF_TEXT become all that the clipboard has; a text is given with its NUL.
// False if the clipboard or the memory cannot be had; what was there before may be gone then.
QMPLATFORM_API bool QmSetClipboard(HWND owner, UINT format, const void* bytes, std::size_t size);

// The same thing in several formats, the best one first.
struct QmClipboardItem
{
    UINT format;
    const void* bytes;
    std::size_t size;
};
QMPLATFORM_API bool QmSetClipboard(HWND owner, const QmClipboardItem* items, std::size_t count);
