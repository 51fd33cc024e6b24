#include "qmtextctrl/TextView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace textview;

namespace
{
struct Row
{
    int columns;
    int left;
    std::string text; // laid out by its characters; without one, each column is a cell
};

class TestRows final : public Rows
{
public:
    std::vector<Row> rows;
    int GetRowCount() override { return static_cast<int>(rows.size()); }
    int GetRowColumnCount(int row) override { return rows.at(static_cast<std::size_t>(row)).columns; }
    int GetRowLeft(int row) override { return rows.at(static_cast<std::size_t>(row)).left; }
    void GetRowCells(int row, VkGrafic::TextCells& cells) override
    {
        const std::string& text = rows.at(static_cast<std::size_t>(row)).text;
        cells.Take(text.data(), text.size());
    }
    int GetRowsAbove(int row) override
    {
        return row < static_cast<int>(above.size()) ? above[static_cast<std::size_t>(row)] : 0;
    }
    std::vector<int> above;
};

// Rows that are all alike, up to as many as a number holds.
class EqualRows final : public Rows
{
public:
    int count = 0x7FFFFFFF;
    Row row = {3, 16, {}};
    int GetRowCount() override { return count; }
    int GetRowColumnCount(int) override { return row.columns; }
    int GetRowLeft(int) override { return row.left; }
    void GetRowCells(int, VkGrafic::TextCells&) override {}
    int GetRowsAbove(int) override { return above; }
    int above = 0;
};

// What characters of a text are to its reader, how many cells each takes.
struct Character
{
    const char* bytes;
    int cells;
};
constexpr Character kCharacters[] = {{"a", 1},      {"b", 1},          {"\u00E4", 1},
                                     {"\u65E5", 2}, {"\U0001F600", 2}, {"e\u0301", 1}};

// The bounds between the characters of a row: columns, and the cells that they lie at.
struct Bounds
{
    std::vector<int> columns = {0};
    std::vector<int> cells = {0};
};

Bounds BoundsOf(const Row& row)
{
    Bounds bounds;
    for (std::size_t at = 0; at < static_cast<std::size_t>(row.columns);)
    {
        int cells = 1;
        std::size_t length = 1;
        for (const Character& character : kCharacters)
        {
            const std::size_t size = std::strlen(character.bytes);
            if (at < row.text.size() && row.text.compare(at, size, character.bytes) == 0)
            {
                length = size;
                cells = character.cells;
            }
        }
        at += length;
        bounds.columns.push_back(static_cast<int>(at));
        bounds.cells.push_back(bounds.cells.back() + cells);
    }
    return bounds;
}

// Half of the rows have a text, and of those some have a line feed behind what is laid out.
template <typename Below> Row RandomRow(Below below)
{
    Row row = {below(20), below(40), {}};
    if (below(2) == 0)
        return row;
    for (int count = below(12); count > 0; --count)
        row.text += kCharacters[below(static_cast<int>(std::size(kCharacters)))].bytes;
    row.columns = static_cast<int>(row.text.size()) + below(2);
    return row;
}

// Every place of the text in reading order.
std::vector<Cell> Places(TestRows& text)
{
    std::vector<Cell> places;
    for (int row = 0; row < text.GetRowCount(); ++row)
        for (const int column : BoundsOf(text.rows[static_cast<std::size_t>(row)]).columns)
            places.push_back({row, column});
    if (places.empty())
        places.push_back({});
    return places;
}

void ExpectSound(TextView& view, TestRows& text)
{
    const State& state = view.CurrentState();
    const std::vector<Cell> places = Places(text);
    const int page = view.PageRows();
    EXPECT_TRUE(std::binary_search(places.begin(), places.end(), state.caret));
    EXPECT_TRUE(std::binary_search(places.begin(), places.end(), state.anchor));
    EXPECT_TRUE(state.top >= 0 && state.top <= std::max(text.GetRowCount() - page, 0)) << state.top;
    const ScrollRange across = view.PixelScroll();
    EXPECT_TRUE(state.offset >= 0 && state.offset <= std::max(across.last + 1 - across.page, 0))
        << state.offset;

    for (int row = 0; row < text.GetRowCount(); ++row)
    {
        const Range selected = view.SelectedColumns(row);
        const Bounds bounds = BoundsOf(text.rows[static_cast<std::size_t>(row)]);
        const int width = view.CurrentMetrics().cellWidth;
        for (std::size_t i = 0; i + 1 < bounds.columns.size(); ++i)
        {
            const int column = bounds.columns[i];
            EXPECT_EQ(view.IsSelected({row, column}), column >= selected.begin && column < selected.end);
            const int x = view.XOf({row, column});
            EXPECT_EQ(text.GetRowLeft(row) + bounds.cells[i] * width - state.offset, x);
            for (const int end : {x, x + (bounds.cells[i + 1] - bounds.cells[i]) * width - 1})
            {
                Cell hit;
                EXPECT_TRUE(view.HitTest(end, view.YOf(row), hit));
                EXPECT_EQ((Cell{row, column}), hit);
            }
        }
    }
}

TEST(TextView, KeysMoveAsInTheFlatText)
{
    std::mt19937 random(1);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int round = 0; round < 30; ++round)
    {
        TestRows text;
        for (int count = below(12); count > 0; --count)
            text.rows.push_back(RandomRow(below));
        TextView view(text);
        view.SetMetrics({7, 10, 30 + below(80), 5 + below(60), 10});
        int goal = 0;
        for (int step = 0; step < 80; ++step)
        {
            const std::vector<Cell> places = Places(text);
            const auto rowEnd = [&](int row) { return text.rows.empty() ? 0 : text.GetRowColumnCount(row); };
            const int lastRow = places.back().row;
            const State before = view.CurrentState();
            Cell expected = before.caret;
            const auto at = std::find(places.begin(), places.end(), before.caret);
            const auto motion = static_cast<Motion>(below(static_cast<int>(Motion::ScrollDown) + 1));
            const auto cellOf = [&](Cell place) {
                if (text.rows.empty())
                    return 0;
                const Bounds bounds = BoundsOf(text.rows[static_cast<std::size_t>(place.row)]);
                const auto found = std::find(bounds.columns.begin(), bounds.columns.end(), place.column);
                return bounds.cells[static_cast<std::size_t>(found - bounds.columns.begin())];
            };
            const auto toRow = [&](int row) { // the last place at or before the cell aimed at
                expected = {std::clamp(row, 0, lastRow), 0};
                for (const Cell& place : places)
                    if (place.row == expected.row && cellOf(place) <= goal)
                        expected = place;
            };
            if (motion == Motion::Left && at != places.begin())
                expected = *(at - 1);
            else if (motion == Motion::Right && at + 1 != places.end())
                expected = *(at + 1);
            else if (motion == Motion::RowBegin)
                expected.column = 0;
            else if (motion == Motion::RowEnd)
                expected.column = rowEnd(expected.row);
            else if (motion == Motion::Begin)
                expected = places.front();
            else if (motion == Motion::End)
                expected = places.back();
            else if (motion == Motion::Up || motion == Motion::Down)
                toRow(expected.row + (motion == Motion::Up ? -1 : 1));
            else if (motion == Motion::PageUp || motion == Motion::PageDown)
                toRow(expected.row + (motion == Motion::PageUp ? -1 : 1) * view.PageRows());
            else if (motion == Motion::WindowTop)
                toRow(before.top);
            else if (motion == Motion::WindowBottom)
                toRow(before.top + view.PageRows() - 1);

            const Caret mode = below(3) == 0 ? Caret::Extend : Caret::Move;
            view.Move(motion, mode);
            const State& after = view.CurrentState();
            EXPECT_EQ(expected, after.caret) << "motion " << static_cast<int>(motion);
            ExpectSound(view, text);
            if (motion >= Motion::ScrollLeft)
                continue;
            EXPECT_EQ(mode == Caret::Extend ? before.anchor : expected, after.anchor);
            EXPECT_TRUE(after.caret.row >= after.top && after.caret.row < after.top + view.PageRows());
            const int x = view.XOf(after.caret);
            EXPECT_TRUE(x >= 0 && x + 7 <= view.CurrentMetrics().width) << x;
            if (motion < Motion::Up || motion == Motion::Begin || motion == Motion::End)
                goal = cellOf(expected);

            // A row goes or comes, a pointer drags, the wheel turns.
            if (below(8) == 0 && !text.rows.empty())
                text.rows.erase(text.rows.begin() + below(text.GetRowCount()));
            if (below(8) == 0)
                text.rows.insert(text.rows.begin() + below(text.GetRowCount() + 1), RandomRow(below));
            view.RowsChanged();
            ExpectSound(view, text);
            view.Autoscroll(below(300) - 100, below(300) - 100);
            view.Wheel(below(500) - 250, 3);
            view.WheelAcross(below(500) - 250, 3);
            view.Focus(view.CurrentState().caret, below(2) == 0);
            goal = cellOf(view.CurrentState().caret);
            ExpectSound(view, text);
        }
    }
}

