// Text of any language in cells of one width: which of its bytes stand where.
#pragma once

#include "zemacore/WideText.h"

#include <vector>

namespace VkGrafic
{

// Columns are bytes of a text, counted from 0, and cells are what its characters are shown in. The text is
// what zemacore/WideText.h has it to be.
//
// A character as its reader sees it (a letter with its marks, a flag, an emoji made of several: Unicode's
// grapheme clusters) is never parted. It takes one cell, or two where the fonts of its script do (Unicode's
// East Asian width, or an emoji). A tab and any other control character take one. Characters stand in the
// order of their bytes from left to right, those of Arabic and Hebrew too. Columns before the text and behind
// it take a cell each.
class QMPLATFORM_API TextCells
{
public:
    // Where a character begins.
    struct Character
    {
        int column;
        int cell;
        int unit; // of Wide()
    };

    // Lays out a text, of which nothing is kept but what the operations tell, in place of the one before.
    // Without one, each column is a cell.
    void Take(const char* text, std::size_t length);
    void Clear();

    // The cell where the character begins that has the byte at `column`, and the column where the one begins
    // that covers `cell`.
    int CellOf(int column) const;
    int ColumnOf(int cell) const;

    // Where the character that has the byte at `column` begins, and where the next one does.
    int BeginOf(int column) const;
    int EndOf(int column) const;

    // The column that lies so many characters behind one.
    int ColumnBehind(int column, int characters) const;

    // The unit of Wide() where the character begins that has the byte at `column`, and the column where the
    // one begins that has `unit`.
    int UnitOf(int column) const;
    int ColumnOfUnit(int unit) const;

    // The characters and, last, the end. Empty for a text that is ASCII: each byte is one.
    const std::vector<Character>& Characters() const { return m_characters; }

    // The text that is not ASCII in UTF-16.
    const ZEMA::WideString& Wide() const { return m_wide; }

private:
    template <int Character::*place> std::size_t IndexAt(int at) const;

    std::vector<Character> m_characters;
    ZEMA::WideString m_wide;
};

} // namespace VkGrafic
