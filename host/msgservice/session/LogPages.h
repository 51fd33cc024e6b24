// One log, read in pages: many rows with one read of each of its files.
#pragma once

#include "QmLogReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace msgservice
{

// Shows the log as it was at the moment of construction, though it may grow. The memory is that of two
// pages, or of the longest line. Rows in sequence, in either direction, come by the page; of a row far away
// little more than itself is read. A file that cannot be read is not tried again, because each try would be
// one more entry in "QmLog.LOG".
class LogPages
{
public:
    explicit LogPages(const std::string& name);

    unsigned long RowCount() const { return m_rowCount; }
    unsigned long TextSize() const { return m_textSize; }
    // The row after the last one that has text: rows are written before their text.
    unsigned long TextEnd() const { return m_textEnd; }

    // The first row with at least this number, or the last one. By bisection: any row of a damaged index.
    unsigned long FindRow(std::uint32_t number);

    // Row `index`. False when it cannot be read.
    bool ReadRow(unsigned long index, CQmLogRow& row)
    {
        return ReadHeldRow(index, row) || (LoadRows(index) && ReadHeldRow(index, row));
    }

    // Row `index` with its text, which ends with its line feed; empty when there is none. The text is valid
    // until the next call. In a damaged index it may be several lines, or those of other rows.
    bool Read(unsigned long index, CQmLogRow& row, std::string_view& text)
    {
        return ReadHeld(index, row, text) || ReadApart(index, row, text);
    }

    // The same two for a row that is at hand; false, though it may well exist, when it is not.
    bool ReadHeldRow(unsigned long index, CQmLogRow& row) const
    {
        if (!HoldsRow(index))
            return false;
        row = Row(index);
        return true;
    }
    bool ReadHeld(unsigned long index, CQmLogRow& row, std::string_view& text) const
    {
        if (index < m_stretchBegin || index >= m_stretchEnd)
            return false;
        const CQmLogRow* const rows = m_rows.data() + (index - m_firstRow);
        row = rows[0];
        text = {m_text.data() + (rows[0].offset - m_textStart), rows[1].offset - rows[0].offset};
        return true;
    }

    // Looks for `wanted` from row `index` on, through one page at most. Answers the row to look at next: no
    // row before it has that text.
    unsigned long Skip(unsigned long index, std::string_view wanted);

    // Lines after that of the last row, for which the index has no rows. Known when the last row has been
    // read with its text.
    unsigned long LinesWithoutRow() const { return m_linesWithoutRow; }

private:
    bool HoldsRow(unsigned long index) const { return index - m_firstRow < m_rowsHeld; }
    const CQmLogRow& Row(unsigned long index) const { return m_rows.data()[index - m_firstRow]; }
    bool ReadApart(unsigned long index, CQmLogRow& row, std::string_view& text);
    bool LoadRows(unsigned long index);
    bool LoadText(unsigned long begin, unsigned long end);
    std::string_view Text(unsigned long begin, unsigned long end) const;
    std::string_view FirstLine(std::string_view text);
    void FindStretch(unsigned long index);

    CQmLogReader m_reader;
    unsigned long m_textSize = 0;
    unsigned long m_rowCount = 0;
    unsigned long m_textEnd = 0;
    unsigned long m_linesWithoutRow = 0;
    bool m_failed = false;

    std::vector<CQmLogRow> m_rows; // m_rowsHeld of them, from row m_firstRow on
    unsigned long m_firstRow = 0;
    unsigned long m_rowsHeld = 0;
    std::vector<char> m_text; // m_textHeld bytes from byte m_textStart on
    unsigned long m_textStart = 0;
    unsigned long m_textHeld = 0;

    // Rows from m_stretchBegin to before m_stretchEnd have texts one after the other, all of them held, and
    // the row after is held too: most rows lie in such a stretch and need no further look.
    unsigned long m_stretchBegin = 0;
    unsigned long m_stretchEnd = 0;
};

} // namespace msgservice
