#include "logtool/TextMatch.h"

#include "logtool/Command.h"

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

TextMatch::TextMatch(const std::string& text, Syntax syntax, Case letterCase)
{
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

bool TextMatch::operator()(std::string_view row)
{
    if (!m_expression)
        return row.find(m_text) != std::string_view::npos;
    const Expression::Outcome outcome = m_expression->Find(WithoutLineEnd(row));
    m_givenUp += outcome == Expression::Outcome::GivenUp ? 1 : 0;
    return outcome == Expression::Outcome::Found;
}

} // namespace logtool
