// The headers that stay at the top of the merged view while the rows of their blocks scroll.
#pragma once

#include "logview/merge/MergedRows.h"

#include <vector>

namespace logview
{

class PinnedHeaders
{
public:
    static constexpr std::size_t kMost = 5; // the innermost ones

    explicit PinnedHeaders(const MergedRows& merged) : m_merged(merged) {}

    // The displayed headers of the blocks that a displayed row lies in, but for itself: their rows, the
    // outermost first.
    const std::vector<int>& Around(int row);

    // The headers that cover the first `rows` rows of a window: those of the first row below, or of the last
    // one covered, where that has ended a block and the one below wants fewer.
    std::vector<int> Covering(int topRow, int rows);

private:
    const MergedRows& m_merged;
    int m_row = -1; // that `m_headers` belong to, at that state of the merged rows
    std::uint32_t m_changes = 0;
    std::vector<int> m_headers;
};

} // namespace logview
