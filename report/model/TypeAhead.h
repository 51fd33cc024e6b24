// Typing the beginning of a text to get to its row.
#pragma once

#include "zemacore/WideText.h"

#include <cstdint>

namespace report
{

// What is searched: rows in their order.
class TypeAheadRows
{
public:
    virtual ~TypeAheadRows() = default;
    virtual int RowCount() = 0;
    virtual bool BeginsWith(int row, const ZEMA::WideString& typed) = 0; // capitals or not
};

// Characters that follow each other quickly are one text. Rows are looked at from the one below the row that
// had the focus at its beginning, over the end, back to that one. One character that is typed again and again
// goes from one row that begins with it to the next. Times are milliseconds of a clock that may wrap.
class TypeAhead
{
public:
    static constexpr std::uint32_t kPause = 1000; // after it, a new text begins
    static constexpr int kMaxRows = 100000; // looked at for one character: a key must not hold up a window

    // Whether a character at this time would go on with a text.
    bool IsTyping(std::uint32_t time) const { return !m_typed.empty() && time - m_time <= kPause; }

    // One unit of a text in UTF-16; the row to go to, or kNoRow.
    int Type(ZEMA::WideChar character, std::uint32_t time, int focusRow, TypeAheadRows& rows);

private:
    ZEMA::WideString m_typed;
    std::uint32_t m_time = 0; // of the last character
    int m_start = 0;          // the focused row when the text began
};

} // namespace report
