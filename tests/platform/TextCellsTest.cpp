#include "vkgrafic/TextCells.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace
{

using VkGrafic::TextCells;

struct Piece
{
    std::string bytes;
    int cells;
};

// Each a character to its reader.
const std::vector<Piece> kPieces = {
    {"a", 1},
    {" ", 1},
    {"\t", 1},
    {"\r", 1},
    {"\n", 1},
    {"\u00E4", 1},
    {"e\u0301\u0327", 1},
    {"\u0416", 1},
    {"\u03A9", 1},
    {"\u05D0", 1},
    {"\u0085", 1}, // a control character
    {"\u65E5", 2},
    {"\uD55C", 2},
    {"\u1112\u1161\u11AB", 2}, // of three letters
    {"\uFF21", 2},
    {"\uFF71", 1}, // half as wide
    {"\U0001F600", 2},
    {"\U0001F44D\U0001F3FD", 2},
    {"\U0001F469\u200D\U0001F680", 2},
    {"\U0001F1E9\U0001F1EA", 2},
    {"\u2764\uFE0F", 2}, // shown as an emoji
    {"\u2764", 1},
    {"\u0915\u093F", 1},
    {"\U00020000", 2},
};

// Every answer about a text of such pieces, against going through them one by one.
void ExpectLaidOut(const std::vector<Piece>& pieces)
{
    std::string text;
    std::vector<int> columns, cells;
    int cell = 0;
    for (const Piece& piece : pieces)
    {
        columns.insert(columns.end(), piece.bytes.size(), static_cast<int>(text.size()));
        cells.insert(cells.end(), piece.bytes.size(), cell);
        text += piece.bytes;
        cell += piece.cells;
    }
    SCOPED_TRACE(text);
    TextCells laidOut;
    laidOut.Take(text.data(), text.size());
    const int length = static_cast<int>(text.size());
    for (int beyond = 0; beyond < 3; ++beyond) // a cell for each column
    {
        columns.push_back(length + beyond);
        cells.push_back(cell + beyond);
    }
    for (int column = 0; column < length + 2; ++column)
    {
        const auto at = static_cast<std::size_t>(column);
        EXPECT_EQ(cells[at], laidOut.CellOf(column)) << column;
        EXPECT_EQ(columns[at], laidOut.BeginOf(column)) << column;
        std::size_t next = at;
        while (columns[next] == columns[at])
            ++next;
        EXPECT_EQ(columns[next], laidOut.EndOf(column)) << column;
        EXPECT_EQ(columns[next], laidOut.ColumnBehind(column, 1)) << column;
        for (int covered = cells[at]; covered < cells[next]; ++covered)
            EXPECT_EQ(columns[at], laidOut.ColumnOf(covered)) << covered;
        if (column <= length)
            EXPECT_EQ(columns[at], laidOut.ColumnOfUnit(laidOut.UnitOf(column))) << column;
    }
    EXPECT_EQ(length, laidOut.ColumnBehind(0, static_cast<int>(pieces.size())));
    EXPECT_EQ(-2, laidOut.CellOf(-2));
    EXPECT_EQ(-2, laidOut.ColumnOf(-2));
    EXPECT_EQ(INT_MAX, laidOut.EndOf(INT_MAX));
    EXPECT_LE(length, laidOut.ColumnOf(INT_MAX));
}

TEST(TextCells, KeepCharactersTogetherAndGiveThemTheirRoom)
{
    for (const Piece& piece : kPieces)
        ExpectLaidOut({piece});
    for (unsigned seed = 0; seed < 300; ++seed)
    {
        Random random(seed);
        std::vector<Piece> pieces;
        for (int count = random(12); count > 0; --count)
        {
            const Piece& piece = kPieces[static_cast<std::size_t>(random(kPieces.size()))];
            pieces.push_back(piece);
        }
        ExpectLaidOut(pieces);
    }
}

TEST(TextCells, GiveEachByteOfACodePageACell)
{
    std::vector<Piece> pieces = {{"\xFF", 1}};
    for (int byte = 0; byte < 256; ++byte)
        pieces.push_back({std::string(1, static_cast<char>(byte)), 1});
    ExpectLaidOut(pieces);
}

TEST(TextCells, TakeWhatIsNoCharacterByItself)
{
    ExpectLaidOut({{"\u0301", 1}, {"\n", 1}, {"\u0301\u200D", 1}, {"\U0001F1E9", 1}});
    TextCells cells;
    cells.Take("\u65E5", 3);
    cells.Clear();
    EXPECT_EQ(2, cells.CellOf(2));
}

} // namespace
