// What "cat --grep" looks for in a row.
#pragma once

#include "textmatch/Expression.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace logtool
{

// A text, or an expression as PCRE2 has them. It and the rows are UTF-8 where they are valid UTF-8, else in
// the system's code page: the characters are compared.
class TextMatch
{
public:
    using Syntax = textmatch::Expression::Syntax;
    using Case = textmatch::Expression::Case;

    // Throws UsageError with the position when the expression is none.
    TextMatch(const std::string& given, Syntax syntax, Case letterCase);

    // `row` may end with its line end, which does not count to it.
    bool operator()(std::string_view row);

    // A text that every matching row contains, for leaving out others quickly; empty when there is none.
    std::string_view NeededText() const;

    // Rows that have cost so much that matching gave up; they were answered with false. An expression such as
    // "(a+)+b" can take years on a row.
    std::size_t RowsGivenUp() const { return m_givenUp; }

private:
    std::string m_text; // empty for expressions
    std::unique_ptr<textmatch::Expression> m_expression;
    std::string m_utf8; // of a row in the code page
    std::size_t m_givenUp = 0;
};

} // namespace logtool
