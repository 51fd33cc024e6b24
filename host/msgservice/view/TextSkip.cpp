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

bool TextSkip::MayHold(std::uint32_t message)
{
    if (m_mayBeNumber)
        return true;
    LearnShared();
    const OwnTexts own = DecodeTexts(m_store->BytesAt(message));
    return m_search.IsIn(own.timestamp) || m_search.IsIn(own.body) || (m_isInAny && IsInShared(message));
}

// Messages that lie side by side are searched as one text, with what else is there: a hit may turn out to be
// none.
std::uint32_t TextSkip::Next(std::uint32_t message, std::uint32_t end)
{
    LearnShared();
    while (m_isInAny && message < end && !MayHold(message))
        ++message;
    while (!m_isInAny && !m_mayBeNumber && message < end)
    {
        const std::uint32_t pieceEnd = std::min(end, m_store->PieceEnd(message));
        const char* const bytes = m_store->BytesAt(message);
        const std::string_view last = DecodeTexts(m_store->BytesAt(pieceEnd - 1)).body;
        const std::size_t at =
            m_search.Find({bytes, static_cast<std::size_t>(last.data() + last.size() - bytes)});
        if (at == std::string_view::npos)
        {
            message = pieceEnd;
            continue;
        }
        while (message + 1 < pieceEnd && m_store->BytesAt(message + 1) <= bytes + at)
            ++message;
        if (MayHold(message))
            break;
        ++message;
    }
    return message;
}

void TextSkip::LearnShared()
{
    const TextPool& texts = m_store->Texts();
    for (const std::uint32_t count = texts.Count(); m_shared.size() < count;)
    {
        const bool isIn = m_search.IsIn(texts.Text(static_cast<std::uint32_t>(m_shared.size())));
        m_isInAny = m_isInAny || isIn;
        m_shared.push_back(isIn);
    }
}

bool TextSkip::IsInShared(std::uint32_t message) const
{
    const Record record = m_store->At(message);
    return std::any_of(record.texts.begin(), record.texts.end(),
                       [this](std::uint32_t text) { return m_shared[text]; });
}

} // namespace msgservice
