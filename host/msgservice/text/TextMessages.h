// Lines of a text log as messages.
#pragma once

#include "msgservice/text/FormatDetector.h"
#include "msgservice/text/LineReader.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace msgservice
{

constexpr std::size_t kLongestBody =
    1024 * 1024; // bytes; the rest of a longer one is cut, and kCutMark added

// Puts lines together: one that has a format begins a message, others continue it, and those before the first
// such line are a message each. Blank lines count only between others. The message that may go on is held
// back until the next one begins or Finish is called; what continues it after Finish becomes a message of its
// own with the same fields.
class TextMessages
{
public:
    // `formats` must outlive this. `source` is what all messages have as their source.
    TextMessages(const TextFormats& formats, const Detection& detection, std::string source);

    // Takes the lines that `reader` holds, and keeps what it needs of them.
    void TakeLines(LineReader& reader, MessageSink& sink);

    // Takes what there is of a line without its end.
    void TakeUnfinished(LineReader& reader, MessageSink& sink);

    // Hands out what is held back.
    void Finish(MessageSink& sink);

    // The next line is the first of another file, in the same formats.
    void Restart();

    // Lines that an expression gave up on, and the format that is not used any more because it did so too
    // often: see kMostGivenUp.
    std::uint64_t LinesGivenUp() const { return m_givenUp; }
    const std::string& FormatsGivenUp() const { return m_formatsGivenUp; }

    void SetReference(Time reference) { m_times.SetReference(reference); }
    std::string Settlements() const { return m_times.Settlements(); }

private:
    static constexpr int kMostGivenUp = 10; // lines that a format may spend so much time on

    struct Parser
    {
        LineParser parser;
        int givenUp = 0;
    };
    enum class Held
    {
        Nothing, // no line has had a format yet
        Message, // to be handed out
        Given    // handed out, but it may still be continued
    };

    void TakeLine(std::string_view line, bool isRest, MessageSink& sink);
    bool Parse(std::string_view line, MessageFields& fields);
    void Continue(std::string_view line);
    void Append(std::string_view line);
    void Hand(MessageSink& sink);
    MessageFields& Fields() { return m_fields[m_current]; }
    void KeepHeld();

    std::vector<Parser> m_parsers;
    bool m_areLinesMessages; // there is no format
    TimeText m_times;
    std::string m_source;
    std::int32_t m_line = 0;
    Held m_held = Held::Nothing;
    std::array<MessageFields, 2> m_fields; // of the message held, from its first line, and of the next line
    std::size_t m_current = 0;
    std::string_view m_heldLine; // where its texts are
    std::string m_kept;          // that line, once the reader has moved on
    std::string m_body;          // of a message with more than one line
    bool m_isContinued = false;
    bool m_isCut = false;
    std::size_t m_blankLines = 0; // since the last line of the message held
    std::uint64_t m_givenUp = 0;
    std::string m_formatsGivenUp;
};

} // namespace msgservice
