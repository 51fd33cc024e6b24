#include "logtool/BlockTree.h"

#include <algorithm>

namespace logtool
{

void BlockTree::Add(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    Log& own = m_logs[log];
    own.rows = index + 1;
    EndBlocks(log, index, row);
    if (row.blockBegin != 0 && row.indent > 0)
        OpenBlock(log, index, row);
    if (!own.open.empty())
        ++m_nodes[own.open.back()].rows;
    else if (!m_open.empty())
        ++m_nodes[m_open.back()].rows;
}

void BlockTree::EndBlocks(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    std::vector<std::uint32_t>& open = m_logs[log].open;
    while (!open.empty())
    {
        const std::uint32_t block = open.back();
        const std::uint8_t indent = m_nodes[block].indent;
        if (row.indent > indent || (row.indent == indent && row.blockBegin == 0))
            return;
        m_nodes[block].end = index;
        open.pop_back();
        m_open.erase(std::find(m_open.begin(), m_open.end(), block));
    }
}

void BlockTree::OpenBlock(std::size_t log, unsigned long index, const CQmLogRow& row)
{
    const auto parent = std::find_if(m_open.rbegin(), m_open.rend(),
                                     [&](std::uint32_t node) { return m_nodes[node].indent < row.indent; });
    Node node;
    node.log = log;
    node.begin = index;
    node.isError = row.kind == kErrorKind;
    node.errors = node.isError ? 1 : 0;
    node.indent = row.indent;
    m_nodes.push_back(node);
    const auto block = static_cast<std::uint32_t>(m_nodes.size() - 1);
    Append(block, parent == m_open.rend() ? kNone : *parent);
    m_logs[log].open.push_back(block);
    m_open.push_back(block);
    m_errorCount += node.errors;
}

void BlockTree::Append(std::uint32_t node, std::uint32_t parent)
{
    m_nodes[node].parent = parent;
    std::uint32_t& first = parent == kNone ? m_firstTop : m_nodes[parent].firstChild;
    std::uint32_t& last = parent == kNone ? m_lastTop : m_nodes[parent].lastChild;
    (last == kNone ? first : m_nodes[last].nextSibling) = node;
    last = node;
}

void BlockTree::Finish()
{
    for (Log& log : m_logs)
    {
        for (const std::uint32_t block : log.open)
            m_nodes[block].end = log.rows;
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
