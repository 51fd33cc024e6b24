// The one message that a dialog shows in full.
#pragma once

#include "LogMsg.h"
#include "logreport/model/FieldText.h"

#include <optional>
#include <string>

namespace logreport
{

// A copy of the message, which stays when the service or the message goes. Within the view it is known by
// its arrival number (ILogMsgData::GetTag), because sorting and filtering give it another id; where messages
// have none, by its id. Every operation takes the service as it is now: null if there is none. A busy service
// is asked nothing.
class OpenedMessage
{
public:
    // Unknown ids in a row after which the view counts as at its end.
    static constexpr std::uint32_t kMostUnknown = 65536;

    enum class Direction
    {
        Previous,
        Next
    };

    // Shows another message. False, and the one before is still shown, if the service does not have it.
    bool Show(ILogMsgService* service, std::uint32_t id);

    // The message with the next lower or higher id that the service has.
    std::optional<std::uint32_t> Neighbour(ILogMsgService* service, Direction direction) const;

    // Follows the message to its present id and takes over what has changed in it. True if anything shown is
    // different from before.
    bool Refresh(ILogMsgService* service);

    std::uint32_t Id() const { return m_id; } // as it was last seen in the view
    bool IsInView() const { return m_isInView; }

    // What the dialog shows of a field, and the position of the level's image.
    std::string Text(ILogMsgDataKind field) const;
    int Image() const;

private:
    bool IsShown(const ILogMsgData& message) const;
    std::uint32_t PresentId(ILogMsgService& service) const;
    bool SetInView(bool isInView);

    CCacheMsgData m_message;
    std::uint32_t m_id = kNoLogMsgId;
    std::int32_t m_tag = 0;
    bool m_isInView = false;
    mutable FieldText m_text;
};

// The text as an edit field shows it: every line ends with CR LF, also where it has one of the two alone, and
// a NUL, which would end the text, is a blank.
std::string TextForEdit(std::string_view text);

} // namespace logreport
