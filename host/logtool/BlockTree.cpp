#include "logtool/BlockTree.h"

#include <algorithm>

namespace logtool
{

// A row that ends blocks or begins one; few do.
void BlockTree::AddEdge(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    EndBlocks(log, index, row);
    if (row.blockBegin != 0 && row.indent > 0)
    {
        EndDeeper(row.indent);
        OpenBlock(log, index, row);
    }
}

bool BlockTree::IsOpen(std::uint32_t block) const
{
    return std::any_of(m_open.begin(), m_open.end(),
                       [block](const OpenNode& open) { return open.node == block; });
}

void BlockTree::EndBlocks(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    std::vector<std::uint32_t>& open = m_logs[log].open;
    while (!open.empty())
    {
        const std::uint32_t block = open.back();
        const std::uint32_t indent = m_nodes[block].indent;
        if (row.indent > indent || (row.indent == indent && row.blockBegin == 0))
            return;
        m_nodes[block].end = static_cast<std::uint32_t>(index);
        open.pop_back();
        m_open.erase(std::find_if(m_open.begin(), m_open.end(),
                                  [block](const OpenNode& other) { return other.node == block; }));
    }
}

void BlockTree::EndDeeper(std::uint32_t indent)
{
    std::erase_if(m_open, [&](const OpenNode& open) {
        Node& block = m_nodes[open.node];
        if (block.indent < indent)
            return false;
        Log& own = m_logs[block.log];
        block.end = static_cast<std::uint32_t>(own.rows);
        std::erase(own.open, open.node);
        return true;
    });
}

void BlockTree::OpenBlock(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    const auto parent = std::find_if(m_open.rbegin(), m_open.rend(), [&](const OpenNode& open) {
        return m_nodes[open.node].indent < row.indent;
    });
    Node node = {};
    node.log = static_cast<std::uint32_t>(log) & 0x7FFFFF; // as many logs as a folder may have
    node.begin = static_cast<std::uint32_t>(index);
    node.isError = row.kind == kErrorKind;
    node.errors = node.isError;
    node.indent = row.indent;
    m_nodes.push_back(node);
    const auto block = static_cast<std::uint32_t>(m_nodes.size() - 1);
    Append(block, parent == m_open.rend() ? nullptr : &*parent);
    m_logs[log].open.push_back(block);
    m_open.push_back({block, kNone});
    m_errorCount += node.errors;
}

// The last child of a block is known as long as the block is open, and it gets no further ones afterwards.
void BlockTree::Append(std::uint32_t node, OpenNode* parent)
{
    std::uint32_t& last = parent ? parent->lastChild : m_lastTop;
    if (parent)
        m_nodes[node].parent = parent->node;
    if (last != kNone)
        m_nodes[last].nextSibling = node;
    else
        (parent ? m_nodes[parent->node].firstChild : m_firstTop) = node;
    last = node;
}

void BlockTree::Finish()
{
    for (Log& log : m_logs)
    {
        for (const std::uint32_t block : log.open)
            m_nodes[block].end = static_cast<std::uint32_t>(log.rows);
        log.open.clear();
    }
    m_open.clear();
    for (std::size_t i = m_nodes.size(); i > 0; --i)
    {
        const Node& node = m_nodes[i - 1];
        if (node.parent == kNone)
            continue;
        m_nodes[node.parent].rows += node.rows;
        m_nodes[node.parent].errors += node.errors;
    }
}

} // namespace logtool
