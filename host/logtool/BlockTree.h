// Which block a row belongs to, over several logs at once.
#pragma once

#include "QmLogRow.h"
#include "sessionwalk/OpenBlocks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace logtool
{

using sessionwalk::OpenBlocks;

// Built by adding the rows of all logs in the order of their sequence numbers. Keeps one node for each
// block header and nothing for other rows. OpenBlocks says what a block is. Makes a tree of any rows, damaged
// ones as well.
class BlockTree
{
public:
    static constexpr std::uint32_t kNone = OpenBlocks::kNone;

    // A session can have millions, so they are kept small.
    struct Node
    {
        std::uint32_t log : 23;
        std::uint32_t isError : 1;
        std::uint32_t indent : 8;
        std::uint32_t begin = 0;  // row of the header in its log
        std::uint32_t end = 0;    // row of its log after the block
        std::uint32_t rows = 0;   // in the block and the blocks below it, the headers counted
        std::uint32_t errors = 0; // headers of errors, its own counted
        std::uint32_t parent = kNone;
        std::uint32_t firstChild = kNone;
        std::uint32_t nextSibling = kNone;
    };
    static_assert(sizeof(Node) == 32);

    explicit BlockTree(std::size_t logs) : m_open(logs), m_rows(logs) {}

    // `index` is the row's place in its log.
    void Add(std::size_t log, unsigned long index, const CQmLogRow& row)
    {
        if (m_open.IsEdge(log, row))
            AddEdge(log, index, row);
        m_rows[log] = static_cast<std::uint32_t>(index + 1);
        const std::uint32_t block = Innermost(log);
        if (block != kNone)
            ++m_nodes[block].rows;
    }
    // Ends the blocks that `row` ends, and counts nothing: for a row whose text has not come.
    void EndBlocks(std::size_t log, unsigned long index, const CQmLogRow& row);
    // Ends all blocks and sums up; after the last row.
    void Finish();

    // The block that a row of `log` belongs to, if it came now; kNone when it belongs to none. For the row
    // just added that is its own.
    std::uint32_t Innermost(std::size_t log) const
    {
        const OpenBlocks::Block* const block = m_open.Innermost(log);
        return block ? block->id : kNone;
    }
    bool IsOpen(std::uint32_t block) const { return m_open.IsOpen(block); }

    const Node& At(std::uint32_t node) const { return m_nodes[node]; }
    std::size_t BlockCount() const { return m_nodes.size(); }
    std::uint32_t FirstTop() const { return m_firstTop; }
    std::uint32_t ErrorCount() const { return m_errorCount; }

private:
    void AddEdge(std::size_t log, unsigned long index, const CQmLogRow& row);
    void AddNode(std::size_t log, unsigned long index, const CQmLogRow& row);
    void Append(std::uint32_t node);
    void End(const OpenBlocks::Block& block, std::size_t log, unsigned long index);

    std::deque<Node> m_nodes;                        // a block stands after its parent
    OpenBlocks m_open;                               // by nodes
    std::vector<std::uint32_t> m_rows;               // of each log
    std::array<std::uint32_t, 256> m_lastChild = {}; // of the open block of each depth
    std::uint32_t m_firstTop = kNone;
    std::uint32_t m_lastTop = kNone;
    std::uint32_t m_errorCount = 0;
};

} // namespace logtool
