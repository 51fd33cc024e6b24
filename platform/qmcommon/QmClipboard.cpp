#include "qmcommon/QmClipboard.h"

#include <cstring>
#include <utility>
#include <vector>

QmClipboardBlock::QmClipboardBlock(UINT format, std::size_t size)
    : m_format(format), m_block(::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE | GMEM_ZEROINIT, size)),
      m_bytes(m_block ? ::GlobalLock(m_block) : nullptr)
{
}

QmClipboardBlock::QmClipboardBlock(QmClipboardBlock&& other) noexcept
    : m_format(other.m_format), m_block(std::exchange(other.m_block, nullptr)),
      m_bytes(std::exchange(other.m_bytes, nullptr))
{
}

QmClipboardBlock::~QmClipboardBlock()
{
    if (std::exchange(m_bytes, nullptr))
        ::GlobalUnlock(m_block);
    if (m_block)
        ::GlobalFree(m_block);
}

bool QmClipboardBlock::Give()
{
    if (!std::exchange(m_bytes, nullptr))
        return false;
    ::GlobalUnlock(m_block);
    if (!::SetClipboardData(m_format, m_block))
        return false;
    m_block = nullptr;
    return true;
}

bool QmSetClipboard(HWND owner, QmClipboardBlock* blocks, std::size_t count)
{
    bool isDone = count > 0;
    for (std::size_t i = 0; i < count; ++i)
        isDone = isDone && blocks[i].GetBytes();
    if (!isDone || !::OpenClipboard(owner))
        return false;
    ::EmptyClipboard();
    for (std::size_t i = 0; i < count && isDone; ++i)
        isDone = blocks[i].Give();
    ::CloseClipboard();
    return isDone;
}

bool QmSetClipboard(HWND owner, const QmClipboardItem* items, std::size_t count)
{
    std::vector<QmClipboardBlock> blocks;
    for (std::size_t i = 0; i < count; ++i)
    {
        void* const bytes = blocks.emplace_back(items[i].format, items[i].size).GetBytes();
        if (bytes)
            std::memcpy(bytes, items[i].bytes, items[i].size);
    }
    return QmSetClipboard(owner, blocks.data(), blocks.size());
}

bool QmSetClipboard(HWND owner, UINT format, const void* bytes, std::size_t size)
{
    const QmClipboardItem item = {format, bytes, size};
    return QmSetClipboard(owner, &item, 1);
}
