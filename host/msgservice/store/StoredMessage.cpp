#include "msgservice/store/StoredMessage.h"

#include <algorithm>

namespace msgservice
{

namespace
{

class MessageHandle : public StoredMessage
{
public:
    MessageHandle(std::shared_ptr<const MessageStore> store, std::uint32_t index)
        : StoredMessage(*store, index), m_owner(std::move(store))
    {
    }

private:
    std::shared_ptr<const MessageStore> m_owner;
};

void Put(ZEMA::String& to, std::string_view text)
{
    to.assign(text.data(), text.size());
}

} // namespace

const char* StoredMessage::GetTimestamp() const
{
    return DecodeTexts(Bytes()).timestamp.data();
}

std::uint32_t StoredMessage::GetIndent(std::uint32_t bound) const
{
    return std::min(Fields().indent, bound);
}

std::uint32_t StoredMessage::GetLevel() const
{
    return DecodeLevel(Bytes());
}

const char* StoredMessage::GetLevelText() const
{
    return Shared(kLevelText).data();
}

const char* StoredMessage::GetBody() const
{
    return DecodeTexts(Bytes()).body.data();
}

void StoredMessage::GetSource(ZEMA::String& text) const
{
    Put(text, Shared(kSource));
}

void StoredMessage::GetTopic(ZEMA::String& text) const
{
    Put(text, Shared(kTopic));
}

void StoredMessage::GetText1(ZEMA::String& text) const
{
    Put(text, Shared(kText1));
}

void StoredMessage::GetText2(ZEMA::String& text) const
{
    Put(text, Shared(kText2));
}

void StoredMessage::GetWho(ZEMA::String& text) const
{
    Put(text, Shared(kWho));
}

std::int32_t StoredMessage::GetErrorNumber() const
{
    return Fields().numbers[0];
}

std::int32_t StoredMessage::GetLine() const
{
    return Fields().numbers[1];
}

std::int32_t StoredMessage::GetSourceLine() const
{
    return Fields().numbers[2];
}

std::int32_t StoredMessage::GetSourceColumn() const
{
    return Fields().numbers[3];
}

const char* StoredMessage::GetModule() const
{
    return Shared(kModule).data();
}

const char* StoredMessage::GetRuntimeFile() const
{
    return Shared(kRuntimeFile).data();
}

const char* StoredMessage::GetRuntimeContext() const
{
    return Shared(kRuntimeContext).data();
}

ILogMsgData* StoredMessage::Clone() const
{
    return new MessageHandle(m_store->shared_from_this(), m_index);
}

} // namespace msgservice
