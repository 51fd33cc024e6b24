// What a source tells of one message, and who is told.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace msgservice
{

// Nanoseconds since 1970-01-01 00:00 UTC. A time outside of the years 1678 to 2261 is cut to these.
using Time = std::int64_t;
constexpr Time kNoTime = std::numeric_limits<Time>::min();

// Levels as the viewer knows them: 3 is a warning, 4 and 5 are errors.
enum Level : std::uint32_t
{
    kTraceLevel = 0,
    kDebugLevel = 1,
    kInfoLevel = 2, // also of a message that tells no level
    kWarningLevel = 3,
    kErrorLevel = 4,
    kFatalLevel = 5
};

// A message's fields. Texts are views for the duration of a call. They are UTF-8 where they are valid UTF-8,
// else in the system's code page, and hold no NUL.
struct MessageFields
{
    std::string_view timestamp; // as the source has it
    std::string_view levelText;
    std::string_view topic;
    std::string_view body; // its lines joined with CR LF
    std::string_view source;
    std::string_view who;
    std::string_view module;
    std::string_view runtimeFile;
    std::string_view runtimeContext;
    std::string_view text1;
    std::string_view text2;
    Time time = kNoTime; // what the timestamp means, if it could be read
    std::uint32_t level = kInfoLevel;
    std::uint32_t indent = 0;
    std::int32_t errorNumber = 0;
    std::int32_t line = 0; // of the program's text, in runtimeFile
    std::int32_t sourceLine = 0;
    std::int32_t sourceColumn = 0;
    bool countsSourceLine = false; // the source counts its lines up: sourceLine tells no two messages apart
};

// Takes the messages of a source one by one.
class MessageSink
{
public:
    virtual ~MessageSink() = default;
    virtual void Add(const MessageFields& message) = 0;
};

} // namespace msgservice
