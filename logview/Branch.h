// Unfolded stretches of rows, and which row of which log lies at a displayed row.
#pragma once

#include "logview/DisplayedRows.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace logview
{

// A stretch of rows of one log, with the stretches that are unfolded within it. The root is the stretch that
// holds everything; it has no header.
//
// Rows of a branch are addressed as rows of its log. A child lies before row `position` of its parent: its
// header is row position - 1. Children are kept in order of position, no two at the same one. Each branch
// keeps the size of its children, and each child the rows that its elder siblings show, as far as anyone
// asked: finding a row takes a binary search a level, and adding after the last child costs nothing more.
class CQmLogBranch
{
public:
    // Levels that may be open within each other. A stretch goes on beyond the row that follows its header's
    // header, so that a session without damage nests the deeper the more rows it has. No level costs stack;
    // each costs a step whenever a row is looked for.
    static constexpr int kMaxDepth = 4096;

    CQmLogBranch() = default; // a root over log 0
    ~CQmLogBranch();
    CQmLogBranch(CQmLogBranch&&) = default;
    CQmLogBranch& operator=(CQmLogBranch&&) = default;
    CQmLogBranch(const CQmLogBranch&) = delete;
    CQmLogBranch& operator=(const CQmLogBranch&) = delete;

    // `count` rows from `row` on of log `file`, unfolded under a header with number `header`.
    CQmLogBranch(RowId first, std::uint32_t count, std::uint32_t header);

    // Own rows and all that is unfolded among them.
    std::uint64_t GetSize() const { return m_count + m_childrenSize; }

    std::uint32_t GetCount() const { return m_count; } // own rows
    void SetCount(std::uint32_t count) { m_count = count; }

    // The stretch's first row; where its header lies in its parent's log, and the header's number.
    RowId GetFirst() const { return {m_file, m_row}; }
    std::uint32_t GetHeaderRow() const { return m_position - 1; }
    std::uint32_t GetHeaderNumber() const { return m_header; }
    const std::vector<CQmLogBranch>& GetChildren() const { return m_children; }

    // What lies at `row`: a displayed row when asked of the root; and how many levels it lies deep, 0 for the
    // root's own rows.
    RowId Translate(std::uint64_t row) const;
    RowId Translate(std::uint64_t row, int& depth) const;

    // Unfolds `branch` under the header at `row`. False, and nothing changes, when something is unfolded
    // there, when kMaxDepth levels are open, and when the header's number is not greater than that of the
    // header above: whatever the logs hold, unfolding comes to an end.
    bool Insert(std::uint64_t row, CQmLogBranch branch);

    // Folds what is unfolded under the header at `row`; answers how many rows went.
    std::uint64_t Remove(std::uint64_t row);

private:
    struct Step; // from a branch to one of its children

    std::vector<Step> FindPath(std::uint64_t& row);
    std::uint64_t GetStart(std::size_t child) const;
    const CQmLogBranch* Enter(std::uint64_t& row, std::size_t& index) const;
    std::size_t ChildAtPosition(std::uint64_t position) const;
    void ChildrenChanged(std::size_t known, std::uint64_t size);

    std::uint32_t m_position = 0;
    std::uint32_t m_row = 0;
    std::uint32_t m_file = 0;
    std::uint32_t m_count = 0;
    std::uint32_t m_header = 0;
    mutable std::uint32_t m_known = 0;  // children, from the first on, whose m_before holds
    mutable std::uint64_t m_before = 0; // rows of elder siblings
    std::uint64_t m_childrenSize = 0;
    std::vector<CQmLogBranch> m_children;
};

} // namespace logview