// Ten rows of 20 columns from pixel 16, in a window of four rows and ten cells of 8 pixels.
class TextViewTest : public testing::Test
{
protected:
    TextViewTest()
    {
        text.rows.assign(10, {20, 16, {}});
        view.SetMetrics({8, 10, 80, 45, 30});
    }
    TestRows text;
    TextView view{text};
};

TEST_F(TextViewTest, ScrollsAsLittleAsNeeded)
{
    struct Case
    {
        int top, offset;
        Cell place;
        int rows, columns;
        int expectedTop, expectedOffset;
    };
    const Case cases[] = {
        {2, 0, {3, 2}, 1, 1, 2, 0},     // in view
        {2, 0, {1, 0}, 1, 0, 1, 0},     // above
        {2, 0, {6, 0}, 1, 0, 3, 0},     // only partly in view at the bottom edge
        {2, 0, {4, 0}, 4, 0, 4, 0},     // several rows below
        {2, 0, {0, 0}, 9, 0, 0, 0},     // more rows than fit: the first at the top
        {0, 50, {-1, 0}, 1, 0, 0, 50},  // 0 columns do not scroll across
        {0, 50, {0, 5}, 1, 1, 0, 50},   // 16 + 40 is right of 50
        {0, 60, {0, 5}, 1, 1, 0, 56},   // to the left
        {0, 50, {0, 0}, 1, 1, 0, 0},    // the margin comes along
        {0, 0, {0, 10}, 1, 2, 0, 32},   // 16 + 96 at the right edge
        {0, 0, {0, 10}, 1, 15, 0, 96},  // wider than the window: its beginning
        {0, 0, {0, 100}, 1, 1, 0, 744}, // beyond the columns that the range tells
    };
    for (const Case& c : cases)
    {
        view.Reload();
        view.ScrollToRow(c.top);
        view.ScrollToPixel(c.offset);
        view.EnsureVisible(c.place, c.rows, c.columns);
        EXPECT_EQ(c.expectedTop, view.CurrentState().top) << "case " << &c - cases;
        EXPECT_EQ(c.expectedOffset, view.CurrentState().offset) << "case " << &c - cases;
    }
}

