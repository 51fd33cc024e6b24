// The forms in which rows go to other tools.
#pragma once

#include "logtool/ExportBuffer.h"
#include "sessionwalk/WalkedRow.h"

#include <cstdint>
#include <memory>
#include <string>

namespace logtool
{

// What the rows of one session have in common. `ordinal` counts the sessions that one export has seen in the
// folder; from the second one on it is part of the session's name.
struct ExportSource
{
    std::string machine; // UTF-8
    std::string session; // likewise
    std::uint32_t ordinal = 1;

    std::string SessionName() const
    {
        return ordinal == 1 ? session : session + '#' + std::to_string(ordinal);
    }
};

// Each operation appends to `to`. What Row, Begin and SetSource append is whole: a reader can take it in,
// even if no more comes.
class ExportForm
{
public:
    virtual ~ExportForm() = default;

    // What a file begins with, and what rows of another session begin with.
    virtual void Begin(ExportBuffer& to) { static_cast<void>(to); }
    virtual void SetSource(const ExportSource& source, ExportBuffer& to) = 0;

    virtual void Row(const sessionwalk::WalkedRow& row, ExportBuffer& to) = 0;

    // What a file ends with. It is taken away again when rows are to follow.
    virtual void End(ExportBuffer& to) { static_cast<void>(to); }

    // What there is to know of the rows so far, as lines, for going on with the same file in another process.
    virtual std::string State() const { return {}; }
    virtual void Resume(const std::string& state) { static_cast<void>(state); }
};

enum class Framing
{
    Lines,        // a line feed ends each message
    OctetCounting // the length of each message precedes it (RFC 6587)
};

std::unique_ptr<ExportForm> MakeJsonForm(const ExportSource& source);
std::unique_ptr<ExportForm> MakeCsvForm(const ExportSource& source);
std::unique_ptr<ExportForm> MakeTraceForm(const ExportSource& source);
std::unique_ptr<ExportForm> MakeSyslogForm(const ExportSource& source, Framing framing);

} // namespace logtool
