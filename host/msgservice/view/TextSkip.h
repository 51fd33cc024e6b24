// Which messages certainly do not hold a text.
#pragma once

#include "msgservice/store/MessageStore.h"
#include "textmatch/TextSearch.h"

#include <memory>
#include <vector>

namespace msgservice
{

// Looks at messages where they lie: at their own texts, and once at each of the texts that they share. For
// the texts of all fields together. One thread at a time; messages may arrive meanwhile.
class TextSkip
{
public:
    TextSkip(std::shared_ptr<const MessageStore> store, const std::string& text, bool matchCase);

    bool IsOf(const MessageStore& store, std::string_view text, bool matchCase) const;

    // Whether the message may hold it in one of its fields. Numbers are no texts: of a text that may be part
    // of one nothing is known.
    bool MayHold(std::uint32_t message);

    // The first message from `message` on that may hold it; `end` if none before that does.
    std::uint32_t Next(std::uint32_t message, std::uint32_t end);

private:
    bool IsInShared(std::uint32_t message) const;
    void LearnShared();

    std::shared_ptr<const MessageStore> m_store;
    std::string m_text;
    bool m_matchCase;
    bool m_mayBeNumber;
    textmatch::TextSearch m_search;
    std::vector<bool> m_shared; // by number, whether it holds the text
    bool m_isInAny = false;     // of those
};

} // namespace msgservice