TEST_F(TextViewTest, FocusGoesToTheEdgeAskedForWhenOutOfView)
{
    view.Focus({7, 2}, true);
    EXPECT_EQ(4, view.CurrentState().top);
    view.Focus({5, 2}, false);
    EXPECT_EQ(4, view.CurrentState().top);
    view.Focus({1, 2}, false);
    EXPECT_EQ(1, view.CurrentState().top);
    view.Select({1, TextView::kRowEnd});
    EXPECT_EQ((Cell{1, 2}), view.CurrentState().caret);
    EXPECT_EQ((Cell{1, 20}), view.SelectionEnd());
}

// Twelve rows in view; of those out of view or near an edge, the row comes to a third of the window.
TEST_F(TextViewTest, ShowsARowInItsContext)
{
    struct Case
    {
        int rowCount, top, row, expectedTop;
    };
    const Case cases[] = {
        {100, 20, 24, 20},                    // in the midst
        {100, 20, 22, 20},                    // the first and the last that stay
        {100, 20, 29, 20}, {100, 20, 21, 17}, // near the edges
        {100, 20, 30, 26}, {100, 20, 90, 86}, // out of view
        {100, 20, 5, 1},   {100, 20, 2, 0},   // no rows before
        {100, 20, 99, 88}, {8, 0, 7, 0},      // all of them are in view
        {0, 0, 3, 0},
    };
    for (const Case& c : cases)
    {
        text.rows.assign(static_cast<std::size_t>(c.rowCount), {20, 16, {}});
        view.SetMetrics({8, 10, 80, 125, 30});
        view.Reload();
        view.ScrollToRow(c.top);
        view.FocusInContext({c.row, 0}, 1);
        EXPECT_EQ(c.expectedTop, view.CurrentState().top) << "case " << &c - cases;
        EXPECT_EQ(std::min(c.row, std::max(c.rowCount - 1, 0)), view.CurrentState().caret.row);
    }

    text.rows.assign(100, {200, 16, {}});
    view.SetMetrics({8, 10, 400, 125, 200});
    view.FocusInContext({50, 100}, 5);
    EXPECT_LE(8 * 8, view.XOf({50, 100}));
    EXPECT_GE(400 - 8 * 8, view.XOf({50, 105}));
    view.FocusInContext({50, 20}, 500);
    EXPECT_EQ(0, view.XOf({50, 20})) << "wider than the window: its beginning";
}

