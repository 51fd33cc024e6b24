// What messages are compared by, made ready once a sort.
#pragma once

#include "msgservice/store/MessageStore.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace msgservice
{

// The keys of one field (ILogMsgDataKind) for some messages. Texts compare in the user's language without
// case, numbers and the level as numbers, timestamps by the time that they mean; those that mean none come
// last, by their texts.
class SortColumn
{
public:
    // `messages` are those to be compared; they must stay until the column goes.
    SortColumn(const MessageStore& store, std::int32_t field, std::span<const std::uint32_t> messages);

    // Takes the next of the messages (MessageStore::BytesAt), and Finish makes the keys ready when all have
    // been taken.
    void Add(const char* record);
    void Finish();

    // The beginning of the key of the `slot`-th of the messages.
    std::uint64_t Head(std::uint32_t slot) const { return m_heads[slot]; }

    bool HasRests() const { return m_hasRests; }

    // For keys with equal heads: below 0, 0 or above 0.
    int CompareRests(std::uint32_t left, std::uint32_t right) const
    {
        return m_hasRests ? Rests(left, right) : 0;
    }

private:
    void AddText(const Record& record);
    void AddShared(std::uint32_t text);
    int Rests(std::uint32_t left, std::uint32_t right) const;
    std::string_view KeptRest(std::uint32_t slot) const;
    std::string WholeKey(std::uint32_t slot) const;

    const MessageStore& m_store;
    std::int32_t m_field;
    std::span<const std::uint32_t> m_messages;
    std::optional<SharedText> m_shared; // the field is one
    std::vector<std::uint64_t> m_heads;

    // The shared texts that have come, with their keys, and by their numbers whether they have, then their
    // place.
    std::vector<std::pair<std::string, std::uint32_t>> m_sharedKeys;
    std::vector<std::uint64_t> m_ranks;

    // What follows of the keys of texts. Long ones are cut: what is not kept is made again when it is needed.
    bool m_hasRests = false;
    std::size_t m_keptRest = 0;            // bytes at most
    std::vector<std::uint64_t> m_restEnds; // in m_rests, by slot
    std::string m_rests;
};

} // namespace msgservice
