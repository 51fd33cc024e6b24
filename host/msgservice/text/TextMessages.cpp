#include "msgservice/text/TextMessages.h"

#include <algorithm>
#include <limits>

namespace msgservice
{

namespace
{

bool IsBlank(std::string_view line)
{
    constexpr std::string_view kBlanks = " \t\r\v\f";
    return std::all_of(line.begin(), line.end(),
                       [&](char c) { return c <= ' ' && kBlanks.find(c) != kBlanks.npos; });
}

} // namespace

TextMessages::TextMessages(const TextFormats& formats, const Detection& detection, std::string source)
    : m_areLinesMessages(detection.choices.front().format->kind == TextFormat::Kind::Lines),
      m_times(detection.times), m_source(std::move(source))
{
    for (const FormatChoice& choice : detection.choices)
        m_parsers.push_back({LineParser(*choice.format, formats, choice.start)});
}

void TextMessages::TakeLines(LineReader& reader, MessageSink& sink)
{
    std::string_view line;
    while (reader.NextLine(line))
        TakeLine(line, reader.IsRest(), sink);
    KeepHeld();
}

void TextMessages::TakeUnfinished(LineReader& reader, MessageSink& sink)
{
    std::string_view line;
    if (reader.TakeUnfinished(line))
        TakeLine(line, reader.IsRest(), sink);
    KeepHeld();
}

void TextMessages::TakeLine(std::string_view line, bool isRest, MessageSink& sink)
{
    if (!isRest && m_line < std::numeric_limits<std::int32_t>::max())
        ++m_line;
    if (IsBlank(line))
    {
        ++m_blankLines;
        return;
    }
    MessageFields& next = m_fields[m_current ^ 1];
    LineParser::Clear(next);
    if (!isRest && Parse(line, next))
    {
        Hand(sink);
        m_held = m_areLinesMessages ? Held::Nothing : Held::Message;
        m_heldLine = line;
    }
    else if (m_held == Held::Nothing)
        next.body = line;
    else
    {
        Continue(line);
        return;
    }
    m_current ^= 1;
    if (!m_source.empty())
        next.source = m_source;
    next.sourceLine = m_line;
    next.countsSourceLine = true;
    m_isContinued = m_isCut = false;
    m_blankLines = 0;
    if (m_held == Held::Nothing)
        sink.Add(next);
}

bool TextMessages::Parse(std::string_view line, MessageFields& fields)
{
    for (Parser& parser : m_parsers)
    {
        if (parser.givenUp >= kMostGivenUp)
            continue;
        const LineParser::Outcome outcome = parser.parser.Parse(line, m_times, fields);
        if (outcome == LineParser::Outcome::Match)
            return true;
        LineParser::Clear(fields);
        if (outcome != LineParser::Outcome::GivenUp)
            continue;
        ++m_givenUp;
        if (++parser.givenUp == kMostGivenUp)
            m_formatsGivenUp += (m_formatsGivenUp.empty() ? "" : ", ") + parser.parser.Format().name;
    }
    return false;
}

// The lines of a body are joined with CR LF.
void TextMessages::Continue(std::string_view line)
{
    const bool isLate = m_held == Held::Given;
    if (isLate)
    {
        m_held = Held::Message;
        Fields().sourceLine = m_line;
        Fields().body = {};
        m_isContinued = m_isCut = false;
        m_blankLines = 0;
    }
    if (!m_isContinued)
        m_body = Fields().body;
    m_isContinued = true;
    for (; m_blankLines > 0 && !m_body.empty() && !m_isCut; --m_blankLines)
        Append("\r\n");
    m_blankLines = 0;
    if (!m_body.empty())
        Append("\r\n");
    else if (!isLate)
        line.remove_prefix(line.find_first_not_of(" \t")); // it is not blank
    Append(line);
}

void TextMessages::Append(std::string_view text)
{
    if (m_isCut)
        return;
    const std::size_t room =
        kLongestBody - kCutMark.size() - std::min(m_body.size(), kLongestBody - kCutMark.size());
    m_isCut = text.size() > room;
    if (!m_isCut)
    {
        m_body += text;
        return;
    }
    std::size_t end = room;
    for (int back = 0; back < 3 && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80; ++back)
        --end;
    m_body.append(text.substr(0, end)).append(kCutMark);
}

void TextMessages::Hand(MessageSink& sink)
{
    if (m_held != Held::Message)
        return;
    if (m_isContinued)
        Fields().body = m_body;
    sink.Add(Fields());
    m_held = Held::Given;
}

void TextMessages::Finish(MessageSink& sink)
{
    Hand(sink);
}

void TextMessages::Restart()
{
    m_line = 0;
    m_held = Held::Nothing;
    m_blankLines = 0;
}

// The reader is about to move on: what the held message has of its line is copied.
void TextMessages::KeepHeld()
{
    if (m_held == Held::Nothing || m_heldLine.data() == m_kept.data())
        return;
    m_kept = m_heldLine;
    const auto move = [this](std::string_view& text) {
        if (text.data() >= m_heldLine.data() && text.data() <= m_heldLine.data() + m_heldLine.size())
            text = std::string_view(m_kept).substr(static_cast<std::size_t>(text.data() - m_heldLine.data()),
                                                   text.size());
    };
    for (std::string_view* text : {&Fields().timestamp, &Fields().levelText, &Fields().topic, &Fields().body,
                                   &Fields().who, &Fields().module, &Fields().runtimeFile,
                                   &Fields().runtimeContext, &Fields().text1, &Fields().text2})
        move(*text);
    m_heldLine = m_kept;
}

} // namespace msgservice