// Three blocks within each other begin at rows 2, 3 and 4; rows 5 to 19 are in the third.
TEST_F(TextViewTest, KeepsRowsFreeBelowThatCoverThem)
{
    text.rows.assign(30, {20, 16, {}});
    text.above = {0, 0, 0, 1, 2};
    text.above.resize(20, 3);
    view.SetMetrics({8, 10, 80, 105, 30});
    const std::pair<int, int> covered[] = {{0, 0},  {1, 0},  {2, 0},  {3, 3},  {4, 3}, {5, 3},
                                           {16, 3}, {17, 3}, {18, 2}, {19, 1}, {20, 0}};
    for (const auto& [top, rows] : covered)
    {
        view.ScrollToRow(top);
        EXPECT_EQ(rows, view.CoveredRows()) << "top " << top;
    }

    struct Case
    {
        int top, row, expectedTop;
    };
    const Case cases[] = {{15, 10, 7}, {15, 17, 14}, {15, 18, 15}, {15, 4, 2},
                          {15, 3, 2},  {5, 15, 6},   {15, 25, 16}};
    for (const Case& c : cases)
    {
        view.ScrollToRow(c.top);
        view.EnsureVisible({c.row, 0}, 1, 1);
        EXPECT_EQ(c.expectedTop, view.CurrentState().top) << "row " << c.row;
        view.ScrollToRow(c.top);
        view.Focus({c.row, 0}, true);
        EXPECT_LE(view.CoveredRows(), c.row - view.CurrentState().top) << "row " << c.row;
        view.ScrollToRow(c.top);
        view.FocusInContext({c.row, 0}, 1);
        EXPECT_LT(view.CoveredRows(), c.row - view.CurrentState().top) << "row " << c.row;
    }

    view.ScrollToRow(10);
    view.Click(20, 5, Caret::Move);
    EXPECT_EQ(13, view.CurrentState().caret.row) << "the first row that is seen";
    view.Move(Motion::WindowTop, Caret::Move);
    EXPECT_EQ(13, view.CurrentState().caret.row);
    EXPECT_EQ(10, view.CurrentState().top);
    view.Move(Motion::PageDown, Caret::Move);
    EXPECT_EQ(17, view.CurrentState().top) << "no row is passed over";
    EXPECT_EQ(20, view.CurrentState().caret.row);
    view.ScrollToRow(10);
    EXPECT_TRUE(view.Autoscroll(20, 29)) << "a drag over what covers rows scrolls";
    EXPECT_EQ(9, view.CurrentState().top);
    EXPECT_FALSE(view.Autoscroll(20, 30));

    text.above.assign(30, 100);
    EXPECT_EQ(5, view.CoveredRows()) << "half of the window stays";
}

// A margin of 30 pixels before a text area of 80, scrolled by 20.
TEST_F(TextViewTest, TheMarginStaysWhereItIs)
{
    view.SetMetrics({8, 10, 80, 45, 30, 30});
    view.ScrollToPixel(20);
    EXPECT_EQ(30 + 16 - 20, view.XOf({0, 0}));
    struct Case
    {
        int x, column, clicked;
    };
    const Case cases[] = {{-5, -1, 1}, {0, -1, 1}, {29, -1, 1},  {30, 0, 1},
                          {34, 1, 1},  {39, 1, 2}, {109, 10, 10}};
    for (const Case& c : cases)
    {
        Cell hit;
        EXPECT_TRUE(view.HitTest(c.x, 5, hit));
        EXPECT_EQ(c.column, std::max(hit.column, -1)) << "x " << c.x;
        view.Click(c.x, 5, Caret::Move);
        EXPECT_EQ(c.clicked, view.CurrentState().caret.column) << "x " << c.x;
    }
    EXPECT_FALSE(view.Autoscroll(30, 5));
    EXPECT_FALSE(view.Autoscroll(109, 5));
    EXPECT_TRUE(view.Autoscroll(29, 5));
    EXPECT_EQ(12, view.CurrentState().offset);
    EXPECT_TRUE(view.Autoscroll(110, 5));
    EXPECT_EQ(20, view.CurrentState().offset);
}

