#include "zemacore/WideText.h"

#include "zemacore/CodePage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utf8proc.h>

namespace ZEMA
{
namespace
{

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kSharpS = 0xDF;
constexpr char32_t kHighSurrogate = 0xD800; // the first of 1,024, with the upper ten bits
constexpr char32_t kLowSurrogate = 0xDC00;  // the first of 1,024, with the lower ten bits
constexpr char32_t kBeyondSurrogates = 0xE000;
constexpr char32_t kBeyond16Bits = 0x10000;

// How many bytes at the beginning of a text are ASCII, or a few less.
std::size_t AsciiLength(const char* text, std::size_t length)
{
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t done = 0;
    for (std::uint64_t bytes = 0; length - done >= sizeof(bytes); done += sizeof(bytes))
    {
        std::memcpy(&bytes, text + done, sizeof(bytes));
        if ((bytes & kHighBits) != 0)
            return done;
    }
    while (done < length && static_cast<unsigned char>(text[done]) < 0x80)
        ++done;
    return done;
}

// The forms of UTF-8: how many bytes a character has by its first one, and the least character that needs so
// many.
struct Form
{
    std::size_t length;
    char32_t least;
    char32_t firstBits; // of the first byte
};

Form FormOf(unsigned char first)
{
    if (first < 0x80)
        return {1, 0, first};
    if (first >= 0xC0 && first < 0xE0)
        return {2, 0x80, first & 0x1Fu};
    if (first >= 0xE0 && first < 0xF0)
        return {3, 0x800, first & 0x0Fu};
    if (first >= 0xF0 && first < 0xF8)
        return {4, kBeyond16Bits, first & 0x07u};
    return {0, 0, 0};
}

// Takes a character from the beginning of a text: how many bytes it has, 0 if it is not valid.
std::size_t TakeCharacter(const char* text, std::size_t length, char32_t& character)
{
    const Form form = FormOf(static_cast<unsigned char>(text[0]));
    if (form.length == 0 || form.length > length)
        return 0;
    character = form.firstBits;
    for (std::size_t i = 1; i < form.length; ++i)
    {
        const unsigned char next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (next & 0x3Fu);
    }
    const bool surrogate = character >= kHighSurrogate && character < kBeyondSurrogates;
    return character >= form.least && character <= 0x10FFFF && !surrogate ? form.length : 0;
}

WideChar* PutWide(char32_t character, WideChar* to)
{
    if (character >= kBeyond16Bits)
    {
        *to++ = static_cast<WideChar>(kHighSurrogate + ((character - kBeyond16Bits) >> 10));
        character = kLowSurrogate + (character & 0x3FF);
    }
    *to++ = static_cast<WideChar>(character);
    return to;
}

// False if the text is not UTF-8. It never has more characters of 16 bits than bytes.
bool Utf8ToWide(const char* text, std::size_t length, WideString& wide)
{
    wide.resize(length);
    WideChar* to = wide.data();
    for (std::size_t done = 0; done < length;)
    {
        const std::size_t ascii = AsciiLength(text + done, length - done);
        to = std::copy(text + done, text + done + ascii, to);
        done += ascii;
        if (done == length)
            break;
        char32_t character = 0;
        const std::size_t taken = TakeCharacter(text + done, length - done, character);
        if (taken == 0)
            return false;
        to = PutWide(character, to);
        done += taken;
    }
    wide.resize(static_cast<std::size_t>(to - wide.data()));
    return true;
}

void PutUtf8(char32_t character, std::string& text)
{
    const auto put = [&](char32_t bits) { text += static_cast<char>(bits); };
    const auto putRest = [&](int shift) { put(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80)
    {
        put(character);
        return;
    }
    if (character < 0x800)
        put(0xC0 | character >> 6);
    else if (character < kBeyond16Bits)
    {
        put(0xE0 | character >> 12);
        putRest(6);
    }
    else
    {
        put(0xF0 | character >> 18);
        putRest(12);
        putRest(6);
    }
    putRest(0);
}

bool IsHighSurrogate(char32_t unit)
{
    return unit >= kHighSurrogate && unit < kLowSurrogate;
}

bool IsLowSurrogate(char32_t unit)
{
    return unit >= kLowSurrogate && unit < kBeyondSurrogates;
}

char32_t FromPair(char32_t high, char32_t low)
{
    return kBeyond16Bits + ((high - kHighSurrogate) << 10) + (low - kLowSurrogate);
}

} // namespace

bool IsAscii(const char* text, std::size_t length)
{
    return AsciiLength(text, length) == length;
}

TextKind GetTextKind(const char* text, std::size_t length)
{
    std::size_t done = AsciiLength(text, length);
    if (done == length)
        return TextKind::Ascii;
    for (char32_t character = 0; done < length; done += AsciiLength(text + done, length - done))
    {
        const std::size_t taken = TakeCharacter(text + done, length - done, character);
        if (taken == 0)
            return TextKind::CodePage;
        done += taken;
    }
    return TextKind::Utf8;
}

void ToWide(const char* text, std::size_t length, WideString& wide)
{
    if (!Utf8ToWide(text, length, wide))
        CodePageToWide(text, length, wide);
}

void FromWide(const WideChar* wide, std::size_t length, std::string& text)
{
    text.clear();
    for (std::size_t i = 0; i < length; ++i)
    {
        char32_t character = wide[i];
        if (IsHighSurrogate(character) && i + 1 < length && IsLowSurrogate(wide[i + 1]))
            character = FromPair(character, wide[++i]);
        else if (IsHighSurrogate(character) || IsLowSurrogate(character))
            character = kReplacement;
        PutUtf8(character, text);
    }
}

bool ToUtf8(const char* text, std::size_t length, std::string& utf8)
{
    if (GetTextKind(text, length) != TextKind::CodePage)
        return false;
    WideString wide;
    ToWide(text, length, wide);
    FromWide(wide.data(), wide.size(), utf8);
    return true;
}

void ToCapitals(WideString& text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        char32_t character = text[i];
        const bool isPair = IsHighSurrogate(character) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
        if (isPair)
            character = FromPair(character, text[i + 1]);
        const auto capital =
            static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(character)));
        // The sharp s has a capital in utf8proc and none in Unicode's table, nor where a user types it.
        if ((capital >= kBeyond16Bits) == isPair && character != kSharpS)
            PutWide(capital, &text[i]);
        i += isPair ? 1 : 0;
    }
}

std::size_t WholeCharacters(const char* text, std::size_t length)
{
    constexpr std::size_t kLongest = 4;
    for (std::size_t behind = 1; behind < kLongest && behind <= length; ++behind)
    {
        const unsigned char byte = static_cast<unsigned char>(text[length - behind]);
        if (byte >= 0xC0)
            return FormOf(byte).length > behind ? length - behind : length;
        if (byte < 0x80)
            break;
    }
    return length;
}

} // namespace ZEMA
