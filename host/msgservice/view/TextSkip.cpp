#include "msgservice/view/TextSkip.h"

#include <algorithm>

namespace msgservice
{

using textmatch::TextSearch;

TextSkip::TextSkip(std::shared_ptr<const MessageStore> store, const std::string& text, bool matchCase)
    : m_store(std::move(store)), m_text(text), m_matchCase(matchCase),
      m_mayBeNumber(text.find_first_not_of("-0123456789") == std::string::npos),
      m_search(text, matchCase ? TextSearch::Case::Kept : TextSearch::Case::Ignored)
{
}

bool TextSkip::IsOf(const MessageStore& store, std::string_view text, bool matchCase) const
{
    return m_store.get() == &store && m_text == text && m_matchCase == matchCase;
}

// Timestamp and body lie side by side.
bool TextSkip::MayHold(std::uint32_t message)
{
    if (m_mayBeNumber)
        return true;
    const Record record = m_store->At(message);
    const char* const begin = record.timestamp.data();
    const char* const end = record.body.data() + record.body.size();
    return m_search.IsIn({begin, static_cast<std::size_t>(end - begin)}) || IsInShared(record);
}

bool TextSkip::IsInShared(const Record& record)
{
    const TextPool& texts = m_store->Texts();
    for (const std::uint32_t count = texts.Count(); m_shared.size() < count;)
    {
        const bool isIn = m_search.IsIn(texts.Text(static_cast<std::uint32_t>(m_shared.size())));
        m_isInAny = m_isInAny || isIn;
        m_shared.push_back(isIn);
    }
    return m_isInAny && std::any_of(record.texts.begin(), record.texts.end(),
                                    [this](std::uint32_t text) { return m_shared[text]; });
}

} // namespace msgservice
