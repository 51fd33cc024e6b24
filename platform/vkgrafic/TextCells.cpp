#include "vkgrafic/TextCells.h"

#include "zemacore/CodePage.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utf8proc.h>

namespace VkGrafic
{
namespace
{

using ZEMA::WideChar;

constexpr std::size_t kLongest = std::numeric_limits<int>::max(); // bytes
constexpr utf8proc_int32_t kEmojiSelector = 0xFE0F;

// Takes the character that begins at `unit`, which moves on.
utf8proc_int32_t TakeCharacter(const ZEMA::WideString& wide, std::size_t& unit)
{
    const std::uint32_t first = wide[unit++];
    const bool isPair =
        (first & 0xFC00) == 0xD800 && unit < wide.size() && (std::uint32_t{wide[unit]} & 0xFC00) == 0xDC00;
    if (!isPair)
        return static_cast<utf8proc_int32_t>(first);
    return static_cast<utf8proc_int32_t>(0x10000 + ((first & 0x3FF) << 10) + (wide[unit++] & 0x3FFu));
}

int Utf8Length(utf8proc_int32_t character)
{
    if (character < 0x80)
        return 1;
    if (character < 0x800)
        return 2;
    return character < 0x10000 ? 3 : 4;
}

int Later(int at, std::int64_t by)
{
    return static_cast<int>(std::min<std::int64_t>(at + by, std::numeric_limits<int>::max()));
}

} // namespace

void TextCells::Clear()
{
    m_characters.clear();
    m_wide.clear();
}

void TextCells::Take(const char* text, std::size_t length)
{
    Clear();
    length = std::min(length, kLongest);
    const ZEMA::TextKind kind = ZEMA::GetTextKind(text, length);
    if (kind == ZEMA::TextKind::Ascii)
        return;
    ZEMA::ToWide(text, length, m_wide);

    utf8proc_int32_t last = 0;
    utf8proc_int32_t state = 0;
    std::size_t column = 0;
    int cell = 0;
    int width = 0; // of the character so far
    for (std::size_t unit = 0; unit < m_wide.size();)
    {
        const std::size_t begin = unit;
        const utf8proc_int32_t character = TakeCharacter(m_wide, unit);
        const bool isBreak = begin == 0 || utf8proc_grapheme_break_stateful(last, character, &state);
        if (isBreak || character == '\n') // which Unicode takes together with the return before it
        {
            cell += begin == 0 ? 0 : std::clamp(width, 1, 2);
            m_characters.push_back({static_cast<int>(column), cell, static_cast<int>(begin)});
            width = 0;
        }
        width += character == kEmojiSelector ? 1 : utf8proc_charwidth(character);
        column += kind == ZEMA::TextKind::Utf8
                      ? static_cast<std::size_t>(Utf8Length(character))
                      : ZEMA::CodePageCharacterLength(text + column, length - column);
        column = std::min(column, length);
        last = character;
    }
    cell += std::clamp(width, 1, 2);
    m_characters.push_back({static_cast<int>(length), cell, static_cast<int>(m_wide.size())});
}

// Of the character that a column, cell or unit belongs to; that of the end for what lies behind it.
template <int TextCells::Character::*place> std::size_t TextCells::IndexAt(int at) const
{
    const auto behind =
        std::upper_bound(m_characters.begin(), m_characters.end(), at,
                         [](int wanted, const Character& next) { return wanted < next.*place; });
    return static_cast<std::size_t>(behind - m_characters.begin()) - 1;
}

int TextCells::CellOf(int column) const
{
    if (m_characters.empty() || column < 0)
        return column;
    const Character& end = m_characters.back();
    return column < end.column ? m_characters[IndexAt<&Character::column>(column)].cell
                               : end.cell + (column - end.column);
}

int TextCells::ColumnOf(int cell) const
{
    if (m_characters.empty() || cell < 0)
        return cell;
    const Character& end = m_characters.back();
    return cell < end.cell ? m_characters[IndexAt<&Character::cell>(cell)].column
                           : Later(end.column, cell - end.cell);
}

int TextCells::BeginOf(int column) const
{
    if (m_characters.empty() || column < 0 || column >= m_characters.back().column)
        return column;
    return m_characters[IndexAt<&Character::column>(column)].column;
}

int TextCells::EndOf(int column) const
{
    return ColumnBehind(column, 1);
}

int TextCells::ColumnBehind(int column, int characters) const
{
    if (m_characters.empty() || column < 0 || column >= m_characters.back().column)
        return Later(column, characters);
    const std::size_t end = m_characters.size() - 1;
    const std::size_t index = IndexAt<&Character::column>(column) + static_cast<std::size_t>(characters);
    return index <= end ? m_characters[index].column
                        : Later(m_characters[end].column, static_cast<std::int64_t>(index - end));
}

int TextCells::UnitOf(int column) const
{
    if (m_characters.empty() || column < 0)
        return column;
    return m_characters[IndexAt<&Character::column>(column)].unit;
}

int TextCells::ColumnOfUnit(int unit) const
{
    if (m_characters.empty() || unit < 0)
        return unit;
    return m_characters[IndexAt<&Character::unit>(unit)].column;
}

} // namespace VkGrafic
