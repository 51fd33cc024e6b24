// Puts something on the clipboard.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>
#include <windows.h>

// `size` bytes in a format such as CF_TEXT become all that the clipboard has; a text is given with its NUL.
// False if the clipboard or the memory cannot be had; what was there before may be gone then.
QMPLATFORM_API bool QmSetClipboard(HWND owner, UINT format, const void* bytes, std::size_t size);

// Memory that the clipboard takes over as it is, to be filled before.
class QMPLATFORM_API QmClipboardBlock
{
public:
    QmClipboardBlock(UINT format, std::size_t size);
    ~QmClipboardBlock();
    QmClipboardBlock(QmClipboardBlock&& other) noexcept;
    QmClipboardBlock(const QmClipboardBlock&) = delete;
    QmClipboardBlock& operator=(const QmClipboardBlock&) = delete;

    // `size` bytes, at first 0; null if the memory cannot be had, or is the clipboard's.
    void* GetBytes() { return m_bytes; }

    // Puts it on the clipboard, which is open. The system owns the memory from here on.
    bool Give();

private:
    UINT m_format;
    HGLOBAL m_block;
    void* m_bytes;
};

// The same thing in several formats, the best one first.
struct QmClipboardItem
{
    UINT format;
    const void* bytes;
    std::size_t size;
};
QMPLATFORM_API bool QmSetClipboard(HWND owner, const QmClipboardItem* items, std::size_t count);
QMPLATFORM_API bool QmSetClipboard(HWND owner, QmClipboardBlock* blocks, std::size_t count);
