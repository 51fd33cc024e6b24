#include "msgservice/text/LevelWords.h"

#include "msgservice/Message.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace msgservice
{

namespace
{

struct LevelWord
{
    std::string_view word; // in lower case
    Level level;
};

constexpr LevelWord kLevelWords[] = {
    {"a", kFatalLevel},
    {"alert", kFatalLevel},
    {"all", kTraceLevel},
    {"assert", kFatalLevel},
    {"audit", kInfoLevel},
    {"c", kFatalLevel},
    {"config", kDebugLevel},
    {"context", kInfoLevel},
    {"crit", kFatalLevel},
    {"critical", kFatalLevel},
    {"crt", kFatalLevel},
    {"d", kDebugLevel},
    {"dbg", kDebugLevel},
    {"dbug", kDebugLevel},
    {"debg", kDebugLevel},
    {"debu", kDebugLevel},
    {"debug", kDebugLevel},
    {"default", kInfoLevel},
    {"deprecated", kWarningLevel},
    {"detail", kInfoLevel},
    {"display", kInfoLevel},
    {"dpanic", kFatalLevel},
    {"e", kErrorLevel},
    {"emerg", kFatalLevel},
    {"emergency", kFatalLevel},
    {"eror", kErrorLevel},
    {"err", kErrorLevel},
    {"erro", kErrorLevel},
    {"error", kErrorLevel},
    {"exception", kErrorLevel},
    {"f", kFatalLevel},
    {"fail", kErrorLevel},
    {"failure", kErrorLevel},
    {"fatal", kFatalLevel},
    {"fatl", kFatalLevel},
    {"fault", kFatalLevel},
    {"fine", kDebugLevel},
    {"finer", kTraceLevel},
    {"finest", kTraceLevel},
    {"ftl", kFatalLevel},
    {"hint", kInfoLevel},
    {"i", kInfoLevel},
    {"inf", kInfoLevel},
    {"info", kInfoLevel},
    {"information", kInfoLevel},
    {"informational", kInfoLevel},
    {"log", kInfoLevel},
    {"n", kInfoLevel},
    {"note", kInfoLevel},
    {"notic", kInfoLevel},
    {"notice", kInfoLevel},
    {"ntc", kInfoLevel},
    {"panic", kFatalLevel},
    {"severe", kErrorLevel},
    {"silly", kTraceLevel},
    {"statement", kInfoLevel},
    {"success", kInfoLevel},
    {"system", kInfoLevel},
    {"t", kTraceLevel},
    {"trac", kTraceLevel},
    {"trace", kTraceLevel},
    {"trc", kTraceLevel},
    {"trce", kTraceLevel},
    {"v", kDebugLevel},
    {"vrb", kDebugLevel},
    {"verb", kDebugLevel},
    {"verbose", kDebugLevel},
    {"w", kWarningLevel},
    {"warn", kWarningLevel},
    {"warni", kWarningLevel},
    {"warning", kWarningLevel},
    {"wrn", kWarningLevel},
};

constexpr std::size_t kLongest = 13;

template <typename Number> Number Loaded(const char* text)
{
    Number number = 0;
    std::memcpy(&number, text, sizeof(number));
    return number;
}

// The letters in lower case and their number: no two words of the table have the same. Of more than eight
// letters the first and the last four count, of fewer all.
std::uint64_t KeyOf(std::string_view word)
{
    const std::size_t size = word.size();
    std::uint64_t key = 0;
    if (size >= 4)
        key = Loaded<std::uint32_t>(word.data()) |
              std::uint64_t{Loaded<std::uint32_t>(word.data() + size - 4)} << 32;
    else
        for (const char c : word)
            key = key << 8 | static_cast<unsigned char>(c);
    return (key | 0x2020202020202020) ^ size;
}

// The words by their keys, so that a word is found at the first or second look.
class WordTable
{
public:
    WordTable()
    {
        for (const LevelWord& word : kLevelWords)
        {
            std::size_t at = Start(KeyOf(word.word));
            while (m_entries[at].key != 0)
                at = (at + 1) % kSize;
            m_entries[at] = {KeyOf(word.word), word.level};
        }
    }

    bool Find(std::uint64_t key, std::uint32_t& level) const
    {
        for (std::size_t at = Start(key); m_entries[at].key != 0; at = (at + 1) % kSize)
            if (m_entries[at].key == key)
            {
                level = m_entries[at].level;
                return true;
            }
        return false;
    }

private:
    struct Entry
    {
        std::uint64_t key = 0;
        std::uint32_t level = 0;
    };
    static constexpr std::size_t kSize = 256;

    static std::size_t Start(std::uint64_t key) { return key * 0x9E3779B97F4A7C15 >> 56; }

    std::array<Entry, kSize> m_entries = {};
};

const WordTable kWordTable;

} // namespace

bool FindLevel(std::string_view word, std::uint32_t& level)
{
    if (word.size() > 1 && word.back() >= '0' && word.back() <= '9')
        word.remove_suffix(1);
    return !word.empty() && word.size() <= kLongest && kWordTable.Find(KeyOf(word), level);
}

std::uint32_t LevelOfSeverity(unsigned severity)
{
    constexpr std::array<Level, 8> kLevels = {kFatalLevel,   kFatalLevel, kFatalLevel, kErrorLevel,
                                              kWarningLevel, kInfoLevel,  kInfoLevel,  kDebugLevel};
    return kLevels[severity & 7];
}

std::uint32_t LevelOfNumber(double number)
{
    if (number >= 0 && number < 8)
        return LevelOfSeverity(static_cast<unsigned>(number));
    if (number < 10 || number >= 70)
        return kInfoLevel;
    return static_cast<unsigned>(number) / 10 - 1;
}

std::uint32_t LevelOfStatus(unsigned status)
{
    return status >= 500 ? kErrorLevel : status >= 400 ? kWarningLevel : kInfoLevel;
}

} // namespace msgservice
