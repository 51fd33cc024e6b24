#include "logreport/model/Watch.h"

#include "logreport/model/LevelMap.h"

namespace logreport
{

bool Watch::Add(std::uint32_t id, const ILogMsgData* message)
{
    if (!message || !IsError(message->GetLevel()))
        return false;
    const char* const body = message->GetBody();
    m_id = static_cast<std::int32_t>(id);
    m_image = LevelImage(message->GetLevel());
    m_text = WatchLine(body ? body : "");
    return true;
}

void Watch::Clear()
{
    *this = {};
}

std::string WatchLine(std::string_view body)
{
    const std::size_t end = body.find('\n');
    if (end == std::string_view::npos || end == 0)
        return std::string(body);
    return std::string(body.substr(0, end - 1)) + "(...)";
}

} // namespace logreport
