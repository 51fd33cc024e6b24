#include "msgservice/store/Record.h"

#include <bit>
#include <cstring>

namespace msgservice
{

namespace
{

// Two bytes of flags come first: a bit for each shared text, one for each number, and these. The time
// follows, if there is one, then the level, and then the other fields in the order of their flags.
constexpr std::uint32_t kHasTime = 1u << 13;
constexpr std::uint32_t kHasIndent = 1u << 14;
constexpr std::uint32_t kCountsSourceLine = 1u << 15;
constexpr std::size_t kFirstNumber = kSharedTexts;
constexpr std::uint32_t kTextFlags = (1u << kSharedTexts) - 1;
constexpr std::uint32_t kNumberFlags = 0xF;
static_assert(kFirstNumber + 4 <= 13);

// Seven bits a byte, the lowest first; the highest bit tells that more follow.
void Put(RecordHead& head, std::uint64_t number)
{
    for (; number >= 0x80; number >>= 7)
        head.bytes[head.size++] = static_cast<char>(number | 0x80);
    head.bytes[head.size++] = static_cast<char>(number);
}

std::uint64_t Take(const char*& from)
{
    if (const auto first = static_cast<unsigned char>(*from); first < 0x80)
    {
        ++from;
        return first; // as most are
    }
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += 7)
    {
        const auto byte = static_cast<unsigned char>(*from++);
        number |= std::uint64_t{byte & 0x7Fu} << shift;
        if (byte < 0x80)
            return number;
    }
}

OwnTexts TakeTexts(const char* from)
{
    const auto timestamp = static_cast<std::size_t>(Take(from));
    const auto body = static_cast<std::size_t>(Take(from));
    return {{from, timestamp}, {from + timestamp + 1, body}};
}

void Skip(const char*& from, int numbers)
{
    for (; numbers > 0; ++from)
        numbers -= static_cast<unsigned char>(*from) < 0x80;
}

// Small numbers of either sign are short.
std::uint32_t Fold(std::int32_t number)
{
    const auto bits = static_cast<std::uint32_t>(number);
    return bits << 1 ^ (number < 0 ? ~std::uint32_t{0} : 0);
}

std::int32_t Unfold(std::uint32_t folded)
{
    return static_cast<std::int32_t>(folded >> 1 ^ ((folded & 1) != 0 ? ~std::uint32_t{0} : 0));
}

std::uint32_t FlagsOf(const Record& record)
{
    std::uint32_t flags = 0;
    for (std::size_t i = 0; i < record.texts.size(); ++i)
        flags |= record.texts[i] != 0 ? 1u << i : 0;
    for (std::size_t i = 0; i < record.numbers.size(); ++i)
        flags |= record.numbers[i] != 0 ? 1u << (kFirstNumber + i) : 0;
    flags |= record.time != kNoTime ? kHasTime : 0;
    flags |= record.indent != 0 ? kHasIndent : 0;
    flags |= record.countsSourceLine ? kCountsSourceLine : 0;
    return flags;
}

std::uint32_t TakeFlags(const char*& from)
{
    const auto low = static_cast<unsigned char>(*from++);
    const auto high = static_cast<unsigned char>(*from++);
    return low | static_cast<std::uint32_t>(high) << 8;
}

Time TakeTime(const char*& from, std::uint32_t flags)
{
    Time time = kNoTime;
    if ((flags & kHasTime) != 0)
    {
        std::memcpy(&time, from, sizeof(time));
        from += sizeof(time);
    }
    return time;
}

} // namespace

RecordHead EncodeHead(const Record& record)
{
    RecordHead head;
    const std::uint32_t flags = FlagsOf(record);
    head.bytes[head.size++] = static_cast<char>(flags);
    head.bytes[head.size++] = static_cast<char>(flags >> 8);
    if ((flags & kHasTime) != 0)
    {
        std::memcpy(&head.bytes[head.size], &record.time, sizeof(record.time));
        head.size += sizeof(record.time);
    }
    Put(head, record.level);
    for (const std::uint32_t text : record.texts)
        if (text != 0)
            Put(head, text);
    for (const std::int32_t number : record.numbers)
        if (number != 0)
            Put(head, Fold(number));
    if ((flags & kHasIndent) != 0)
        Put(head, record.indent);
    Put(head, record.timestamp.size());
    Put(head, record.body.size());
    return head;
}

Record DecodeRecord(const char* bytes)
{
    Record record;
    const std::uint32_t flags = TakeFlags(bytes);
    record.time = TakeTime(bytes, flags);
    record.level = static_cast<std::uint32_t>(Take(bytes));
    // From one field that there is to the next.
    for (std::uint32_t left = flags & kTextFlags; left != 0; left &= left - 1)
        record.texts[static_cast<std::size_t>(std::countr_zero(left))] =
            static_cast<std::uint32_t>(Take(bytes));
    for (std::uint32_t left = flags >> kFirstNumber & kNumberFlags; left != 0; left &= left - 1)
        record.numbers[static_cast<std::size_t>(std::countr_zero(left))] =
            Unfold(static_cast<std::uint32_t>(Take(bytes)));
    if ((flags & kHasIndent) != 0)
        record.indent = static_cast<std::uint32_t>(Take(bytes));
    record.countsSourceLine = (flags & kCountsSourceLine) != 0;
    const OwnTexts texts = TakeTexts(bytes);
    record.timestamp = texts.timestamp;
    record.body = texts.body;
    return record;
}

Time DecodeTime(const char* bytes)
{
    const std::uint32_t flags = TakeFlags(bytes);
    return TakeTime(bytes, flags);
}

std::uint32_t DecodeLevel(const char* bytes)
{
    const std::uint32_t flags = TakeFlags(bytes);
    TakeTime(bytes, flags);
    return static_cast<std::uint32_t>(Take(bytes));
}

std::uint32_t DecodeText(const char* bytes, SharedText text)
{
    const std::uint32_t flags = TakeFlags(bytes);
    if ((flags & 1u << text) == 0)
        return 0;
    TakeTime(bytes, flags);
    Skip(bytes, 1 + std::popcount(flags & ((1u << text) - 1))); // the level and texts
    return static_cast<std::uint32_t>(Take(bytes));
}

OwnTexts DecodeTexts(const char* bytes)
{
    const std::uint32_t flags = TakeFlags(bytes);
    TakeTime(bytes, flags);
    Skip(bytes, 1 + std::popcount(flags & (kTextFlags | kNumberFlags << kFirstNumber | kHasIndent)));
    return TakeTexts(bytes);
}

} // namespace msgservice
