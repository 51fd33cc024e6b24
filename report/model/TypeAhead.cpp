#include "report/model/TypeAhead.h"

#include "report/model/Selection.h"

#include <algorithm>

namespace report
{

namespace
{

// The first row after `start` that begins with a text; `start` itself is the last one looked at.
int FindAfter(int start, const ZEMA::WideString& typed, TypeAheadRows& rows)
{
    const int count = rows.RowCount();
    const int first = start >= 0 && start < count - 1 ? start + 1 : 0;
    int row = first;
    for (int looked = std::min(count, TypeAhead::kMaxRows); looked > 0; --looked)
    {
        if (rows.BeginsWith(row, typed))
            return row;
        row = row < count - 1 ? row + 1 : 0;
    }
    return kNoRow;
}

} // namespace

int TypeAhead::Type(ZEMA::WideChar character, std::uint32_t time, int focusRow, TypeAheadRows& rows)
{
    if (!IsTyping(time))
    {
        m_typed.clear();
        m_start = focusRow;
    }
    m_typed += character;
    m_time = time;
    const int found = FindAfter(m_start, m_typed, rows);
    const bool isOneAgain = m_typed.find_first_not_of(character) == ZEMA::WideString::npos;
    if (found != kNoRow || !isOneAgain)
        return found;
    return FindAfter(focusRow, ZEMA::WideString(1, character), rows);
}

} // namespace report
