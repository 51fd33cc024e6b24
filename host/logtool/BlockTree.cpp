#include "logtool/BlockTree.h"

namespace logtool
{

// A row that ends blocks or begins one; few do.
void BlockTree::AddEdge(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    const auto block = static_cast<std::uint32_t>(m_nodes.size());
    m_open.Add(log, row, block, [&](const OpenBlocks::Block& ended) { End(ended, log, index); });
    if (m_open.IsOpen(block))
        AddNode(log, index, row);
}

void BlockTree::EndBlocks(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    m_open.EndOwn(log, row, [&](const OpenBlocks::Block& ended) { End(ended, log, index); });
}

// Row `index` of `log` ends the block. In another log than its own the block reaches to the last row so far.
void BlockTree::End(const OpenBlocks::Block& block, std::size_t log, unsigned long index)
{
    m_nodes[block.id].end = static_cast<std::uint32_t>(block.log == log ? index : m_rows[block.log]);
}

void BlockTree::AddNode(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    Node node = {};
    node.log = static_cast<std::uint32_t>(log) & 0x7FFFFF; // as many logs as a folder may have
    node.begin = static_cast<std::uint32_t>(index);
    node.isError = row.kind == kErrorKind;
    node.errors = node.isError;
    node.indent = row.indent;
    node.parent = m_open.All().back().parent;
    m_nodes.push_back(node);
    Append(static_cast<std::uint32_t>(m_nodes.size() - 1));
    m_errorCount += node.errors;
}

// The last child of a block is known as long as the block is open, and it gets no further ones afterwards.
void BlockTree::Append(std::uint32_t node)
{
    const std::uint32_t parent = m_nodes[node].parent;
    std::uint32_t& last = parent == kNone ? m_lastTop : m_lastChild[m_nodes[parent].indent];
    if (last != kNone)
        m_nodes[last].nextSibling = node;
    else
        (parent == kNone ? m_firstTop : m_nodes[parent].firstChild) = node;
    last = node;
    m_lastChild[m_nodes[node].indent] = kNone;
}

void BlockTree::Finish()
{
    for (const OpenBlocks::Block& block : m_open.All())
        m_nodes[block.id].end = m_rows[block.log];
    m_open = OpenBlocks(m_rows.size());
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
