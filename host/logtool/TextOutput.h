// Rows as text: indentation, numbers, colours, and what a terminal must not be sent.
#pragma once

#include "QmLogTimes.h"
#include "commandline/Printable.h"
#include "msgservice/session/LogStream.h"

#include <cstring>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace logtool
{

using commandline::Printable;
using msgservice::LogEntry;
using msgservice::LogStream;

// How wide a column of sequence numbers is.
std::size_t NumberWidth();

struct TextStyle
{
    bool terminal = false; // make control characters harmless
    bool colours = false;
    bool numbers = false;               // sequence number and log name before each row
    const CQmLogTimes* times = nullptr; // whose time goes before each row; null for none
};

// At least kStep bytes, kStep at a time; what is left over is copied with the bytes before it.
template <std::size_t kStep> void CopySteps(char* to, const char* from, std::size_t size)
{
    for (std::size_t i = 0; i + kStep <= size; i += kStep)
        std::memcpy(to + i, from + i, kStep);
    std::memcpy(to + size - kStep, from + size - kStep, kStep);
}

// Lines are short, and a call to the run-time library's copy costs more than to copy one. The lengths of
// lines cannot be predicted, so the steps are long and few.
inline void Copy(char* to, const char* from, std::size_t size)
{
    if (size >= 64)
        CopySteps<64>(to, from, size);
    else if (size >= 16)
        CopySteps<16>(to, from, size);
    else
        for (std::size_t i = 0; i < size; ++i)
            to[i] = from[i];
}

// Off a terminal the text's bytes go out as they are. Output is collected and goes to the stream in large
// pieces; the last one with Flush.
class TextOutput
{
public:
    // Columns are as wide as `logs` and the present sequence number ask for.
    TextOutput(std::ostream& output, TextStyle style, const std::vector<std::string>& logs);

    // Writes a row of log `name`. `skip` bytes of its text went out before; when they are the last thing that
    // went out the rest goes right after them, else on a line of its own, unless it is but a line end. A
    // line that has no line feed gets it only when another row follows, for it may still grow.
    void Row(const std::string& name, const LogEntry& entry, std::size_t skip = 0)
    {
        if (skip > 0 || !PutUsual(entry))
            PutRow(name, entry, skip);
    }

    // A line of our own between rows.
    void Line(std::string_view text);

    // Ends the line that is open, if one is: most logs end within a line, and what comes next is not theirs.
    void EndLine();

    void Flush();

private:
    static constexpr std::size_t kPiece = 64 * 1024;
    static constexpr std::size_t kUsualBlanks = 32; // more before a line are rare

    void Put(std::string_view text);
    void PutBlanks(std::size_t count);
    void PutNumber(const std::string& name, std::uint32_t time);
    void PutTime(std::uint32_t number);
    bool PutUsual(const LogEntry& entry);
    void PutRow(const std::string& name, const LogEntry& entry, std::size_t skip);
    void Begin(const std::string& name, const LogEntry& entry);

    std::ostream& m_output;
    std::vector<char> m_buffer;
    std::size_t m_size = 0; // bytes in it
    TextStyle m_style;
    bool m_onlyBytes; // and indentation
    std::size_t m_numberWidth = 0;
    std::size_t m_nameWidth = 0;
    QmLogTimeValue m_lastTime = 0; // of the row before
    bool m_lineOpen = false;       // the last row had no line feed
    std::size_t m_openLog = 0;
    unsigned long m_openIndex = 0;
};

// A line as most are, in one step: nothing but its bytes after a few blanks, and room for it. More blanks
// are written than may be needed, because their number cannot be predicted; the line goes over them.
inline bool TextOutput::PutUsual(const LogEntry& entry)
{
    const std::size_t blanks = 2 * std::size_t{entry.row.indent};
    const std::size_t room = kPiece - m_size;
    if (!m_onlyBytes || m_lineOpen || blanks > kUsualBlanks || room < kUsualBlanks ||
        entry.text.size() > room - kUsualBlanks || !entry.text.ends_with('\n'))
        return false;
    char* const to = m_buffer.data() + m_size;
    std::memset(to, ' ', kUsualBlanks);
    Copy(to + blanks, entry.text.data(), entry.text.size());
    m_size += blanks + entry.text.size();
    return true;
}

} // namespace logtool
