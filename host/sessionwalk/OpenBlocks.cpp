#include "sessionwalk/OpenBlocks.h"

#include <algorithm>

namespace sessionwalk
{

void OpenBlocks::SetLogCount(std::size_t logs)
{
    m_innermost.resize(std::max(logs, m_innermost.size()));
}

bool OpenBlocks::IsOpen(std::uint32_t id) const
{
    return std::any_of(m_open.begin(), m_open.end(), [id](const Block& block) { return block.id == id; });
}

void OpenBlocks::Open(const Block& block)
{
    m_open.push_back(block);
    m_innermost[block.log] = m_open.size();
}

void OpenBlocks::FindInnermost()
{
    std::fill(m_innermost.begin(), m_innermost.end(), 0);
    for (std::size_t i = 0; i < m_open.size(); ++i)
        m_innermost[m_open[i].log] = i + 1;
}

} // namespace sessionwalk
