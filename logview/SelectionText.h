// The text of a selection.
#pragma once

#include "logview/SelectedRows.h"
#include "logview/TextPieces.h"
#include "vkgrafic/TextCells.h"
#include "zemacore/WideText.h"

namespace logview
{

// More than any clipboard is asked to hold; a damaged index can tell of any amount of text.
constexpr std::size_t kMaxSelectionBytes = std::size_t{1} << 30;

// The displayed rows from `beginRow` to `endRow`, the first from `beginColumn` on, the last up to
// `endColumn`.
struct Selection
{
    int beginRow = 0;
    int beginColumn = 0;
    int endRow = 0;
    int endColumn = 0;
};

// Each line with the line feed it has in its log. Rows that cannot be read are left out, and everything from
// the line on that would exceed kMaxSelectionBytes.
std::string SelectedBytes(RowSource& source, const DisplayedRows& rows, const Selection& selection);

// The same made row by row, as bytes and as characters. What a line is, UTF-8 or in the code page, holds for
// a part of it too.
class SelectionCopy
{
public:
    SelectionCopy(RowSource& source, const DisplayedRows& rows, const Selection& selection,
                  std::size_t maxBytes = kMaxSelectionBytes);

    // Adds a row. False when there is no other one, or the next one would exceed `maxBytes`.
    bool Step();

    bool IsTooLong() const { return m_isTooLong; }
    double Progress() const { return m_rows.Progress(); } // 0 to 1
    TextPieces<char>& Bytes() { return m_bytes; }
    TextPieces<ZEMA::WideChar>& Characters() { return m_characters; }

private:
    SelectedRows m_rows;
    Selection m_selection;
    std::size_t m_maxBytes;
    bool m_isTooLong = false;
    TextPieces<char> m_bytes;
    TextPieces<ZEMA::WideChar> m_characters;
    ZEMA::WideString m_wide;
    VkGrafic::TextCells m_cells;
};

} // namespace logview
