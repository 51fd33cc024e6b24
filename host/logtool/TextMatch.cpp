#include "logtool/TextMatch.h"

#include "logtool/Command.h"
#include "zemacore/WideText.h"

namespace logtool
{

using textmatch::Expression;

namespace
{

std::string_view WithoutLineEnd(std::string_view row)
{
    if (row.ends_with('\n'))
        row.remove_suffix(1);
    if (row.ends_with('\r'))
        row.remove_suffix(1);
    return row;
}

} // namespace

TextMatch::TextMatch(const std::string& given, Syntax syntax, Case letterCase)
{
    std::string utf8;
    const std::string& text = ZEMA::ToUtf8(given.data(), given.size(), utf8) ? utf8 : given;
    if (syntax == Syntax::Text && letterCase == Case::Kept)
    {
        m_text = text;
        return;
    }
    try
    {
        m_expression = std::make_unique<Expression>(text, syntax, letterCase);
    }
    catch (const textmatch::ExpressionError& error)
    {
        throw UsageError("--grep", "'" + text + "', at character " + std::to_string(error.Position() + 1) +
                                       ": " + error.what());
    }
}

// The same text has other bytes in the code page, unless it is ASCII.
std::string_view TextMatch::NeededText() const
{
    return ZEMA::IsAscii(m_text.data(), m_text.size()) ? std::string_view(m_text) : std::string_view();
}

bool TextMatch::operator()(std::string_view row)
{
    if (!m_expression && row.find(m_text) != std::string_view::npos)
        return true;
    if (!m_expression && !NeededText().empty())
        return false;
    if (ZEMA::ToUtf8(row.data(), row.size(), m_utf8))
        row = m_utf8;
    if (!m_expression)
        return row.find(m_text) != std::string_view::npos;
    const Expression::Outcome outcome = m_expression->Find(WithoutLineEnd(row));
    m_givenUp += outcome == Expression::Outcome::GivenUp ? 1 : 0;
    return outcome == Expression::Outcome::Found;
}

} // namespace logtool
