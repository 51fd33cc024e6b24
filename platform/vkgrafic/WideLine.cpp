#include "vkgrafic/WideLine.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utf8proc.h>

namespace vkgrafic
{
namespace
{

constexpr WideChar kMiddleDot = 0xB7;
constexpr std::size_t kEllipsisLength = 3;
constexpr char32_t kJoiner = 0x200D;

struct CharacterRange
{
    char32_t first;
    char32_t last;
};

// Letters, digits, signs and ideographs of scripts that run from left to right, one glyph after another.
constexpr CharacterRange kSimple[] = {{0x0020, 0x007E}, {0x00A0, 0x00AC}, {0x00AE, 0x02FF}, {0x0370, 0x0482},
                                      {0x048A, 0x058F}, {0x10A0, 0x10FF}, {0x1D00, 0x1DBF}, {0x1E00, 0x200A},
                                      {0x2010, 0x2027}, {0x2030, 0x205E}, {0x2070, 0x20CF}, {0x2100, 0x2DFF},
                                      {0x2E00, 0x3029}, {0x3030, 0x3098}, {0x309B, 0xA66E}, {0xAC00, 0xD7A3},
                                      {0xE000, 0xFAFF}, {0xFF01, 0xFF9D}, {0xFFA0, 0xFFEE}, {0xFFFC, 0xFFFD}};

template <std::size_t count> bool IsIn(const CharacterRange (&ranges)[count], char32_t character)
{
    const auto found =
        std::upper_bound(std::begin(ranges), std::end(ranges), character,
                         [](char32_t c, const CharacterRange& range) { return c < range.first; });
    return found != std::begin(ranges) && character <= std::prev(found)->last;
}

// Whether it never begins a character as its reader sees it: a mark, a joiner, a skin tone, a vowel or a
// final consonant of Hangul.
bool IsExtending(char32_t character)
{
    switch (utf8proc_get_property(static_cast<utf8proc_int32_t>(character))->boundclass)
    {
    case UTF8PROC_BOUNDCLASS_EXTEND:
    case UTF8PROC_BOUNDCLASS_SPACINGMARK:
    case UTF8PROC_BOUNDCLASS_ZWJ:
    case UTF8PROC_BOUNDCLASS_V:
    case UTF8PROC_BOUNDCLASS_T:
        return true;
    default:
        return false;
    }
}

bool IsHighSurrogate(WideChar unit)
{
    return (unit & 0xFC00) == 0xD800;
}

bool IsLowSurrogate(WideChar unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

char32_t CharacterAt(const WideChar* text, std::size_t length, std::size_t at)
{
    if (!IsHighSurrogate(text[at]) || at + 1 >= length || !IsLowSurrogate(text[at + 1]))
        return text[at];
    return 0x10000 + ((text[at] & 0x3FFu) << 10) + (text[at + 1] & 0x3FFu);
}

// Two of them are a flag.
bool IsFlagLetter(const WideChar* text, std::size_t length, std::size_t at)
{
    const char32_t character = CharacterAt(text, length, at);
    return character >= 0x1F1E6 && character <= 0x1F1FF;
}

} // namespace

bool IsSimple(WideChar unit)
{
    return IsIn(kSimple, unit) && !IsExtending(unit);
}

WideChar VisibleUnit(WideChar unit)
{
    if (unit == '\t')
        return ' ';
    return unit < ' ' || (unit >= 0x7F && unit < 0xA0) ? kMiddleDot : unit;
}

bool BeginsCharacter(const WideChar* text, std::size_t length, std::size_t at)
{
    if (at == 0 || at >= length)
        return true;
    if (IsHighSurrogate(text[at - 1]) && IsLowSurrogate(text[at]))
        return false;
    if (text[at - 1] == kJoiner || IsExtending(CharacterAt(text, length, at)))
        return false;
    if (!IsFlagLetter(text, length, at))
        return true;
    std::size_t before = 0;
    while (at >= 2 * (before + 1) && IsFlagLetter(text, length, at - 2 * (before + 1)))
        ++before;
    return before % 2 == 0;
}

std::size_t EndOfPiece(const WideChar* text, std::size_t length, std::size_t begin, std::size_t longest)
{
    if (length - begin <= longest)
        return length;
    for (std::size_t end = begin + longest; end > begin; --end)
        if (BeginsCharacter(text, length, end))
            return end;
    return begin + longest;
}

int WideLine::Width() const
{
    std::int64_t width = 0;
    for (const int advance : advances)
        width += advance;
    return static_cast<int>(std::min<std::int64_t>(width, std::numeric_limits<int>::max()));
}

std::size_t WideLine::Fitting(int width) const
{
    std::int64_t end = 0;
    std::size_t fitting = 0;
    while (fitting < advances.size() && (end += advances[fitting]) <= width)
        ++fitting;
    while (!BeginsCharacter(text.data(), text.size(), fitting))
        --fitting;
    return fitting;
}

void WideLine::CutTo(int width, int pointWidth)
{
    const std::size_t kept = Fitting(width - static_cast<int>(kEllipsisLength) * pointWidth);
    text.resize(kept);
    text.append(kEllipsisLength, '.');
    advances.resize(kept);
    advances.resize(text.size(), pointWidth);
}

} // namespace vkgrafic
