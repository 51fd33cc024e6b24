// What each key and click does, row by row.
#include "report/model/ScrollPosition.h"
#include "tests/report/InputList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <set>
#include <string>

namespace
{

using namespace report;
using List = InputList;

// Focus, first row, anchor, and what was called.
std::string State(const List& list)
{
    return std::to_string(list.selection.focusRow) + " top " + std::to_string(list.top) + " anchor " +
           std::to_string(list.selection.anchor) + ':' + list.log;
}

constexpr unsigned Number(Key key)
{
    return static_cast<unsigned>(key);
}

TEST(Input, KeysMoveFocusAndSelection)
{
    const Modifiers none, shift{true, false}, control{false, true}, both{true, true};
    const struct
    {
        int line;
        Key key;
        Modifiers modifiers;
        int focus, top;
        const char* expected;
        int rows = 100;
        bool fixedRow = false;
        std::set<int> hidden = {};
    } cases[] = {
        // The anchor is row 20 before each.
        {__LINE__, Key::Down, none, 5, 0, "6 top 0 anchor 6: select 6..6"},
        {__LINE__, Key::Down, none, 9, 0, "10 top 1 anchor 10: select 10..10"},
        {__LINE__, Key::Down, control, 5, 0, "6 top 0 anchor 6: select 6..6 focus only"},
        {__LINE__, Key::Down, shift, 5, 0, "6 top 0 anchor 20: select 6..20"},
        {__LINE__, Key::Down, both, 5, 0, "6 top 0 anchor 20: select 6..20"},
        {__LINE__, Key::Down, none, 99, 90, "99 top 90 anchor 20:"},
        {__LINE__, Key::Down, none, kNoRow, 0, "0 top 0 anchor 0: select 0..0"},
        {__LINE__, Key::Down, none, kNoRow, 0, "0 top 0 anchor 0: select 0..0", 100, true},
        {__LINE__, Key::Down, none, kNoRow, 0, "-2 top 0 anchor 20:", 0},
        {__LINE__, Key::Up, none, 5, 5, "4 top 4 anchor 4: select 4..4"},
        {__LINE__, Key::Up, shift, 5, 5, "4 top 4 anchor 20: select 4..20"},
        {__LINE__, Key::Up, none, 0, 0, "0 top 0 anchor 20:"},
        {__LINE__, Key::Up, none, 0, 0, "0 top 0 anchor 0: select 0..0", 100, true},
        {__LINE__, Key::Up, none, kNoRow, 0, "-2 top 0 anchor 20:"},
        {__LINE__, Key::PageUp, none, 55, 50, "49 top 49 anchor 49: select 49..49"},
        {__LINE__, Key::PageUp, none, 50, 50, "40 top 40 anchor 40: select 40..40"},
        {__LINE__, Key::PageUp, none, 3, 0, "0 top 0 anchor 0: select 0..0"},
        {__LINE__, Key::PageUp, shift, 50, 50, "40 top 40 anchor 20: select 40..20"},
        {__LINE__, Key::PageUp, control, 50, 50, "40 top 40 anchor 40: select 40..40 focus only"},
        {__LINE__, Key::PageUp, none, kNoRow, 0, "-2 top 0 anchor 20:", 0},
        {__LINE__, Key::PageDown, none, 55, 50, "60 top 51 anchor 60: select 60..60"},
        {__LINE__, Key::PageDown, none, 59, 50, "69 top 60 anchor 69: select 69..69"},
        {__LINE__, Key::PageDown, none, 98, 90, "99 top 90 anchor 99: select 99..99"},
        {__LINE__, Key::PageDown, shift, 59, 50, "69 top 60 anchor 20: select 69..20"},
        {__LINE__, Key::End, none, 5, 0, "99 top 90 anchor 99: select 99..99"},
        {__LINE__, Key::End, control, 5, 0, "99 top 90 anchor 99: select 99..99 focus only"},
        {__LINE__, Key::End, shift, 5, 0, "99 top 90 anchor 20: select 99..20"},
        {__LINE__, Key::End, none, 99, 0, "99 top 0 anchor 20:"},
        {__LINE__, Key::Home, none, 50, 45, "0 top 0 anchor 0: select 0..0"},
        {__LINE__, Key::Home, shift, 50, 45, "0 top 0 anchor 20: select 0..20"},
        {__LINE__, Key::Home, none, 0, 45, "0 top 45 anchor 20:"},
        {__LINE__, Key::Space, none, 5, 0, "5 top 0 anchor 20: select 5..5 add"},
        {__LINE__, Key::Space, control, 5, 0, "5 top 0 anchor 20: select 5..5 toggle"},
        {__LINE__, Key::Space, none, kNoRow, 0, "-2 top 0 anchor 20:"},
        {__LINE__, Key::Down, shift, 5, 0, "6 top 0 anchor 20: select 6..9", 10}, // the anchor's row has gone
        {__LINE__, Key::Down, none, 9, 0, "9 top 0 anchor 20:", 10},
        {__LINE__, Key::Down, none, 12, 0, "12 top 0 anchor 20:", 10},
        {__LINE__, Key::Up, none, 12, 0, "9 top 0 anchor 9: select 9..9", 10},
        {__LINE__, Key::Down, none, 0, 0, "3 top 0 anchor 3: select 3..3", 100, false, {1, 2}},
        {__LINE__, Key::Down, none, kNoRow, 0, "1 top 0 anchor 1: select 1..1", 100, false, {0}},
        {__LINE__, Key::Up, none, 3, 0, "0 top 0 anchor 0: select 0..0", 100, false, {1, 2}},
        {__LINE__, Key::End, none, 5, 0, "97 top 90 anchor 97: select 97..97", 100, false, {98, 99}},
        {__LINE__, Key::Home, none, 50, 45, "2 top 0 anchor 2: select 2..2", 100, false, {0, 1}},
        {__LINE__, Key::Down, none, 97, 90, "97 top 90 anchor 97: select 97..97", 100, false, {98, 99}},
        {__LINE__, Key::Left, none, 5, 0, "5 top 0 anchor 20: left"},
        {__LINE__, Key::Right, shift, 5, 0, "5 top 0 anchor 20: right"},
    };
    for (const auto& each : cases)
    {
        List list;
        list.rows = each.rows;
        list.fixedRow = each.fixedRow;
        list.hidden = each.hidden;
        list.selection.focusRow = each.focus;
        list.selection.anchor = 20;
        list.top = each.top;
        EXPECT_TRUE(Input(list.selection, list).KeyDown(Number(each.key), each.modifiers));
        EXPECT_EQ(each.expected, State(list)) << "line " << each.line;
    }
}

TEST(Input, KeysMoveAmongColumnsThatCanHaveTheFocus)
{
    const struct
    {
        Key key;
        int from, to;
    } cases[] = {{Key::Right, -1, 0}, {Key::Right, 0, 2}, {Key::Right, 3, 3}, {Key::Left, 3, 2},
                 {Key::Left, 2, 0},   {Key::Left, 0, -1}, {Key::Left, -1, -1}};
    for (const auto& each : cases)
    {
        List list;
        list.cellFocus = true;
        list.selection.focusColumn = each.from;
        Input(list.selection, list).KeyDown(Number(each.key), {});
        EXPECT_EQ(each.to, list.selection.focusColumn) << each.from;
        EXPECT_EQ(each.to == each.from ? kNoRow : each.to, list.visibleColumn) << each.from;
        EXPECT_EQ("", list.log);
    }
}

// Rows of different heights, placed and scrolled by the rules of the control.
class Pages : public List, public GeometrySource
{
public:
    Pages(int height, std::vector<int> previews) : m_previews(std::move(previews))
    {
        rows = static_cast<int>(m_previews.size());
        LayOut(view, 50, height, 0, false);
    }
    int RowCount() override { return rows; }
    RowShape ShapeOf(int row) override { return {m_previews[static_cast<std::size_t>(row)]}; }
    CellContents ContentsOf(int, int) override { return {}; }
    const std::vector<Column>& Columns() override { return m_columns; }
    RowRange WholeRows() override { return geometry.RowsFrom(view.topRow); }
    void EnsureVisible(int row) override { view.topRow = geometry.TopToShow(row); }
    void Scroll(RowScroll how) override
    {
        const ScrollRequest requests[] = {ScrollRequest::PageBack, ScrollRequest::PageForward,
                                          ScrollRequest::Begin, ScrollRequest::End};
        view.topRow = RowAfter(requests[static_cast<int>(how)], 0, view, geometry);
        if (seesScrolls)
            See();
    }
    void See()
    {
        for (int row = WholeRows().first; row <= WholeRows().last; ++row)
            seen.insert(row);
    }

