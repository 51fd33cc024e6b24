// A row of an engine's table as a message.
#pragma once

#include "LogMsg.h"
#include "engine/RowReader.h"
#include "msgservice/session/RowMessage.h"

namespace engineview
{

msgservice::RowMessage::Row MessageRow(const engine::ShippedRow& row);

// Its tag is the row's number.
class EngineMessage : public CCacheMsgData
{
public:
    explicit EngineMessage(const engine::ShippedRow& row);

    // Stands for a row that is not here: on its way, or there is none with this number.
    EngineMessage(std::uint32_t number, const char* body);

    std::int32_t GetTag() const override { return static_cast<std::int32_t>(m_number); }
    std::uint32_t GetIndent(std::uint32_t bound) const override;
    ILogMsgData* Clone() const override { return new EngineMessage(*this); }

private:
    std::uint32_t m_number;
};

} // namespace engineview