TEST_F(TextViewTest, RowsMovedAboveTakeEverythingAlong)
{
    const int cases[][5] = {
        // before row, rows added: rows of caret, selection's other end and window, which were 8, 3 and 5
        {0, 2, 10, 5, 7}, {8, 1, 9, 3, 5},  {9, 4, 8, 3, 5},  {3, -3, 5, 0, 2},
        {5, -2, 6, 2, 3}, {9, -1, 7, 3, 5}, {9, -9, 0, 0, 0}, // removed itself: the row above
    };
    for (const auto& [row, delta, caret, anchor, top] : cases)
    {
        view.Focus({8, 3}, false);
        view.Select({3, 1});
        view.ScrollToRow(5);
        view.MoveRows(row, delta);
        EXPECT_EQ((State{{caret, 3}, {anchor, 1}, top, 0}), view.CurrentState()) << row << ' ' << delta;
    }
}

TEST_F(TextViewTest, WheelAndAutoscrollCountWholeSteps)
{
    view.Wheel(-40, 3);
    EXPECT_EQ(1, view.CurrentState().top); // a third of a notch
    view.Wheel(-60, 3);
    EXPECT_EQ(2, view.CurrentState().top);
    view.Wheel(60, 1); // turned back: the half step down is forgotten, half a step up is not one
    EXPECT_EQ(2, view.CurrentState().top);
    view.Wheel(-120, TextView::kWheelPages);
    EXPECT_EQ(6, view.CurrentState().top);

    view.Reload();
    EXPECT_FALSE(view.Autoscroll(79, 44));
    EXPECT_TRUE(view.Autoscroll(10, 45)); // the first pixel below
    EXPECT_EQ(1, view.CurrentState().top);
    EXPECT_TRUE(view.Autoscroll(10, 55));
    EXPECT_EQ(3, view.CurrentState().top);
    EXPECT_TRUE(view.Autoscroll(10, -1));
    EXPECT_EQ(2, view.CurrentState().top);
    EXPECT_TRUE(view.Autoscroll(80, 20));
    EXPECT_EQ(8, view.CurrentState().offset);

    Cell cell;
    EXPECT_TRUE(view.HitTest(7, 0, cell));
    EXPECT_EQ((Cell{2, -1}), cell); // the margin: 7 + 8 lies left of 16
    EXPECT_FALSE(view.HitTest(7, 80, cell)) << "the row after the last one";
    EXPECT_EQ(10, cell.row);
}

TEST_F(TextViewTest, ClicksMeetTheNearerEdgeAndTheLastRowInTheWindow)
{
    view.SetMetrics({8, 10, 80, 50, 30});
    const int cases[][4] = {{19, 0, 0, 0}, {20, 0, 0, 1}, {0, 49, 4, 0}, {0, 50, 4, 0}, {0, -1, 0, 0}};
    for (const auto& [x, y, row, column] : cases)
    {
        view.Click(x, y, Caret::Move);
        EXPECT_EQ((Cell{row, column}), view.CurrentState().caret) << x << ' ' << y;
    }
    view.Focus({1, 15}, false);
    view.Select({3, 1});
    text.rows[1].columns = 4; // which the view is not told of yet
    EXPECT_EQ((Range{4, 4}), view.SelectedColumns(1));

    view.EnsureVisible({0, 100}, 1, 1);
    EXPECT_EQ(16 + 101 * 8 - 1, view.PixelScroll().last);
    view.SetMetrics({4, 10, 80, 50, 30});
    EXPECT_EQ(16 + 30 * 4 - 1, view.PixelScroll().last) << "of cells of another width";
}

TEST_F(TextViewTest, KeepsBetweenTheCharactersOfAText)
{
    text.rows[2] = {12, 16, "a\u65E5\U0001F600\u00E4b\n"}; // columns 0 1 4 8 10 11 12, cells 0 1 3 5 6 7 8
    const int cases[][2] = {
        {16 + 8 + 7, 1}, {16 + 8 + 8, 4}, {16 + 24 + 7, 4}, {16 + 24 + 8, 8}, {16 + 60, 12}};
    for (const auto& [x, column] : cases)
    {
        view.Click(x, 20, Caret::Move);
        EXPECT_EQ((Cell{2, column}), view.CurrentState().caret) << x;
    }
    view.Focus({2, 3}, false); // within a character
    view.Select({2, 9});
    EXPECT_EQ((Range{1, 8}), view.SelectedColumns(2));
    EXPECT_EQ(16 + 5 * 8, view.XOf({2, 8}));
    EXPECT_EQ(8, view.ColumnBehind({2, 1}, 2));
    view.SetMetrics({8, 10, 24, 45, 30});
    view.EnsureVisible({2, 4}, 1, 1); // both of its cells
    EXPECT_EQ(16 + 5 * 8 - 24, view.CurrentState().offset);
}

