#include "logreport/model/MessageMatch.h"

#include "zemacore/WideText.h"

#include <algorithm>

namespace logreport
{

using textmatch::Expression;
using textmatch::TextSearch;

namespace
{

constexpr std::uint32_t kMatchSteps = 500'000; // of an expression on a text: some hundredths of a second

} // namespace

// With an ASCII text only ASCII letters are looked for in either case, as by filters.
MessageMatch::MessageMatch(const FindWish& wish)
    : m_wish(wish), m_isAscii(!wish.isExpression && ZEMA::IsAscii(wish.text.data(), wish.text.size()))
{
    const std::string text(AsUtf8(wish.text));
    if (!wish.isExpression && (wish.matchesCase || m_isAscii))
        m_search.emplace(text, wish.matchesCase ? TextSearch::Case::Kept : TextSearch::Case::Ignored);
    if (m_search && !wish.isWholeWord)
        return;
    m_expression.emplace(text, wish.isExpression ? Expression::Syntax::Expression : Expression::Syntax::Text,
                         wish.matchesCase ? Expression::Case::Kept : Expression::Case::Ignored,
                         Expression::Units::Characters,
                         wish.isWholeWord ? Expression::Where::Words : Expression::Where::Anywhere);
    m_expression->SetLimit(kMatchSteps);
}

MessageMatch::Outcome MessageMatch::operator()(const ILogMsgData& message)
{
    m_size = 0;
    Outcome outcome = Outcome::No;
    for (const std::int32_t field : m_wish.fields)
    {
        const std::string_view text = m_text.Of(message, field);
        m_size += text.size();
        const Outcome found = Look(text);
        if (found == Outcome::Yes)
            return found;
        if (found == Outcome::GivenUp)
            outcome = found;
    }
    return outcome;
}

// Texts in the code page have the characters of that.
std::string_view MessageMatch::AsUtf8(std::string_view text)
{
    return ZEMA::ToUtf8(text.data(), text.size(), m_utf8) ? m_utf8 : text;
}

MessageMatch::Outcome MessageMatch::Look(std::string_view text)
{
    if (!m_isAscii)
        text = AsUtf8(text);
    if (m_search && !m_search->IsIn(text))
        return Outcome::No;
    if (!m_expression)
        return Outcome::Yes;
    const Expression::Outcome found = m_expression->Find(AsUtf8(text));
    return found == Expression::Outcome::Found     ? Outcome::Yes
           : found == Expression::Outcome::GivenUp ? Outcome::GivenUp
                                                   : Outcome::No;
}

std::uint32_t MessageMatch::Skip(ILogMsgService& service, std::uint32_t id, std::uint32_t end) const
{
    if (!m_isAscii)
        return id;
    const std::uint32_t next = service.SkipWithout(m_wish.text.c_str(), m_wish.matchesCase ? 1 : 0, id, end);
    return std::clamp(next, id, end);
}

} // namespace logreport
