#include "commandline/HelpText.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace commandline
{

namespace
{

constexpr std::size_t kLineWidth = 80;
constexpr std::size_t kTermWidth = 24; // a longer term gets a line of its own

// The part of `text` that fits a line of `width` characters, and takes it with the blank after it off its
// front. A word that is too long stays whole.
std::string_view TakeLine(std::string_view& text, std::size_t width)
{
    std::size_t end = std::min(text.find('\n'), text.size());
    if (end > width)
    {
        end = text.rfind(' ', width);
        if (end == std::string_view::npos)
            end = std::min(text.find(' '), text.size());
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

} // namespace

std::string Table(const std::vector<HelpEntry>& entries)
{
    std::size_t width = 0;
    for (const HelpEntry& entry : entries)
        if (entry.term.size() <= kTermWidth)
            width = std::max(width, entry.term.size());

    std::string text;
    for (const HelpEntry& entry : entries)
    {
        std::string margin = "  " + entry.term;
        std::string_view rest = entry.meaning;
        if (entry.term.size() > width)
        {
            text += margin + '\n';
            margin.clear();
        }
        do
        {
            margin.resize(width + 4, ' ');
            text.append(margin).append(TakeLine(rest, kLineWidth - margin.size())) += '\n';
            margin.clear();
        } while (!rest.empty());
    }
    return text;
}

} // namespace commandline
