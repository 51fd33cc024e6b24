// Which block a row belongs to, over several logs at once.
#pragma once

#include "QmLogRow.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace logtool
{

// Built by adding the rows of all logs in the order of their sequence numbers. Keeps one node for each
// block header and nothing for other rows. Makes a tree of any rows, damaged ones as well.
//
// A block begins with a header: a row with a block mark and a depth above 0. It ends when its own log has a
// row of lower depth, or any log a header of its depth or a lower one, because depth counts over all logs.
// Its parent is the block opened last, in whichever log, that is still open and of lower depth.
class BlockTree
{
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

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

    explicit BlockTree(std::size_t logs) : m_logs(logs) {}

    // `index` is the row's place in its log.
    void Add(std::size_t log, unsigned long index, const CQmLogRow& row)
    {
        Log& own = m_logs[log];
        own.rows = index + 1;
        if (row.blockBegin != 0 || (!own.open.empty() && row.indent < m_nodes[own.open.back()].indent))
            AddEdge(log, index, row);
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
        if (!m_logs[log].open.empty())
            return m_logs[log].open.back();
        return m_open.empty() ? kNone : m_open.back().node;
    }
    bool IsOpen(std::uint32_t block) const;

    const Node& At(std::uint32_t node) const { return m_nodes[node]; }
    std::size_t BlockCount() const { return m_nodes.size(); }
    std::uint32_t FirstTop() const { return m_firstTop; }
    std::uint32_t ErrorCount() const { return m_errorCount; }

private:
    // The open blocks of one log, the innermost last; their depths ascend.
    struct Log
    {
        std::vector<std::uint32_t> open;
        unsigned long rows = 0;
    };

    struct OpenNode
    {
        std::uint32_t node;
        std::uint32_t lastChild;
    };

    void EndDeeper(std::uint32_t indent); // blocks of this depth or more, of all logs
    void AddEdge(std::size_t log, unsigned long index, const CQmLogRow& row);
    void OpenBlock(std::size_t log, unsigned long index, const CQmLogRow& row);
    void Append(std::uint32_t node, OpenNode* parent);

    std::deque<Node> m_nodes; // a block stands after its parent
    std::vector<Log> m_logs;
    std::vector<OpenNode> m_open; // the open blocks of all logs in the order they were opened
    std::uint32_t m_firstTop = kNone;
    std::uint32_t m_lastTop = kNone;
    std::uint32_t m_errorCount = 0;
};

} // namespace logtool
