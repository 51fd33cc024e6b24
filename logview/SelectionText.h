// The text of a selection.
#pragma once

#include "logview/LogSession.h"

namespace logview
{

// More than any clipboard is asked to hold; a damaged index can tell of any amount of text.
constexpr std::size_t kMaxSelectionBytes = std::size_t{1} << 30;

// The displayed rows from `beginRow` to `endRow`, the first from `beginColumn` on, the last up to
// `endColumn`; each line with the line feed it has in its log. Rows that cannot be read are left out, and
// everything from the line on that would exceed kMaxSelectionBytes.
std::string SelectionText(RowSource& source, const LogSession& session, int beginRow, int beginColumn,
                          int endRow, int endColumn);

} // namespace logview
