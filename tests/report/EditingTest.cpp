// Where editors stand and what they begin with, against tables.
#include "report/model/Editing.h"
#include "ReportItem.h"
#include "ReportStyle.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>

namespace
{

using namespace report;

TEST(Editing, BeginsOnCellsThatAreThere)
{
    // The row of 3, the column, the style; the state of an item.
    const std::tuple<int, int, std::uint32_t, bool> places[] = {{0, 0, 0, true},
                                                                {2, 5, 0, true},
                                                                {3, 0, RVS_FIXEDROW, false},
                                                                {0, -1, RVS_FIXEDROW, false},
                                                                {-1, 0, 0, false},
                                                                {-2, 0, RVS_FIXEDROW, false},
                                                                {-1, 0, RVS_FIXEDROW, true},
                                                                {-1, -1, RVS_FIXEDROW, false}};
    for (const auto& [row, column, style, expected] : places)
        EXPECT_EQ(expected, IsPlaceToEdit(row, column, 3, style)) << row << ' ' << column;
    EXPECT_TRUE(MayEdit(RVIS_BOLD | RVIS_FOCUSED));
    EXPECT_FALSE(MayEdit(RVIS_BOLD | RVIS_READONLY));
}

TEST(Editing, StandsWhereTheTextIs)
{
    // The cell's width right of its indentation and its contents; where the editor begins and ends, if it
    // does.
    const std::tuple<int, CellContents, std::optional<std::array<int, 2>>> cases[] = {
        {80, {}, {{106, 174}}},
        {80, {true, false, false, false}, {{128, 174}}},
        {80, {false, true, false, false}, {{120, 174}}},
        {80, {true, true, false, false}, {{142, 174}}},
        {80, {false, false, true, true}, {{142, 174}}},
        {12, {}, {{106, 106}}},
        {11, {}, {}},
        {33, {true, false, false, false}, {}},
        {0, {}, {}},
    };
    const View view = {.margin = 6, .imageWidth = 16, .checkWidth = 8};
    for (const auto& [width, contents, expected] : cases)
    {
        const ShownCell cell = {.left = 60,
                                .rect = {100, 10, 100 + width, 30}}; // the indentation is the row's
        const std::optional<Rect> rect = EditorRect(CellLayout(view), cell, contents);
        ASSERT_EQ(expected.has_value(), rect.has_value()) << width;
        if (rect)
            EXPECT_EQ((Rect{(*expected)[0], 12, (*expected)[1], 30}), *rect) << width;
    }
}

TEST(Editing, GrowsWithItsTextUpToTheEdge)
{
    // The width of the text, the edge; where the editor ends, that begins at 100 and ended at 150.
    const std::tuple<int, int, int> cases[] = {{0, 300, 150},   {30, 300, 150},  {31, 300, 151},
                                               {180, 300, 300}, {181, 300, 300}, {500, 300, 300},
                                               {500, 120, 150}};
    for (const auto& [width, edge, right] : cases)
        EXPECT_EQ(right, GrownRight({100, 10, 150, 30}, width, edge)) << width << ' ' << edge;
}

TEST(Editing, GoesOnFromCellToCell)
{
    EXPECT_EQ(GoOn::Next, GoOnAfter(9, false));
    EXPECT_EQ(GoOn::Previous, GoOnAfter(9, true));
    EXPECT_EQ(GoOn::Below, GoOnAfter(13, true));
    EXPECT_EQ(GoOn::Nowhere, GoOnAfter(27, false));
    // From a cell of 2 rows with 3 columns: the cells to the right, to the left and below.
    const std::tuple<CellPlace, CellPlace, CellPlace, CellPlace> cases[] = {
        {{0, 0}, {0, 1}, {kNoRow, 0}, {1, 0}},
        {{0, 2}, {1, 0}, {0, 1}, {1, 2}},
        {{1, 0}, {1, 1}, {0, 2}, {kNoRow, 0}},
        {{1, 2}, {kNoRow, 0}, {1, 1}, {kNoRow, 0}},
        {{kFixedRow, 0}, {kFixedRow, 1}, {kNoRow, 0}, {kNoRow, 0}},
        {{kFixedRow, 2}, {kNoRow, 0}, {kFixedRow, 1}, {kNoRow, 0}},
    };
    for (const auto& [cell, right, left, below] : cases)
        for (const auto& [goOn, expected] :
             {std::pair(GoOn::Next, right), std::pair(GoOn::Previous, left), std::pair(GoOn::Below, below)})
        {
            const CellPlace next = NextCell(cell, goOn, 2, 3);
            EXPECT_EQ(std::pair(expected.row, expected.column), std::pair(next.row, next.column))
                << cell.row << ' ' << cell.column << ' ' << static_cast<int>(goOn);
        }
    EXPECT_EQ(kNoRow, NextCell({0, 0}, GoOn::Below, 5, 0).row) << "without columns";
}

TEST(Editing, BeginsWithItsKey)
{
    // The key, whether the user has typed it; whether all is selected, and what is typed.
    const std::tuple<unsigned, bool, bool, unsigned> cases[] = {
        {1, false, false, 0},   {13, false, false, 0},    {8, false, false, 8},     {9, false, true, 0},
        {32, false, true, 0},   {33, false, true, 0},     {40, false, true, 0},     {41, false, true, 41},
        {31, false, true, 31},  {'x', false, true, 'x'},  {'x', true, true, 'x'},   {27, false, true, 27},
        {'!', true, true, '!'}, {'(', true, true, '('},   {32, true, true, 0},      {8, true, false, 8},
        {13, true, false, 0},   {0xE9, true, true, 0xE9}, {0xE9, false, true, 0xE9}};
    for (const auto& [key, isTyped, selectsAll, character] : cases)
    {
        const Primer primer = PrimerOf(key, isTyped);
        EXPECT_EQ(selectsAll, primer.selectsAll) << key;
        EXPECT_EQ(character, primer.character) << key;
    }
}

} // namespace