    std::set<int> seen;
    bool seesScrolls = false;
    View view;
    Geometry geometry{view, *this};

private:
    std::vector<int> m_previews;
    std::vector<Column> m_columns;
};

TEST(Input, PagesShowEachRowWholeOnTheWay)
{
    std::mt19937 random(17);
    for (int round = 0; round < 300; ++round)
    {
        // A high row pushes others out of view when it comes in: then it is enough that the scroll showed
        // them.
        const bool isUneven = round % 2 != 0;
        std::vector<int> previews(1 + random() % 60);
        for (int& each : previews)
            each = static_cast<int>(isUneven && random() % 4 == 0 ? random() % 30 : 0);
        Pages pages(40 + static_cast<int>(random() % 60), std::move(previews));
        pages.seesScrolls = isUneven;
        Input input(pages.selection, pages);
        for (const Key key : {Key::PageDown, Key::PageUp})
        {
            pages.seen.clear();
            pages.See();
            const int end = key == Key::PageDown ? pages.rows - 1 : 0;
            for (int press = 0; press < 200 && pages.selection.focusRow != end; ++press)
            {
                input.KeyDown(Number(key), {});
                pages.See();
                EXPECT_LE(pages.view.topRow, pages.selection.focusRow);
            }
            EXPECT_EQ(end, pages.selection.focusRow);
            EXPECT_EQ(pages.rows, static_cast<int>(pages.seen.size())) << "round " << round;
        }
    }
}

TEST(Input, ClicksSelectAndEdit)
{
    const Modifiers none, shift{true, false}, control{false, true}, both{true, true};
    const struct
    {
        int line;
        int row, column;
        Modifiers modifiers;
        const char* expected; // anchor 3, the focus on row 5 and, with cell focus, column 2
        bool cellFocus = false;
    } cases[] = {
        {__LINE__, 7, 2, none, "7,-1 anchor 7: select 7..7"},
        {__LINE__, 7, 2, shift, "7,-1 anchor 3: select 7..3"},
        {__LINE__, 7, 2, control, "7,-1 anchor 7: select 7..7 toggle"},
        {__LINE__, 7, 2, both, "7,-1 anchor 7: select 7..3 add"},
        {__LINE__, 5, 2, none, "5,-1 anchor 5: select 5..5"},
        {__LINE__, kNoRow, 2, none, "5,-1 anchor 3:"},
        {__LINE__, kFixedRow, 2, none, "-1,2 anchor 3: fixed"},
        {__LINE__, kNoRow, kNoColumn, none, "5,-1 anchor 3:", true},
        {__LINE__, 7, 2, none, "7,2 anchor 7: select 7..7", true},
        {__LINE__, 5, 1, none, "5,-1 anchor 5: select 5..5", true}, // which cannot have the focus
        {__LINE__, 5, 3, none, "5,3 anchor 5: select 5..5", true},
        {__LINE__, 5, 4, none, "5,-1 anchor 5: select 5..5", true}, // gone since the click
        {__LINE__, 5, 2, none, "5,2 anchor 5: select 5..5 edit 5,2 1", true},
        {__LINE__, 5, 2, control, "5,2 anchor 5: select 5..5 toggle", true},
    };
    for (const auto& each : cases)
    {
        List list;
        list.cellFocus = each.cellFocus;
        list.selection = {5, each.cellFocus ? 2 : -1, 3, false, 5, 5};
        Input(list.selection, list).Click(each.row, each.column, each.modifiers);
        EXPECT_EQ(each.expected, std::to_string(list.selection.focusRow) + ',' +
                                     std::to_string(list.selection.focusColumn) + " anchor " +
                                     std::to_string(list.selection.anchor) + ':' + list.log)
            << "line " << each.line;
        EXPECT_EQ(list.shownColumn, list.selection.focusColumn) << "line " << each.line;
    }

    List list;
    Input input(list.selection, list);
    input.Click(kFixedRow, 2, none);
    input.Click(kFixedRow, 2, none); // the second edits
    EXPECT_EQ(" fixed fixed edit -1,2 1", list.log);
    list.log.clear();
    input.RightClick(4, none);
    input.RightClick(6, shift);
    input.RightClick(6, control);
    input.RightClick(kNoRow, none);
    EXPECT_EQ("4 top 0 anchor 4: select 4..4", State(list));
    list.log.clear();
    for (const int row : {6, 6, 3, kNoRow, 100})
        input.DragTo(row);
    EXPECT_EQ("3 top 0 anchor 4: select 6..4 select 3..4", State(list));
}

TEST(Input, TypingEditsAndKeypadChangesTheTree)
{
    List list;
    Input input(list.selection, list);
    list.tree = true;
    list.selection.focusRow = 4;
    for (const Key key : {Key::Add, Key::Subtract, Key::Multiply})
    {
        EXPECT_TRUE(input.KeyDown(Number(key), {}));
        EXPECT_FALSE(input.Character('+'));
    }
    EXPECT_EQ(" tree 4+ tree 4- tree 4*", list.log);

    list.log.clear();
    list.cellFocus = true;
    list.selection.focusColumn = 2;
    const struct
    {
        unsigned key;
        Modifiers modifiers;
        bool edits;
    } cases[] = {{'X', {}, true},
                 {'X', {true, false}, true},
                 {'X', {false, true}, false},
                 {Number(Key::Escape), {}, false},
                 {30, {}, false}};
    for (const auto& each : cases)
    {
        EXPECT_FALSE(input.KeyDown(each.key, each.modifiers)) << each.key;
        EXPECT_EQ(each.edits, input.Character('x')) << each.key;
    }
    EXPECT_EQ(" edit 4,2 120 edit 4,2 120", list.log);

    list.log.clear();
    for (const bool edits : {true, false})
    {
        list.edits = edits;
        EXPECT_TRUE(input.KeyDown(Number(Key::Subtract), {}));
        EXPECT_FALSE(input.Character('-')) << "which the key was already";
    }
    list.tree = false;
    list.edits = true;
    EXPECT_FALSE(input.KeyDown(Number(Key::Subtract), {}));
    EXPECT_TRUE(input.Character('-'));
    EXPECT_EQ(" edit 4,2 45 edit 4,2 45 tree 4- edit 4,2 45", list.log);
}

} // namespace
