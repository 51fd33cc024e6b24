// All messages of a service, kept compactly in the order in which they arrived.
#pragma once

#include "msgservice/store/Record.h"
#include "msgservice/store/TextPool.h"

#include <memory>
#include <mutex>

namespace msgservice
{

// Texts that repeat (all but timestamp and body) are kept once, and fields that are empty or 0 take nothing:
// adding takes memory a megabyte at a time and none for the message itself. What has been added stays as and
// where it is.
//
// Any thread may add; any other may read meanwhile what it has seen counted.
class MessageStore : public MessageSink, public std::enable_shared_from_this<MessageStore>
{
public:
    static std::shared_ptr<MessageStore> Make() { return std::shared_ptr<MessageStore>(new MessageStore); }

    // Throws std::bad_alloc, and std::length_error when there are as many messages as ids; the message is
    // then not added.
    void Add(const MessageFields& message) override;

    std::uint32_t Count() const { return m_records.Count(); }

    // Message `index`, counted from 0, with its shared texts as numbers of Texts(): equal numbers are equal
    // texts. Its own texts are valid as long as the store.
    Record At(std::uint32_t index) const { return DecodeRecord(m_records[index]); }
    // The same as it lies, for DecodeTime and its like.
    const char* BytesAt(std::uint32_t index) const { return m_records[index]; }
    const TextPool& Texts() const { return m_texts; }

    // The message after the last one whose bytes follow those of message `index` without a gap.
    std::uint32_t PieceEnd(std::uint32_t index) const;

    // The level alone, 255 at most: the levels of all messages lie side by side.
    std::uint32_t LevelAt(std::uint32_t index) const { return m_levels[index]; }

private:
    MessageStore() = default;
    std::uint32_t SharedNumber(std::size_t field, std::string_view text);

    // What a field held last is most often what it holds next.
    struct LastText
    {
        std::string_view text;
        std::uint32_t number = 0;
    };

    std::mutex m_adding;
    Arena m_arena;
    TextPool m_texts;
    std::array<LastText, kSharedTexts> m_last;
    GrowingArray<std::uint8_t> m_levels;
    GrowingArray<std::uint32_t> m_breaks; // messages that do not follow the one before without a gap
    const char* m_end = nullptr;          // of the message that was added last
    GrowingArray<const char*> m_records;  // their count is that of the messages
};

// The message with its texts. These are valid as long as the store, each with a NUL after it.
MessageFields FieldsOf(const MessageStore& store, std::uint32_t index);

} // namespace msgservice
