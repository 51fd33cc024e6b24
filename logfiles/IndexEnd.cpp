#include "logfiles/IndexEnd.h"

#include <cstring>

namespace logfiles
{

bool ReadRecord(FileWindow& rows, std::uint64_t index, CQmLogRow& row)
{
    const std::uint64_t position = index * sizeof(row);
    const char* const bytes = position + sizeof(row) <= rows.Size() ? rows.At(position) : nullptr;
    if (!bytes)
        return false;
    std::memcpy(&row, bytes, sizeof(row));
    return true;
}

bool IsOneWrite(FileWindow& rows, std::uint64_t first, std::uint64_t end)
{
    CQmLogRow head;
    CQmLogRow row;
    for (std::uint64_t index = first; index < end; ++index)
    {
        if (!ReadRecord(rows, index, index == first ? head : row))
            return false;
        if (index > first && (row.time - head.time != index - first || row.indent != head.indent ||
                              row.kind != head.kind || row.blockBegin != 0))
            return false;
    }
    return true;
}

bool CountRowsWithoutText(const char* rowPath, std::uint64_t textSize, std::uint64_t& surplus)
{
    FileWindow rows(rowPath);
    const std::uint64_t count = rows.Size() / sizeof(CQmLogRow);
    std::uint64_t first = count;
    CQmLogRow row;
    while (first > 0 && ReadRecord(rows, first - 1, row) && row.offset > textSize)
        --first;
    surplus = IsOneWrite(rows, first, count) ? count - first : 0;
    const bool isRead = rows.GetState() == FileWindow::State::Open;
    rows.Close(); // before the caller cuts the file
    return isRead;
}

bool EndsOnFreshLine(const char* logPath, const char* rowPath, std::uint64_t textSize, const CQmLogRow& block)
{
    FileWindow text(logPath);
    const char* const last = textSize > 0 ? text.At(textSize - 1) : nullptr;
    if (!last || *last != '\n')
        return false;
    FileWindow rows(rowPath);
    const std::uint64_t count = rows.Size() / sizeof(CQmLogRow);
    CQmLogRow row;
    return count > 0 && ReadRecord(rows, count - 1, row) && row.offset == textSize &&
           row.indent == block.indent && row.kind == block.kind;
}

} // namespace logfiles