TEST(TextView, ReadsTextThatIsMuchBrighterOrDarker)
{
    const auto grey = [](int value) { return static_cast<COLORREF>(value * 0x010101); };
    for (const auto& [color, background, readable] :
         {std::tuple(140, 100, true), {139, 100, false}, {100, 140, true}, {100, 139, false}})
        EXPECT_EQ(readable, IsReadable(grey(color), grey(background))) << color << ' ' << background;
}

TEST(TextView, CountsToTheLargestRow)
{
    const State first, last = {{0x7FFFFFFF, 0}, {0x7FFFFFFF, 0}, 0, 0};
    EXPECT_EQ((Range{0, 0x7FFFFFFF}), ChangedRows(first, last));
    EqualRows rows;
    TextView view(rows);
    view.SetMetrics({8, 10, 80, 45, 0x7FFFFFFF});
    view.SelectAll();
    EXPECT_EQ((Cell{0x7FFFFFFE, 3}), view.CurrentState().caret);
    view.Move(Motion::End, Caret::Move);
    view.Move(Motion::PageDown, Caret::Move);
    view.EnsureVisible({0x7FFFFFFF, 0x7FFFFFFF}, 0x7FFFFFFF, 0x7FFFFFFF);
    view.MoveRows(0, 0x7FFFFFFF);
    view.ScrollToPixel(0x7FFFFFFF);
    Cell cell;
    view.HitTest(0x7FFFFFFF, 0x7FFFFFFF, cell);
    view.RowsChanged();
    EXPECT_EQ((Cell{0x7FFFFFFE, 3}), view.CurrentState().caret);
    EXPECT_EQ((ScrollRange{0x7FFFFFFE, 4, 0x7FFFFFFB}), view.RowScroll());
    EXPECT_EQ((Range{0x7FFFFFFB, 0x7FFFFFFF}), view.VisibleRows());
    EXPECT_TRUE(view.IsAtEnd());
}

// Sizes and positions at the limits of the numbers; the sanitizer ends the test where one overflows.
TEST(TextView, EveryOperationKeepsWithinTheNumbers)
{
    constexpr int kMax = 0x7FFFFFFF;
    const int values[] = {-kMax - 1, -kMax, -1, 0, 1, 7, kMax - 1, kMax};
    std::mt19937 random(5);
    const auto any = [&] { return values[random() % std::size(values)]; };
    for (int round = 0; round < 3000; ++round)
    {
        EqualRows rows;
        rows.count = std::max(any(), 0);
        rows.row = {any(), any(), {}};
        rows.above = any();
        TextView view(rows);
        view.SetMetrics({any(), any(), any(), any(), any(), any()});
        for (int step = 0; step < 20; ++step)
        {
            Cell cell = {any(), any()};
            const State before = view.CurrentState();
            view.Focus(cell, step % 2 == 0);
            view.Select({any(), any()});
            view.FocusInContext({any(), any()}, any());
            view.EnsureVisible(cell, any(), any());
            view.ScrollToRow(any());
            view.ScrollToPixel(any());
            for (int motion = 0; motion <= static_cast<int>(Motion::ScrollDown); ++motion)
                view.Move(static_cast<Motion>(motion), Caret::Extend);
            view.Click(any(), any(), Caret::Extend);
            view.Autoscroll(any(), any());
            view.Wheel(any(), static_cast<unsigned>(any()));
            view.WheelAcross(any(), static_cast<unsigned>(any()));
            view.HitTest(any(), any(), cell);
            view.XOf({any(), any()});
            view.YOf(any());
            view.SelectedColumns(any());
            view.PixelScroll();
            ChangedRows(before, view.CurrentState());
            const Range visible = view.VisibleRows();
            EXPECT_TRUE(visible.begin >= 0 && visible.end <= rows.count) << visible.end;
            view.MoveRows(any(), any());
            rows.count = std::max(any(), 0);
            view.RowsChanged();
        }
    }
}
} // namespace
