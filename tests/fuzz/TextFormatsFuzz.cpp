#include "host/msgservice/text/TextMessages.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/msgservice/ListedMessages.h"

namespace fuzz
{

namespace
{

void Give(msgservice::LineReader& reader, std::string_view bytes)
{
    const std::span<char> room = reader.Room();
    std::copy(bytes.begin(), bytes.end(), room.begin());
    reader.Add(bytes.size());
}

// Each line followed by a NUL, which no line has.
std::string LinesOf(std::string_view bytes, std::size_t size)
{
    msgservice::LineReader reader;
    std::string lines;
    std::string_view line;
    for (std::size_t at = 0; at < bytes.size(); at += size)
    {
        Give(reader, bytes.substr(at, size));
        while (reader.NextLine(line))
            lines.append(line).push_back('\0');
    }
    if (reader.TakeUnfinished(line))
        lines.append(line).push_back('\0');
    return lines;
}

std::string MessagesOf(std::string_view bytes, std::size_t size)
{
    static const msgservice::TextFormats formats;
    static msgservice::FormatDetector detector(formats);
    msgservice::LineReader look;
    Give(look, bytes);
    std::vector<std::string_view> lines;
    std::string_view line;
    while (look.NextLine(line) || look.TakeUnfinished(line))
        if (!line.empty())
            lines.push_back(line);
    msgservice::TextMessages messages(formats, detector.Detect(lines, nullptr, 0), "");
    msgservice::LineReader reader;
    msgservice::Listed listed;
    for (std::size_t at = 0; at < bytes.size(); at += size)
    {
        Give(reader, bytes.substr(at, size));
        messages.TakeLines(reader, listed);
    }
    messages.TakeUnfinished(reader, listed);
    messages.Finish(listed);
    return listed.text;
}

} // namespace

// The same lines and messages come, in whatever pieces the bytes do.
void TextFormats(std::string_view bytes)
{
    Input input(bytes);
    const std::size_t size = 1 + input.Byte();
    const std::string_view text = input.Bytes(16 * 1024);
    const std::string lines = LinesOf(text, text.size() + 1);
    Require(lines == LinesOf(text, size), "lines do not depend on pieces");
    Require(lines.find('\n') == std::string::npos, "a line has no line feed");
    Require(MessagesOf(text, text.size() + 1) == MessagesOf(text, size), "messages do not depend on pieces");
}

} // namespace fuzz
