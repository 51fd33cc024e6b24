#include "msgservice/sources/TextSource.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace msgservice
{

namespace
{

Time Now()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

bool HasText(std::string_view line)
{
    return line.find_first_not_of(" \t\r\v\f") != std::string_view::npos;
}

} // namespace

TextSource::TextSource(std::unique_ptr<ByteInput> input, const TextFormats& formats,
                       TextSourceOptions options)
    : m_input(std::move(input)), m_formats(formats), m_options(std::move(options))
{
    if (m_options.reference == kNoTime)
        m_options.reference = Now();
}

MessageSource::State TextSource::Read(MessageSink& sink)
{
    const std::span<char> room = m_reader.Room();
    std::size_t size = 0;
    switch (m_input->Read(room, size))
    {
    case ByteInput::Outcome::Bytes:
        if (m_looks > 0 && m_messages) // written after the reference
            m_messages->SetReference(std::max(m_options.reference, Now()));
        m_looks = 0;
        m_reader.Add(size);
        TakeAll(Lines::Enough, sink);
        return State::More;
    case ByteInput::Outcome::Restart:
        TakeAll(Lines::WithUnfinished, sink);
        m_reader.Restart();
        if (m_messages)
            m_messages->Restart();
        m_looks = 0;
        return State::More;
    case ByteInput::Outcome::Nothing:
        return TakeNothing(sink);
    case ByteInput::Outcome::End:
        break;
    }
    TakeAll(Lines::WithUnfinished, sink);
    TellGivenUp();
    return State::Ended;
}

// A line without its end may be in the middle of being written: it is waited for once more.
MessageSource::State TextSource::TakeNothing(MessageSink& sink)
{
    constexpr int kEnough = 2;
    m_looks = std::min(m_looks + 1, kEnough);
    TakeAll(m_looks < kEnough ? Lines::AllThereAre : Lines::WithUnfinished, sink);
    return State::Waiting;
}

void TextSource::TakeAll(Lines lines, MessageSink& sink)
{
    if (!FindFormat(lines))
        return;
    m_messages->TakeLines(m_reader, sink);
    if (lines == Lines::WithUnfinished)
        m_messages->TakeUnfinished(m_reader, sink);
    if (lines != Lines::Enough)
        m_messages->Finish(sink);
    if (m_messages->FormatsGivenUp() != m_toldFormats)
        TellGivenUp();
}

bool TextSource::FindFormat(Lines lines)
{
    if (m_messages)
        return true;
    const LineReader::Place place = m_reader.Where();
    std::vector<std::string_view> first;
    std::string_view line;
    while (first.size() < kLinesToDetect && m_reader.NextLine(line))
        if (HasText(line))
            first.push_back(line);
    if (lines == Lines::WithUnfinished && first.size() < kLinesToDetect && m_reader.TakeUnfinished(line) &&
        HasText(line))
        first.push_back(line);
    m_reader.GoBack(place);
    const bool isFull = first.size() == kLinesToDetect || (m_reader.IsFull() && !first.empty());
    const bool isEnough = lines == Lines::Enough ? isFull : !first.empty();
    if (!isEnough)
        return false;
    Detection detection = FormatDetector(m_formats).Detect(first, m_options.format, m_options.reference);
    m_messages.emplace(m_formats, detection, m_options.source);
    m_explanation = std::move(detection.explanation);
    m_choices = std::move(detection.choices);
    return true;
}

bool TextSource::Detect()
{
    while (!m_messages)
    {
        const std::span<char> room = m_reader.Room();
        std::size_t size = 0;
        const ByteInput::Outcome outcome = m_input->Read(room, size);
        if (outcome == ByteInput::Outcome::Bytes)
        {
            m_reader.Add(size);
            FindFormat(Lines::Enough);
        }
        else if (outcome == ByteInput::Outcome::Restart)
            m_reader.Restart();
        else
            return FindFormat(Lines::WithUnfinished);
    }
    return true;
}

void TextSource::TellGivenUp()
{
    if (!m_messages || m_messages->LinesGivenUp() == 0)
        return;
    const std::string name = "'" + m_input->Name() + "'";
    if (!std::exchange(m_hasToldGivenUp, true))
        m_notices += name + " has " + std::to_string(m_messages->LinesGivenUp()) +
                     " lines on which an expression cost too much: they count as lines that do not match.\n";
    if (m_messages->FormatsGivenUp() != m_toldFormats)
        m_notices += name + ": not tried any more, because too many lines cost too much: " +
                     m_messages->FormatsGivenUp() + ".\n";
    m_toldFormats = m_messages->FormatsGivenUp();
}

std::string TextSource::TakeNotices()
{
    return m_input->TakeNotices() + std::exchange(m_notices, {});
}

} // namespace msgservice
