// Displayed rows one after the other, read together.
#pragma once

#include "logview/RowCache.h"

#include <string>
#include <string_view>

namespace logview
{

class SelectedRows
{
public:
    // From `first` to `last`, as far as they are displayed.
    SelectedRows(RowSource& source, const DisplayedRows& rows, int first, int last);

    // Goes to the next row; false after the last one.
    bool Next();

    // The row; its record, null if it cannot be read; and its line, whole, with its line feed.
    int Row() const { return m_row; }
    const CachedRow* Record() const { return m_record; }
    std::string_view Line() const { return m_line; }

    double Progress() const; // 0 to 1

private:
    RowCache m_cache;
    const DisplayedRows& m_rows;
    int m_first;
    int m_end;
    int m_next;
    int m_prepared; // rows before it were read
    int m_row = 0;
    const CachedRow* m_record = nullptr;
    std::string m_whole; // a line that the cache has only in part
    std::string_view m_line;
};

} // namespace logview
