// A message of a store as viewers see it.
#pragma once

#include "LogMsg.h"
#include "msgservice/store/MessageStore.h"

namespace msgservice
{

// Nothing but a place in a store. Its tag is the number of its arrival, from 1 on.
class StoredMessage : public ILogMsgData
{
public:
    // The store must outlive it.
    StoredMessage(const MessageStore& store, std::uint32_t index) : m_store(&store), m_index(index) {}

    std::int32_t GetTag() const override { return static_cast<std::int32_t>(m_index + 1); }
    const char* GetTimestamp() const override;
    std::uint32_t GetIndent(std::uint32_t bound) const override;
    std::uint32_t GetLevel() const override;
    const char* GetLevelText() const override;
    const char* GetBody() const override;
    std::int32_t IsValid() const override { return 1; }
    void GetSource(ZEMA::String& text) const override;
    void GetTopic(ZEMA::String& text) const override;
    void GetText1(ZEMA::String& text) const override;
    void GetText2(ZEMA::String& text) const override;
    void GetWho(ZEMA::String& text) const override;
    std::int32_t GetErrorNumber() const override;
    std::int32_t GetLine() const override;
    std::int32_t GetSourceLine() const override;
    std::int32_t GetSourceColumn() const override;
    const char* GetModule() const override;
    const char* GetRuntimeFile() const override;
    const char* GetRuntimeContext() const override;

    // Keeps the store alive; copies no text.
    ILogMsgData* Clone() const override;

private:
    const char* Bytes() const { return m_store->BytesAt(m_index); }
    Record Fields() const { return m_store->At(m_index); }
    std::string_view Shared(SharedText field) const
    {
        return m_store->Texts().Text(DecodeText(Bytes(), field));
    }

    const MessageStore* m_store;
    std::uint32_t m_index;
};

} // namespace msgservice
