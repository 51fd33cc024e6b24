#include "engine/SqlText.h"

namespace engine
{

namespace
{

std::string InQuotes(std::string_view text, char quote)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string quoted(1, quote);
    for (const char c : text)
    {
        const auto byte = static_cast<unsigned char>(c);
        if (c == quote || c == '\\')
            quoted.append({'\\', c});
        else if (byte < 0x20) // an editor, a proxy or a log of the engine's might change it on its way
            quoted.append({'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]});
        else
            quoted += c;
    }
    return quoted += quote;
}

} // namespace

std::string SqlValue(std::string_view text)
{
    return InQuotes(text, '\'');
}

std::string SqlName(std::string_view name)
{
    return InQuotes(name, '`');
}

std::string SqlTable(std::string_view name)
{
    const std::size_t stop = name.find('.');
    if (stop == std::string_view::npos)
        return SqlName(name);
    return SqlName(name.substr(0, stop)) + '.' + SqlName(name.substr(stop + 1));
}

} // namespace engine
