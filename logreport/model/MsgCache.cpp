#include "logreport/model/MsgCache.h"

namespace logreport
{

MsgCache& MsgCache::Shared()
{
    static MsgCache cache;
    return cache;
}

const ILogMsgData* MsgCache::Find(std::uint32_t id, const MsgOrigin& origin)
{
    if (id == m_id && origin.service == m_service)
        return &m_copy;
    if (origin.direct)
        return origin.service ? origin.service->GetMsg(id) : nullptr;
    if (origin.busy || !origin.list)
        return nullptr;

    const ILogMsgData* const message = origin.list->Get(id);
    if (message)
    {
        Flush(); // should the copy fail
        m_copy = *message;
        m_id = id;
        m_service = origin.service;
    }
    return message;
}

} // namespace logreport
