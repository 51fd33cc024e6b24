#include "logreport/model/CopiedMessages.h"

#include <algorithm>

namespace logreport
{

CopiedMessages::CopiedMessages(ILogMsgService& service, const std::vector<std::int32_t>& fields,
                               std::uint32_t first, std::uint32_t last)
    : m_first(first), m_last(last), m_next(first),
      m_textStream(service, m_textOutput, fields, CQmLogStreamText::Encoding::Utf8),
      m_tableStream(service, m_tableOutput, fields, CQmLogStreamCSV::Mark::None)
{
}

bool CopiedMessages::Step(std::uint32_t count)
{
    const std::size_t text = m_text.size();
    const std::size_t table = m_table.size();
    for (; count > 0 && m_next <= m_last; --count, ++m_next)
    {
        m_textStream.WriteMsg(static_cast<std::uint32_t>(m_next));
        m_tableStream.WriteMsg(static_cast<std::uint32_t>(m_next));
    }
    std::replace(m_text.begin() + static_cast<std::ptrdiff_t>(text), m_text.end(), '\0', ' ');
    std::replace(m_table.begin() + static_cast<std::ptrdiff_t>(table), m_table.end(), '\0', ' ');
    return m_next <= m_last;
}

double CopiedMessages::Progress() const
{
    return static_cast<double>(m_next - m_first) / (static_cast<double>(m_last - m_first) + 1);
}

} // namespace logreport
