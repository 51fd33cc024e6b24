#include "logview/find/FindText.h"

#include "logview/find/BlockForm.h"
#include "vkgrafic/TextCells.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace logview
{

using textmatch::Expression;
using textmatch::TextSearch;

namespace
{

constexpr std::uint32_t kStepLimit = 100'000; // about 10 ms

std::string_view WithoutEnd(std::string_view line)
{
    if (line.ends_with('\n'))
        line.remove_suffix(1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool IsInsideCharacter(std::string_view text, std::size_t at)
{
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

// The columns of a line in the code page for those of its text in UTF-8.
void ToColumns(std::string_view line, std::string_view utf8, FoundStretch* first, FoundStretch* end)
{
    VkGrafic::TextCells cells;
    cells.Take(line.data(), line.size());
    ZEMA::WideString wide;
    const auto columnOf = [&](std::size_t at) {
        ZEMA::ToWide(utf8.data(), at, wide);
        return std::min(static_cast<std::size_t>(cells.ColumnOfUnit(static_cast<int>(wide.size()))),
                        line.size());
    };
    for (; first != end; ++first)
        *first = {columnOf(first->begin), columnOf(first->end)};
}

} // namespace

FindText::FindText(const std::string& given, FindOptions options) : m_isExpression(options.isExpression)
{
    std::string utf8;
    const std::string& text = ZEMA::ToUtf8(given.data(), given.size(), utf8) ? utf8 : given;
    m_size = text.size();
    const bool isAscii = ZEMA::IsAscii(text.data(), text.size());
    if (!m_isExpression && isAscii)
        m_search.emplace(text, options.matchCase ? TextSearch::Case::Kept : TextSearch::Case::Ignored);
    if (m_search && !options.wholeWords)
        return;

    const auto syntax = m_isExpression ? Expression::Syntax::Expression : Expression::Syntax::Text;
    const auto letterCase = options.matchCase ? Expression::Case::Kept : Expression::Case::Ignored;
    const auto where = options.wholeWords ? Expression::Where::Words : Expression::Where::Anywhere;
    m_expression.emplace(text, syntax, letterCase, Expression::Units::Characters, where);
    m_expression->SetLimit(kStepLimit);
    const std::optional<std::string> block = m_isExpression ? BlockForm(text) : std::nullopt;
    if (!block)
        return;
    const std::string needed = NeededText(text);
    if (needed.size() > 1) // a letter is in nearly every line
    {
        m_search.emplace(needed, options.matchCase ? TextSearch::Case::Kept : TextSearch::Case::Ignored);
        return;
    }
    m_block.emplace(*block, syntax, letterCase, Expression::Units::Characters, where);
    m_block->SetLimit(kStepLimit);
}

// A text is looked for alike in a line and in many.
const Expression* FindText::OverLines() const
{
    if (!m_isExpression)
        return &*m_expression;
    return m_block ? &*m_block : nullptr;
}

bool FindText::FindAll(std::string_view line, std::size_t from, std::vector<FoundStretch>& found)
{
    line = WithoutEnd(line);
    if (from > line.size() || (m_search && !m_search->IsIn(line.substr(from))))
        return true;
    if (!m_expression)
    {
        for (std::size_t place = 0; (place = m_search->Find(line.substr(from))) != kNowhere;)
        {
            found.push_back({from + place, from + place + m_size});
            from = found.back().end;
        }
        return true;
    }
    if (!ZEMA::ToUtf8(line.data(), line.size(), m_utf8))
        return FindExpression(line, from, found);

    std::string before;
    if (ZEMA::ToUtf8(line.data(), from, before))
        from = before.size();
    const std::size_t count = found.size();
    const bool isDone = FindExpression(m_utf8, from, found);
    if (found.size() > count)
        ToColumns(line, m_utf8, found.data() + count, found.data() + found.size());
    return isDone;
}

bool FindText::FindExpression(std::string_view text, std::size_t from, std::vector<FoundStretch>& found) const
{
    std::optional<FoundStretch> empty;
    const std::size_t count = found.size();
    while (from <= text.size())
    {
        const Expression::Outcome outcome = m_expression->FindInUtf8(text, from);
        if (outcome == Expression::Outcome::GivenUp)
            return false;
        const std::string_view match =
            outcome == Expression::Outcome::Found ? m_expression->Group(0) : std::string_view();
        if (!match.data())
            break;
        const std::size_t begin = static_cast<std::size_t>(match.data() - text.data());
        from = begin + match.size();
        if (!match.empty())
        {
            found.push_back({begin, from});
            continue;
        }
        empty = empty.value_or(FoundStretch{begin, begin});
        ++from;
        while (IsInsideCharacter(text, from))
            ++from;
    }
    if (empty && found.size() == count)
        found.push_back(*empty);
    return true;
}

std::size_t FindText::FindFirst(std::string_view lines, bool isUtf8) const
{
    if (m_search)
        return m_search->Find(lines);
    const Expression* const expression = isUtf8 ? OverLines() : nullptr;
    if (!expression)
        return 0;
    switch (expression->FindInUtf8(lines, 0))
    {
    case Expression::Outcome::NotFound:
        return kNowhere;
    case Expression::Outcome::Found:
        return static_cast<std::size_t>(expression->Group(0).data() - lines.data());
    default:
        return 0;
    }
}

} // namespace logview
