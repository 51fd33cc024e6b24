#include "logreport/model/OpenedMessage.h"

#include "logreport/model/LevelMap.h"

namespace logreport
{

bool OpenedMessage::Show(ILogMsgService* service, std::uint32_t id)
{
    const ILogMsgData* const message = service && !service->IsBusy() ? service->GetMsg(id) : nullptr;
    if (!message)
        return false;
    m_message = *message;
    m_id = id;
    m_tag = message->GetTag();
    m_isInView = true;
    return true;
}

std::optional<std::uint32_t> OpenedMessage::Neighbour(ILogMsgService* service, Direction direction) const
{
    if (!service || service->IsBusy() || m_id == kNoLogMsgId)
        return std::nullopt;
    const bool isUp = direction == Direction::Next;
    std::uint32_t id = m_id;
    for (std::uint32_t unknown = 0; unknown <= kMostUnknown; ++unknown)
    {
        if (id == (isUp ? kNoLogMsgId - 1 : 0))
            break;
        id = isUp ? id + 1 : id - 1;
        if (service->GetMsg(id))
            return id;
    }
    return std::nullopt;
}

bool OpenedMessage::Refresh(ILogMsgService* service)
{
    if (service && service->IsBusy())
        return false; // its view is about to be another one
    const std::uint32_t id = service ? PresentId(*service) : kNoLogMsgId;
    const ILogMsgData* const message = id == kNoLogMsgId ? nullptr : service->GetMsg(id);
    if (!message)
        return SetInView(false);
    m_id = id;
    const bool isSame = IsShown(*message);
    if (!isSame)
        m_message = *message;
    return SetInView(true) || !isSame;
}

// Asking for the id last seen is enough as long as the view has not changed.
std::uint32_t OpenedMessage::PresentId(ILogMsgService& service) const
{
    const ILogMsgData* const message = service.GetMsg(m_id);
    const bool isThere = message && message->GetTag() == m_tag;
    return isThere || m_tag == 0 ? m_id : service.FindTag(m_tag);
}

bool OpenedMessage::SetInView(bool isInView)
{
    const bool hasChanged = m_isInView != isInView;
    m_isInView = isInView;
    return hasChanged;
}

bool OpenedMessage::IsShown(const ILogMsgData& message) const
{
    FieldText other;
    for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
        if (m_text.Of(m_message, field) != other.Of(message, field))
            return false;
    return message.GetLevel() == m_message.GetLevel();
}

std::string OpenedMessage::Text(ILogMsgDataKind field) const
{
    return TextForEdit(m_text.Of(m_message, field));
}

int OpenedMessage::Image() const
{
    return LevelImage(m_message.GetLevel());
}

std::string TextForEdit(std::string_view text)
{
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (isPair)
            ++i;
        if (text[i] == '\r' || text[i] == '\n')
            lines += "\r\n";
        else
            lines += text[i] ? text[i] : ' ';
    }
    return lines;
}

} // namespace logreport
