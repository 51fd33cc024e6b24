// What messages are compared by, made ready once a sort.
#pragma once

#include "msgservice/store/MessageStore.h"
#include "msgservice/view/Work.h"

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
    // A share of the work's progress for making the keys.
    SortColumn(const MessageStore& store, std::int32_t field, std::span<const std::uint32_t> messages,
               Work& work, double from, double to);

    // The beginning of the key of the `slot`-th of the messages.
    std::uint64_t Head(std::uint32_t slot) const { return m_heads[slot]; }

    // For keys with equal heads: below 0, 0 or above 0.
    int CompareRests(std::uint32_t left, std::uint32_t right) const
    {
        return m_hasRests ? Rests(left, right) : 0;
    }

private:
    void MakeNumbers(Work& work, double from, double to);
    void RankSharedTexts(SharedText field, Work& work, double from, double to);
    void MakeTexts(Work& work, double from, double to);
    int Rests(std::uint32_t left, std::uint32_t right) const;
    std::string_view KeptRest(std::uint32_t slot) const;
    std::string WholeKey(std::uint32_t slot) const;

    const MessageStore& m_store;
    std::int32_t m_field;
    std::span<const std::uint32_t> m_messages;
    std::vector<std::uint64_t> m_heads;

    // What follows of the keys of texts. Long ones are cut: what is not kept is made again when it is needed.
    bool m_hasRests = false;
    std::size_t m_keptRest = 0;            // bytes at most
    std::vector<std::uint64_t> m_restEnds; // in m_rests, by slot
    std::string m_rests;
};

} // namespace msgservice
