// Rows as a text that other programs read as a table.
#pragma once

#include "report/model/Items.h"
#include "report/model/Selection.h"
#include "zemacore/WideText.h"

#include <vector>

namespace report
{

class Rows;

// The cells of these subitems with tabs between them, a line for each row. What would end a cell or a line
// within a text, and other control characters, are blanks.
ZEMA::WideString CopyRows(Items& items, Rows& rows, RowRange range, const std::vector<int>& subitems);

} // namespace report
