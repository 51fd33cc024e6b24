#include "CsvText.h"

#include <algorithm>

namespace csv
{
namespace
{

constexpr std::size_t npos = std::string_view::npos;

// Where the field that begins at `begin` ends: at a separator, a line end or the end of the text; npos if its
// quote is not closed.
std::size_t FieldEnd(std::string_view text, std::size_t begin, char separator)
{
    std::size_t i = begin;
    if (i < text.size() && text[i] == '"')
        do
        {
            i = text.find('"', i + 1);
            if (i == npos)
                return npos;
            ++i;
        } while (i < text.size() && text[i] == '"');
    const char ends[] = {separator, '\r', '\n'};
    return std::min(text.find_first_of({ends, 3}, i), text.size());
}

} // namespace

char GuessSeparator(std::string_view text)
{
    char best = ',';
    std::size_t most = 0;
    for (const char separator : {',', ';', '\t'})
    {
        const std::size_t length = RowLength(text, separator);
        const std::size_t fields = length == npos ? 0 : SplitFields(text.substr(0, length), separator).size();
        if (fields > most)
        {
            best = separator;
            most = fields;
        }
    }
    return best;
}

std::size_t RowLength(std::string_view text, char separator)
{
    std::size_t end = FieldEnd(text, 0, separator);
    while (end < text.size() && text[end] == separator)
        end = FieldEnd(text, end + 1, separator);
    return end == npos ? npos : end + (text.substr(end).starts_with("\r\n") ? 2 : end < text.size() ? 1 : 0);
}

std::string_view LineEnd(std::string_view row)
{
    const std::size_t length = row.ends_with("\r\n") ? 2 : row.ends_with('\n') || row.ends_with('\r') ? 1 : 0;
    return row.substr(row.size() - length);
}

std::vector<std::string_view> SplitFields(std::string_view row, char separator)
{
    std::vector<std::string_view> fields;
    std::size_t begin = 0;
    for (;;)
    {
        const std::size_t end = std::min(FieldEnd(row, begin, separator), row.size());
        fields.push_back(row.substr(begin, end - begin));
        if (end == row.size() || row[end] != separator)
            return fields;
        begin = end + 1;
    }
}

std::string FieldText(std::string_view field)
{
    if (!field.starts_with('"'))
        return std::string(field);
    std::string text;
    bool quoted = true;
    for (std::size_t i = 1; i < field.size(); ++i)
    {
        if (field[i] != '"' || !quoted)
            text += field[i];
        else if (field.substr(i + 1).starts_with('"'))
            text += field[++i];
        else
            quoted = false;
    }
    return text;
}

std::string MakeField(std::string_view text, char separator)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    const char special[] = {separator, '"', '\r', '\n'};
    const bool hasBlankEnd = !text.empty() && (isBlank(text.front()) || isBlank(text.back()));
    if (!hasBlankEnd && text.find_first_of({special, 4}) == npos)
        return std::string(text);
    std::string field = "\"";
    for (const char c : text)
        field.append(c == '"' ? 2 : 1, c);
    return field + '"';
}

} // namespace csv
