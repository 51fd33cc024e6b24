#include "engineview/EngineMessage.h"

#include "engine/LogTable.h"

#include <algorithm>

namespace engineview
{

msgservice::RowMessage::Row MessageRow(const engine::ShippedRow& row)
{
    msgservice::RowMessage::Row message;
    message.log = row.log;
    message.number = row.number;
    if (row.time != 0)
        message.time = row.time + engine::kStartOf1970;
    message.kind = static_cast<QmLogBlockKind>(row.kind);
    message.depth = row.depth;
    message.text = row.text;
    return message;
}

EngineMessage::EngineMessage(const engine::ShippedRow& row) : m_number(row.number)
{
    const auto text = [](std::string_view from) { return ZEMA::String(from.data(), from.size()); };
    msgservice::RowMessage maker;
    const msgservice::MessageFields& fields = maker.Make(MessageRow(row));
    m_timestamp = text(fields.timestamp);
    m_level = fields.level;
    m_levelText = text(fields.levelText);
    m_topic = text(fields.topic);
    m_body = text(fields.body);
    m_indent = fields.indent;
}

EngineMessage::EngineMessage(std::uint32_t number, const char* body) : m_number(number)
{
    m_level = msgservice::kInfoLevel;
    m_body = body;
}

std::uint32_t EngineMessage::GetIndent(std::uint32_t bound) const
{
    return std::min(m_indent, bound);
}

} // namespace engineview
