#include "host/commandline/Printable.h"
#include "logview/LineFind.h"
#include "tests/fuzz/Fuzz.h"
#include "vkgrafic/TextCells.h"

#include <optional>

namespace fuzz
{

namespace
{

// As Unicode's table of well-formed byte sequences has it, one character after the other.
std::optional<std::u32string> Decoded(std::string_view text)
{
    std::u32string characters;
    for (std::size_t i = 0; i < text.size();)
    {
        const auto byte = [&](std::size_t at) {
            return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
        };
        const unsigned first = byte(i);
        const unsigned second = byte(i + 1);
        const bool isTwo = first >= 0xC2 && first <= 0xDF && second >= 0x80 && second <= 0xBF;
        const bool isThree = first >= 0xE0 && first <= 0xEF && second >= (first == 0xE0 ? 0xA0u : 0x80u) &&
                             second <= (first == 0xED ? 0x9Fu : 0xBFu);
        const bool isFour = first >= 0xF0 && first <= 0xF4 && second >= (first == 0xF0 ? 0x90u : 0x80u) &&
                            second <= (first == 0xF4 ? 0x8Fu : 0xBFu);
        const std::size_t length = first < 0x80 ? 1 : isTwo ? 2 : isThree ? 3 : isFour ? 4 : 0;
        if (length == 0)
            return std::nullopt;
        char32_t character = length == 1 ? first : first & (0xFFu >> (length + 1));
        for (std::size_t k = 1; k < length; ++k)
        {
            if ((byte(i + k) & 0xC0) != 0x80)
                return std::nullopt;
            character = character << 6 | (byte(i + k) & 0x3F);
        }
        characters += character;
        i += length;
    }
    return characters;
}

ZEMA::WideString UnitsOf(const std::u32string& characters)
{
    ZEMA::WideString units;
    for (const char32_t character : characters)
    {
        const char32_t beyond = character - 0x10000;
        if (character >= 0x10000)
            units += static_cast<ZEMA::WideChar>(0xD800 + beyond / 0x400);
        units += static_cast<ZEMA::WideChar>(character < 0x10000 ? character : 0xDC00 + beyond % 0x400);
    }
    return units;
}

ZEMA::WideString WithoutHalves(ZEMA::WideString units)
{
    for (std::size_t i = 0; i < units.size(); ++i)
    {
        const bool isHigh = units[i] >= 0xD800 && units[i] <= 0xDBFF;
        if (isHigh && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF)
            ++i;
        else if (units[i] >= 0xD800 && units[i] <= 0xDFFF)
            units[i] = 0xFFFD;
    }
    return units;
}

void LayOut(std::string_view text)
{
    VkGrafic::TextCells cells;
    cells.Take(text.data(), text.size());
    const int length = static_cast<int>(text.size());
    int last = -1;
    for (int column = 0; column <= length; column = cells.EndOf(column))
    {
        Require(cells.BeginOf(column) == column, "the end of a character begins the next");
        const int cell = cells.CellOf(column);
        Require(cell > last && cell - last <= 2 && cell <= column, "a character takes one or two cells");
        Require(cells.ColumnOf(cell) == column, "a cell leads back to its character");
        Require(column == length || cells.ColumnOfUnit(cells.UnitOf(column)) == column,
                "a unit leads back to its character");
        last = cell;
    }
}

} // namespace

void Characters(std::string_view bytes)
{
    Input input(bytes);
    const std::string text(input.Bytes(input.Byte()));
    const std::string wanted(input.Bytes(input.Byte() % 8));
    const std::optional<std::u32string> decoded = Decoded(text);
    const ZEMA::TextKind kind = ZEMA::GetTextKind(text.data(), text.size());
    Require((kind != ZEMA::TextKind::CodePage) == decoded.has_value(), "what is UTF-8");
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    std::string back;
    ZEMA::FromWide(wide.data(), wide.size(), back);
    Require(!decoded || back == text, "UTF-8 comes back as it was");
    Require(decoded || wide.size() == text.size(), "a byte of the code page is a character");
    Require(!decoded || wide == UnitsOf(*decoded), "the units are those of the characters");
    ZEMA::WideString units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units += static_cast<ZEMA::WideChar>(Input(bytes.substr(i)).Number());
    ZEMA::FromWide(units.data(), units.size(), back);
    const std::optional<std::u32string> characters = Decoded(back);
    Require(characters.has_value(), "any units become UTF-8");
    Require(UnitsOf(*characters) == WithoutHalves(units), "half a pair is replaced, nothing else is");

    const std::size_t whole = ZEMA::WholeCharacters(text.data(), text.size());
    Require(whole <= text.size() && text.size() - whole < 4,
            "of a character begun at the end, three bytes at most");
    Require(!decoded || whole == text.size(), "nothing is begun where all is whole");
    for (std::size_t cut = 0; decoded && cut < text.size(); ++cut)
        Require(
            Decoded(std::string_view(text).substr(0, ZEMA::WholeCharacters(text.data(), cut))).has_value(),
            "a part of whole characters is UTF-8");

    LayOut(text);
    const std::string shown = commandline::Printable(text);
    Require(std::none_of(shown.begin(), shown.end(),
                         [](char byte) {
                             return (static_cast<unsigned char>(byte) < ' ' && byte != '\t') || byte == 0x7F;
                         }),
            "a terminal obeys nothing");
    Require(Decoded(shown).has_value(), "a terminal gets UTF-8");

    ZEMA::WideString capitals = wide;
    ZEMA::ToCapitals(capitals);
    Require(capitals.size() == wide.size(), "capitals keep the length");
    const std::optional<int> found = logview::FindInLine(text, wanted, 0);
    Require(!found || (*found >= 0 && *found <= static_cast<int>(text.size())), "a match lies in the line");
}

} // namespace fuzz
