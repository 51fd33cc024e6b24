#include "logtool/TextOutput.h"

#include "logtool/Counter.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

const char* Colour(QmLogBlockKind kind)
{
    switch (kind)
    {
    case kErrorKind:
        return "\x1b[31m";
    case kNoticeKind:
        return "\x1b[33m";
    case kDetailKind:
        return "\x1b[90m";
    default:
        return "";
    }
}

// A row may hold several lines when the index lacks some, and lines may end with CR LF: line ends are left
// to do their work, everything between them is made harmless.
std::string PrintableLines(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::size_t lineFeed = text.find('\n');
        std::string_view line = text.substr(0, lineFeed);
        const bool ended = lineFeed != std::string_view::npos;
        text.remove_prefix(ended ? lineFeed + 1 : text.size());
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        result += Printable(line);
        if (ended)
            result += '\n';
    }
    return result;
}

} // namespace

TextOutput::TextOutput(std::ostream& output, TextStyle style, const std::vector<std::string>& logs)
    : m_output(output), m_style(style)
{
    if (!m_style.numbers)
        return;
    m_numberWidth = std::max<std::size_t>(5, std::to_string(LastNumber().value_or(0)).size());
    for (const std::string& log : logs)
        m_nameWidth = std::max(m_nameWidth, log.size());
}

void TextOutput::Row(const std::string& name, const LogEntry& entry, std::size_t skip)
{
    const bool continues = skip > 0 && m_lineOpen && m_openLog == entry.log && m_openIndex == entry.index;
    const std::string_view text = entry.text.substr(skip);
    // Where other rows came between, the line was ended before them.
    if (!continues && skip > 0 && (text == "\n" || text == "\r\n"))
        return;
    if (!continues)
    {
        EndLine();
        Begin(name, entry);
    }
    m_lineOpen = !text.ends_with('\n');
    m_openLog = entry.log;
    m_openIndex = entry.index;
    if (!m_style.terminal)
    {
        m_output.write(text.data(), static_cast<std::streamsize>(text.size()));
        return;
    }
    const std::string colour = m_style.colours ? Colour(entry.row.kind) : "";
    std::string printable = colour + PrintableLines(text);
    // The colour ends before the line feed, so that it never reaches what others write next.
    if (!colour.empty())
        printable.insert(printable.size() - (m_lineOpen ? 0 : 1), "\x1b[0m");
    m_output << printable;
}

void TextOutput::Line(std::string_view text)
{
    EndLine();
    m_output << text << '\n';
}

void TextOutput::EndLine()
{
    if (m_lineOpen)
        m_output << '\n';
    m_lineOpen = false;
}

void TextOutput::Begin(const std::string& name, const LogEntry& entry)
{
    if (m_style.numbers)
    {
        const std::string number = std::to_string(entry.row.time);
        m_output << std::string(m_numberWidth - std::min(m_numberWidth, number.size()), ' ') << number << "  "
                 << name << std::string(m_nameWidth - std::min(m_nameWidth, name.size()) + 2, ' ');
    }
    m_output << std::string(2 * std::size_t{entry.row.indent}, ' ');
}

} // namespace logtool
