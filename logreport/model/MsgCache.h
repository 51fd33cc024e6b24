// The copy of the message that viewers asked for last.
#pragma once

#include "LogMsg.h"

namespace logreport
{

// From where a viewer gets its messages at this moment. Nothing is owned.
struct MsgOrigin
{
    ILogMsgService* service = nullptr;
    ILogMsgList* list = nullptr; // null as long as the viewer has none
    bool direct = false;         // ask the service, keep nothing
    bool busy = false;           // the list is changing
};

class MsgCache
{
public:
    // The one that all viewers of the process share.
    static MsgCache& Shared();

    // The message, or null. The first answer is the list's own object and only the next one is the copy; the
    // copy is valid until another message is looked up.
    const ILogMsgData* Find(std::uint32_t id, const MsgOrigin& origin);

    void Flush() { m_id = kNoLogMsgId; }

private:
    CCacheMsgData m_copy;
    std::uint32_t m_id = kNoLogMsgId;
    const ILogMsgService* m_service = nullptr; // ids of another service are other messages
};

} // namespace logreport
