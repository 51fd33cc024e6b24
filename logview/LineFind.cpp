#include "logview/LineFind.h"

#include "textmatch/TextSearch.h"
#include "vkgrafic/TextCells.h"

#include <algorithm>
#include <string>

namespace logview
{

namespace
{

// No other letter has a capital that is ASCII, but for two that nobody looks for so.
std::optional<int> FindAscii(std::string_view line, std::string_view text, std::size_t begin)
{
    if (std::any_of(text.begin(), text.end(), [](char byte) { return byte >= 'a' && byte <= 'z'; }))
        return std::nullopt;
    const textmatch::TextSearch search(std::string(text), textmatch::TextSearch::Case::Ignored);
    const std::size_t place = search.Find(line.substr(begin));
    if (place == std::string_view::npos)
        return std::nullopt;
    return static_cast<int>(begin + place);
}

std::optional<int> FindWide(std::string_view line, std::string_view text, std::size_t begin)
{
    ZEMA::WideString wanted;
    ZEMA::WideString capitals;
    ZEMA::ToWide(text.data(), text.size(), wanted);
    ZEMA::ToWide(line.data(), line.size(), capitals);
    ZEMA::ToCapitals(capitals);
    if (capitals.find(wanted) == ZEMA::WideString::npos)
        return std::nullopt;

    VkGrafic::TextCells cells;
    cells.Take(line.data(), line.size());
    const int column = static_cast<int>(begin);
    const int from = cells.BeginOf(column) == column ? column : cells.EndOf(column);
    const std::size_t place = capitals.find(wanted, static_cast<std::size_t>(cells.UnitOf(from)));
    if (place == ZEMA::WideString::npos)
        return std::nullopt;
    return cells.ColumnOfUnit(static_cast<int>(place));
}

} // namespace

std::optional<int> FindInLine(std::string_view line, std::string_view text, int column)
{
    const std::size_t begin = static_cast<std::size_t>(std::max(column, 0));
    if (begin > line.size())
        return std::nullopt;
    if (ZEMA::IsAscii(text.data(), text.size()))
        return FindAscii(line, text, begin);
    if (ZEMA::IsAscii(line.data(), line.size()))
        return std::nullopt;
    return FindWide(line, text, begin);
}

} // namespace logview
