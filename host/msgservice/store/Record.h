// How one message lies in memory: only the fields that it has.
#pragma once

#include "msgservice/Message.h"

#include <array>
#include <cstddef>

namespace msgservice
{

// The texts that are kept once, by their place in a record.
enum SharedText : std::size_t
{
    kLevelText,
    kTopic,
    kSource,
    kWho,
    kModule,
    kRuntimeFile,
    kRuntimeContext,
    kText1,
    kText2,
    kSharedTexts
};

// A message whose shared texts are numbers of a pool.
struct Record
{
    std::array<std::uint32_t, kSharedTexts> texts = {};
    std::array<std::int32_t, 4> numbers = {}; // error number, line, source line, source column
    Time time = kNoTime;
    std::uint32_t level = 0;
    std::uint32_t indent = 0;
    bool countsSourceLine = false;
    std::string_view timestamp;
    std::string_view body;
};

// The beginning of a record, up to its two texts; each of these has a NUL after it.
struct RecordHead
{
    std::array<char, 128> bytes;
    std::size_t size = 0;
};

RecordHead EncodeHead(const Record& record);
Record DecodeRecord(const char* bytes);

// One field of a record, which takes a part of the time that all of them take.
Time DecodeTime(const char* bytes);
std::uint32_t DecodeLevel(const char* bytes);
std::uint32_t DecodeText(const char* bytes, SharedText text);

struct OwnTexts
{
    std::string_view timestamp;
    std::string_view body;
};
OwnTexts DecodeTexts(const char* bytes);

} // namespace msgservice
