// A text log as a source of messages.
#pragma once

#include "msgservice/MessageSource.h"
#include "msgservice/sources/ByteInput.h"
#include "msgservice/text/TextMessages.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace msgservice
{

struct TextSourceOptions
{
    std::string source;                 // what the messages have as their source
    const TextFormat* format = nullptr; // null: it is found in the first lines
    Time reference = kNoTime;           // for dates that leave out the year, see TimeText; kNoTime: now
};

// Reads bytes, finds out the format and tells messages. Memory stays flat however long the log, its lines and
// its messages are.
class TextSource : public MessageSource
{
public:
    // `formats` must outlive the source.
    TextSource(std::unique_ptr<ByteInput> input, const TextFormats& formats, TextSourceOptions options = {});

    State Read(MessageSink& sink) override;
    std::string TakeNotices() override;

    // Reads as much as the format needs to be found, and keeps it for Read. Does nothing more once it is
    // found. False if there is no line yet and more may come.
    bool Detect();

    // How the format was found, sentences for people; empty before that.
    std::string Explanation() override { return m_explanation; }

    // The formats in which lines are tried; empty before.
    const std::vector<FormatChoice>& Choices() const { return m_choices; }

private:
    enum class Lines
    {
        Enough, // or wait for more
        AllThereAre,
        WithUnfinished
    };

    bool FindFormat(Lines lines);
    void TakeAll(Lines lines, MessageSink& sink);
    State TakeNothing(MessageSink& sink);
    void TellGivenUp();

    std::unique_ptr<ByteInput> m_input;
    const TextFormats& m_formats;
    TextSourceOptions m_options;
    LineReader m_reader;
    std::optional<TextMessages> m_messages; // once the format is found
    std::string m_explanation;
    std::vector<FormatChoice> m_choices;
    int m_looks = 0;           // in a row that found nothing
    std::string m_toldFormats; // that are not used any more
    bool m_hasToldGivenUp = false;
    std::string m_notices;
};

} // namespace msgservice
