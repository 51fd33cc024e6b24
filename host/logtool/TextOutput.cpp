#include "logtool/TextOutput.h"

#include "msgservice/session/ClockText.h"
#include "msgservice/session/Counter.h"

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

std::size_t NumberWidth()
{
    return std::max<std::size_t>(5, std::to_string(msgservice::LastNumber().value_or(0)).size());
}

TextOutput::TextOutput(std::ostream& output, TextStyle style, const std::vector<std::string>& logs)
    : m_output(output), m_buffer(kPiece), m_style(style),
      m_onlyBytes(!style.terminal && !style.numbers && !style.times)
{
    if (!m_style.numbers)
        return;
    m_numberWidth = NumberWidth();
    for (const std::string& log : logs)
        m_nameWidth = std::max(m_nameWidth, log.size());
}

void TextOutput::PutRow(const std::string& name, const LogEntry& entry, std::size_t skip)
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
        Put(text);
        return;
    }
    const std::string colour = m_style.colours ? Colour(entry.row.kind) : "";
    std::string printable = colour + PrintableLines(text);
    // The colour ends before the line feed, so that it never reaches what others write next.
    if (!colour.empty())
        printable.insert(printable.size() - (m_lineOpen ? 0 : 1), "\x1b[0m");
    Put(printable);
}

void TextOutput::Line(std::string_view text)
{
    EndLine();
    Put(text);
    Put("\n");
}

void TextOutput::Flush()
{
    m_output.write(m_buffer.data(), static_cast<std::streamsize>(m_size));
    m_size = 0;
}

void TextOutput::Put(std::string_view text)
{
    while (text.size() > kPiece - m_size)
    {
        const std::size_t part = kPiece - m_size;
        Copy(m_buffer.data() + m_size, text.data(), part);
        m_size += part;
        text.remove_prefix(part);
        Flush();
    }
    Copy(m_buffer.data() + m_size, text.data(), text.size());
    m_size += text.size();
}

void TextOutput::PutBlanks(std::size_t count)
{
    static constexpr std::string_view kBlanks = "                                ";
    for (; count > kBlanks.size(); count -= kBlanks.size())
        Put(kBlanks);
    Put(kBlanks.substr(0, count));
}

void TextOutput::EndLine()
{
    if (m_lineOpen)
        Put("\n");
    m_lineOpen = false;
}

void TextOutput::Begin(const std::string& name, const LogEntry& entry)
{
    if (m_style.times)
        PutTime(entry.row.time);
    if (m_style.numbers)
        PutNumber(name, entry.row.time);
    PutBlanks(2 * std::size_t{entry.row.indent});
}

// A row that was written a little later than its time has a plus sign.
void TextOutput::PutTime(std::uint32_t number)
{
    QmLogTime time;
    if (!m_style.times->TimeOf(number, time))
    {
        PutBlanks(msgservice::kLocalTimeWidth + 3);
        return;
    }
    if (time.time < m_lastTime)
        Line("-- the clock was set back by " + msgservice::DurationText(m_lastTime - time.time));
    m_lastTime = time.time;
    Put(msgservice::LocalTime(time.time));
    Put(time.isExact ? "   " : "+  ");
}

void TextOutput::PutNumber(const std::string& name, std::uint32_t time)
{
    const std::string number = std::to_string(time);
    PutBlanks(m_numberWidth - std::min(m_numberWidth, number.size()));
    Put(number);
    Put("  ");
    Put(name);
    PutBlanks(m_nameWidth - std::min(m_nameWidth, name.size()) + 2);
}

} // namespace logtool
