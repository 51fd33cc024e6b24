// The text of a selection.
#pragma once

#include "logview/DisplayedRows.h"
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

// The same as characters. What a line is, UTF-8 or in the code page, holds for a part of it too.
ZEMA::WideString SelectedCharacters(RowSource& source, const DisplayedRows& rows, const Selection& selection);

} // namespace logview
