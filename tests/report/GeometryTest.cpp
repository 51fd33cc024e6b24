// Where things are and what is invalidated: cells against a table, rows, bars and points against walks over
// all rows and pixels.
#include "report/model/DirtyRows.h"
#include "report/model/ScrollPosition.h"
#include "tests/report/Sheet.h"
#include "tests/support/Random.h"

#include "ReportItem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <set>
#include <vector>

namespace
{

using namespace report;

// ---- Within a cell

TEST(CellLayout, DividesACellFromLeftToRight)
{
    // Margin, width of image and of check box; the cell's contents and width, from 100 on; where image, check
    // box and text end, where the text begins, and what is needed for a text of 30.
    const std::tuple<std::array<int, 3>, CellContents, int, std::array<int, 5>> cases[] = {
        {{6, 16, 8}, {}, 80, {106, 106, 174, 106, 42}},
        {{6, 16, 8}, {true, true, false, false}, 80, {128, 142, 174, 142, 78}},
        {{6, 16, 8}, {false, false, true, true}, 80, {128, 142, 174, 142, 42}},
        {{6, 0, 8}, {true, true, false, false}, 80, {106, 120, 174, 120, 62}}, // no list of images
        {{6, 16, 0}, {true, true, false, false}, 80, {128, 128, 174, 128, 70}},
        // A check box needs one pixel more than its width; room that is kept is kept in any case.
        {{6, 16, 8}, {true, true, false, false}, 42, {128, 128, 136, 128, 78}},
        {{6, 16, 8}, {true, true, false, false}, 43, {128, 137, 137, 142, 78}},
        {{6, 16, 8}, {true, false, false, true}, 42, {128, 136, 136, 142, 64}},
        {{0, 16, 8}, {true, true, false, false}, 80, {116, 124, 180, 124, 54}},
        // Narrower than its image.
        {{6, 16, 8}, {true, true, false, false}, 20, {114, 114, 114, 128, 78}},
        {{6, 16, 8}, {}, 0, {94, 94, 94, 106, 42}},
    };
    for (const auto& [sizes, contents, width, expected] : cases)
    {
        View view;
        view.margin = sizes[0];
        view.imageWidth = sizes[1];
        view.checkWidth = sizes[2];
        const CellLayout layout(view);
        const CellParts parts = layout.PartsOf({100, 10, 100 + width, 30}, contents);
        const int needed = layout.ContentsWidth(contents, 30);
        EXPECT_EQ(expected, (std::array{parts.image.right, parts.check.right, parts.text.right,
                                        parts.text.left, needed}))
            << width << ' ' << needed;
        EXPECT_EQ(100 + view.margin, parts.image.left);
        EXPECT_EQ(needed - 30, layout.ContentsWidth(contents, 0));
        EXPECT_EQ(needed - view.margin - 30, layout.ContentsWidth(contents, -1));
        for (const Rect& part : {parts.image, parts.check, parts.text})
            EXPECT_TRUE(part.top == 10 && part.bottom == 30);
    }
}

TEST(CellLayout, PutsPicturesInTheMiddleOfTheLine)
{
    View view;
    view.imageWidth = view.imageHeight = 16;
    view.checkWidth = view.checkHeight = 7;
    const CellLayout layout(view);
    EXPECT_EQ((Rect{100, 13, 116, 29}), layout.ImageIn({100, 10, 300, 30}));
    EXPECT_EQ((Rect{100, 18, 107, 25}), layout.CheckIn({100, 10, 300, 30}));
    EXPECT_EQ((Rect{100, 8, 116, 24}), layout.ImageIn({100, 10, 300, 20})) << "higher than the line";

    // The tree box's middle is the pixel in the middle of its square, left of the window too.
    EXPECT_EQ((Rect{106, 16, 115, 25}), layout.TreeBoxIn({100, 10, 300, 31}));
    EXPECT_EQ((Rect{-95, 16, -86, 25}), layout.TreeBoxIn({-101, 10, -81, 31}));
    EXPECT_EQ((Rect{20, 10, 30, 40}), layout.TreeBoxOf({30, 10, 90, 40}));
    EXPECT_EQ(0, layout.Indentation(-1));
    EXPECT_EQ(30, layout.Indentation(3));
    view.dpi = 192;
    EXPECT_EQ((Rect{106, 16, 124, 34}), layout.TreeBoxIn({100, 10, 300, 41}));
}

// ---- Rows and columns

class RandomSheet : public Sheet
{
public:
    explicit RandomSheet(Random& below)
    {
        view.itemHeight = below(13);
        view.margin = below(4);
        view.imageWidth = below(2) * 9;
        view.checkWidth = 1 + below(8);
        view.fixedFrame = below(3);
        view.showLines = below(4) != 0;
        view.showPreviews = !view.showLines || below(2) == 0;
        const int widths[] = {0, view.itemHeight, view.itemHeight * 3, below(60), below(60)};
        for (int subitem = 10 + below(5); subitem > 10; --subitem)
        {
            columns.push_back({subitem, widths[below(5)]});
            contents[subitem] = {below(2) == 0, below(2) == 0, below(2) == 0, below(2) == 0};
        }
        rows.resize(static_cast<std::size_t>(below(40)));
        for (RowShape& row : rows)
            row = {below(3) * 7, below(2) == 0, below(5) - 1, below(2) == 0, below(6) == 0 ? 10 : -1};
        LayOut(view, below(150), below(120), below(20), below(2) == 0);
        view.topRow = below(RowCount() + 1);
        view.left = below(80);
    }

    int Height(int row) { return view.LineHeight() + (view.showPreviews ? ShapeOf(row).previewHeight : 0); }
    int HeightOf(int first, int last) { return first > last ? 0 : Height(first) + HeightOf(first + 1, last); }

    // The rows seen whole above one, and below it; at least itself.
    int FirstAbove(int row)
    {
        int first = row;
        while (first > 0 && HeightOf(first - 1, row) <= view.report.Height())
            --first;
        return first;
    }
    int LastBelow(int row)
    {
        int last = row;
        while (last + 1 < RowCount() && HeightOf(row, last + 1) <= view.report.Height())
            ++last;
        return last;
    }
};

TEST(Geometry, ScrollsAsAWalkOverAllRowsSays)
{
    Random random(5);
    for (int round = 0; round < 1000; ++round)
    {
        SCOPED_TRACE(round);
        RandomSheet sheet(random);
        const int count = sheet.RowCount(), top = sheet.view.topRow, row = random(count + 1) - 1;
        const int end = count > 0 ? sheet.FirstAbove(count - 1) : 0;
        EXPECT_EQ(std::min(top, end), sheet.geometry.FittingTop(top));
        if (row >= 0)
        {
            EXPECT_EQ((RowRange{row, sheet.LastBelow(row)}), sheet.geometry.RowsFrom(row));
            EXPECT_EQ((RowRange{sheet.FirstAbove(row), row}), sheet.geometry.RowsUpTo(row));
            EXPECT_EQ(row <= top ? row : std::max(top, sheet.FirstAbove(row)), sheet.geometry.TopToShow(row));
        }

        // Where bars lead: not past the end, unless one is there already. Pages overlap by a row.
        const std::int64_t left = random(9) == 0 ? sheet.view.left = INT_MAX : sheet.view.left;
        const int line = std::max(1, sheet.view.itemHeight), width = sheet.view.report.Width();
        const int thumb = random(300) - 20, above = std::min(top, count - 1);
        const std::pair<std::int64_t, std::int64_t> wanted[] = {
            {top - 1, left - line},
            {top + 1, left + line},
            {above < 0 ? 0 : std::min(top - 1, sheet.FirstAbove(above)), left - width},
            {std::max(top + 1, sheet.LastBelow(top)), left + width},
            {0, 0},
            {INT_MAX, INT_MAX},
            {thumb, thumb}};
        for (int i = 0; i < 7; ++i)
        {
            const auto [toRow, toLeft] = wanted[i];
            const auto request = static_cast<ScrollRequest>(i);
            EXPECT_EQ(std::clamp<std::int64_t>(toRow, 0, std::max(top, end)),
                      RowAfter(request, thumb, sheet.view, sheet.geometry));
            EXPECT_EQ(
                std::clamp(toLeft, std::int64_t{0}, std::max<std::int64_t>(left, sheet.geometry.EndLeft())),
                LeftAfter(request, thumb, sheet.view, sheet.geometry));
        }
    }
}

TEST(Geometry, BringsColumnsIntoView)
{
    Random random(5);
    for (int round = 0; round < 1000; ++round)
    {
        RandomSheet sheet(random);
        const int width = sheet.view.report.Width(), shown = sheet.view.left;
        int left = 0, column = 0;
        EXPECT_EQ(shown, sheet.geometry.LeftToShow(-1));
        for (const Column& each : sheet.columns)
        {
            const bool isSeen = left >= shown && left + each.width <= shown + width;
            EXPECT_EQ(isSeen ? shown : left, sheet.geometry.LeftToShow(column++));
            left += each.width;
        }
        EXPECT_EQ(shown, sheet.geometry.LeftToShow(column)) << "there is no such column";
        EXPECT_EQ(std::max(left - width, 0), sheet.geometry.EndLeft());
    }
}

// What each point should hit, painted in the order of the drawing; a cell's parts are the layout's.
class Picture
{
public:
    explicit Picture(Sheet& sheet) : m_sheet(sheet), m_view(sheet.view)
    {
        int width = 0;
        for (const Column& column : sheet.columns)
            width += column.width;
        const int top = m_view.header.bottom + m_view.fixedFrame;
        Rect rect{-m_view.left, top, std::max(m_view.header.Width(), width) - m_view.left,
                  top + m_view.itemHeight};
        if (m_view.fixedRow.Height() > 0 && m_view.itemHeight > 0)
            PaintRow(kFixedRow, RowShape(), rect, rect.Height(), m_view.fixedRow);
        rect.bottom = m_view.report.top;
        for (int row = m_view.topRow; row < sheet.RowCount(); ++row)
        {
            const RowShape shape = sheet.ShapeOf(row);
            rect.top = rect.bottom;
            rect.bottom += m_view.LineHeight() + (m_view.showPreviews ? shape.previewHeight : 0);
            PaintRow(row, shape, rect, m_view.LineHeight(), m_view.report);
        }
    }
    // What was drawn there last; where nothing was, on which sides of the rows it is.
    Hit At(int x, int y) const
    {
        const auto found = std::find_if(m_drawn.rbegin(), m_drawn.rend(),
                                        [=](const auto& each) { return each.first.Contains(x, y); });
        if (found != m_drawn.rend())
            return found->second;
        const Rect &rows = m_view.report, &fixed = m_view.fixedRow;
        Hit hit;
        hit.flags = (x < 0             ? RVHT_TOLEFT
                     : x >= rows.right ? RVHT_TORIGHT
                                       : 0) |
                    (y < rows.top       ? RVHT_ABOVE
                     : y >= rows.bottom ? RVHT_BELOW
                                        : 0);
        if (fixed.Contains(x, y)) // too low for a row
            hit.flags = RVHT_ONFIXEDROW;
        hit.flags |= hit.flags == 0 ? RVHT_NOWHERE : 0;
        return hit;
    }
    std::set<int> xs, ys; // where something begins or ends

private:
    void PaintRow(int row, const RowShape& shape, const Rect& rect, int line, const Rect& clip)
    {
        m_hit = Hit();
        m_hit.flags = row == kFixedRow ? RVHT_ONFIXEDROW : 0;
        m_hit.row = row;
        Paint(row == kFixedRow ? clip : rect, clip, RVHT_NOWHERE, rect); // its frame is the fixed row's, too
        int x = rect.left;
        const std::vector<Column> whole = {{shape.spanning, rect.Width()}};
        for (const Column& column : shape.spanning >= 0 ? whole : m_sheet.columns)
        {
            ++m_hit.column;
            m_hit.subitem = column.subitem;
            const int right = x + column.width;
            Paint({x, rect.top, right, rect.bottom}, clip, RVHT_NOWHERE, rect);
            PaintCell(shape, {x, rect.top, right, rect.top + line}, clip);
            x = right;
        }
        m_hit.column = kNoColumn;
        m_hit.subitem = -1;
        if (row != kFixedRow && m_view.showPreviews && shape.hasPreview)
            Paint({rect.left, rect.top + line, rect.right, rect.bottom}, clip, RVHT_ONITEMPREVIEW);
    }
    void PaintCell(const RowShape& shape, Rect cell, Rect clip)
    {
        const int x = cell.left;
        const Rect line = m_hit.row == kFixedRow ? Rect{x, clip.top, cell.right, clip.bottom} : cell;
        const int indented = x + (m_hit.column == 0 ? std::max(0, shape.level) * m_view.itemHeight : 0);
        cell.left = std::min(cell.right, indented);
        Paint(line, clip, RVHT_NOWHERE, cell);
        const CellContents contents = m_sheet.contents[m_hit.subitem];
        const CellParts parts = CellLayout(m_view).PartsOf(cell, contents);
        Paint(parts.image, clip, contents.hasImage ? RVHT_ONITEMIMAGE : RVHT_NOWHERE);
        Paint(parts.check, clip, contents.hasCheck ? RVHT_ONITEMCHECK : RVHT_NOWHERE);
        Paint(parts.text, clip, RVHT_ONITEMTEXT);
        clip.left = std::max(clip.left, x);
        if (m_hit.column == 0 && shape.level >= 0 && shape.hasBox && indented <= cell.right)
            Paint({indented - m_view.itemHeight, cell.top, indented, cell.bottom}, clip, RVHT_ONITEMTREEBOX);
    }
    void Paint(const Rect& rect, const Rect& clip, std::uint32_t flag) { Paint(rect, clip, flag, rect); }
    void Paint(const Rect& rect, const Rect& clip, std::uint32_t flag, const Rect& part)
    {
        Hit hit = m_hit;
        hit.flags |= flag;
        hit.rect = part;
        m_drawn.push_back({{std::max(rect.left, clip.left), std::max(rect.top, clip.top),
                            std::min(rect.right, clip.right), std::min(rect.bottom, clip.bottom)},
                           hit});
        xs.insert({rect.left - 1, rect.left, rect.right - 1, rect.right});
        ys.insert({rect.top - 1, rect.top, rect.bottom - 1, rect.bottom});
    }

    Sheet& m_sheet;
    const View& m_view;
    Hit m_hit; // of the row and column that are painted
    std::vector<std::pair<Rect, Hit>> m_drawn;
};

TEST(Geometry, EveryPointHitsWhatIsDrawnThere)
{
    Random random(5);
    for (int round = 0; round < 100; ++round)
    {
        RandomSheet sheet(random);
        const Picture picture(sheet);
        for (const int y : picture.ys)
            for (const int x : picture.xs)
                ASSERT_EQ(picture.At(x, y), sheet.geometry.HitTest(x, y)) << round << ' ' << x << ' ' << y;
    }
}

// ---- Positions

// 100 rows of 10 pixels, of which 4 are seen, and a part of one.
class HundredRows : public Sheet
{
public:
    HundredRows()
    {
        rows.resize(100);
        LayOut(view, 205, 45, 0, false);
    }
};

TEST(ScrollPosition, IsCutToTheRowsAndComesBackOnceFromTooFar)
{
    HundredRows sheet;
    ScrollPosition position(sheet.view);
    const std::tuple<int, int, bool> cases[] = {{-1, 0, false}, {7, 7, true}, {7, 7, false}, {9, 8, true}};
    for (const auto& [wanted, reached, moved] : cases)
    {
        EXPECT_EQ(moved, position.SetTop(wanted, 8));
        EXPECT_EQ(reached, sheet.view.topRow);
        EXPECT_EQ(moved, position.SetLeft(wanted, 8));
        EXPECT_EQ(reached, sheet.view.left);
    }
    position.SetTop(99, 100);
    EXPECT_FALSE(position.Fit(sheet.geometry)) << "a program may scroll so far";
    position.MarkTooFar();
    EXPECT_TRUE(position.IsTooFar() && position.Fit(sheet.geometry));
    EXPECT_EQ(96, sheet.view.topRow);
    EXPECT_FALSE(position.IsTooFar());
    position.MarkTooFar();
    EXPECT_FALSE(position.Fit(sheet.geometry)) << "nothing moves";
}

TEST(DirtyRows, AskForFewRangesInViewAndThenForAll)
{
    using Request = DirtyRows::Request;
    HundredRows sheet;
    sheet.view.topRow = 10; // rows to 14 are in view
    DirtyRows dirty;
    const std::tuple<int, int, Request> cases[] = {
        {0, 9, Request::Nothing},   {15, 20, Request::Nothing}, {9, 10, Request::Rows},
        {10, 10, Request::Nothing}, {14, 14, Request::Rows},    {14, 15, Request::Rows},
        {11, 12, Request::Rows},    {13, 13, Request::All},     {11, 11, Request::Nothing}};
    for (const auto& [first, last, request] : cases)
        EXPECT_EQ(request, dirty.Add({first, last}, sheet.view)) << first << " to " << last;
    EXPECT_EQ(Request::Nothing, dirty.AddAll());
    dirty.Painted();
    EXPECT_EQ(Request::Rows, dirty.Add({13, 13}, sheet.view));
    EXPECT_EQ(Request::All, dirty.AddAll());
    EXPECT_EQ(Request::Nothing, dirty.Add({12, 12}, sheet.view));
}

// ---- Limits

// As many rows as there may be, and columns beyond the range of int: neither overflows nor takes long.
class HugeSheet : public Sheet
{
public:
    HugeSheet()
    {
        columns.assign(70000, {0, 0x7FFF});
        contents[0] = {true, true, true, true};
        LayOut(view, 1000, 1000, 20, false);
    }
    int RowCount() override { return INT_MAX; }
    RowShape ShapeOf(int) override
    {
        ++asked;
        return {previewHeight, true, INT_MAX, true, -1};
    }
    int previewHeight = 0;
};

TEST(Geometry, FindsAmongAsManyRowsAsThereMayBe)
{
    HugeSheet sheet;
    EXPECT_EQ(INT_MAX - 98, sheet.geometry.EndTop());
    EXPECT_EQ(INT_MAX, sheet.geometry.RowWidth());
    sheet.view.topRow = sheet.geometry.TopToShow(INT_MAX - 1);
    EXPECT_EQ(INT_MAX - 98, sheet.view.topRow);
    EXPECT_EQ(INT_MAX - 1, sheet.geometry.HitTest(5, 995).row);
    sheet.view.left = INT_MAX - 1000;
    EXPECT_NE(kNoColumn, sheet.geometry.HitTest(5, 900).column);
    EXPECT_GT(10000, sheet.asked);

    sheet.view.showLines = false;
    sheet.previewHeight = 0x7FFF;
    ShownRow shown;
    EXPECT_TRUE(sheet.geometry.Next(shown, 1000));
    EXPECT_EQ(RVHT_ONITEMPREVIEW, sheet.geometry.HitTest(5, 900).flags);
}

// Sizes that no window has: what matters is that nothing overflows.
TEST(Geometry, StandsSizesAtTheirLimits)
{
    for (const int size : {INT_MAX - 1, INT_MAX})
    {
        HugeSheet sheet;
        View& view = sheet.view;
        Geometry& geometry = sheet.geometry;
        view.itemHeight = view.margin = view.imageWidth = view.checkWidth = view.fixedFrame = size;
        LayOut(view, size, size, size, true);
        view.report = {0, 0, size, size};
        sheet.previewHeight = sheet.columns[0].width = size;
        for (const int scrolled : {0, size})
        {
            view.left = view.topRow = scrolled;
            for (const int point : {INT_MIN, -1, 0, size - 1, size})
            {
                view.fixedRow = {};
                geometry.HitTest(point, point);
                view.fixedRow = view.report;
                geometry.HitTest(point, point);
            }
            for (const int row : {kFixedRow, 0, INT_MAX - 1})
                if (const std::optional<ShownRow> found = geometry.FindRow(row))
                {
                    EXPECT_GE(geometry.FindCell(*found, 0)->rect.Width(), 0);
                    EXPECT_TRUE(geometry.FindCell(*found, 1));
                }
            geometry.HeightOf(0);
            geometry.RowsFrom(0);
            geometry.TopToShow(INT_MAX - 1);
            geometry.LeftToShow(1);
            geometry.EndLeft();
            geometry.FittingTop(INT_MAX);
        }
        const CellLayout layout(view);
        EXPECT_EQ(INT_MAX, layout.ContentsWidth({true, true, true, true}, INT_MAX));
        for (const int left : {INT_MIN, INT_MAX})
            for (const int right : {INT_MIN, INT_MAX})
            {
                const Rect cell{left, left, right, right};
                EXPECT_LE(layout.PartsOf(cell, {true, true, true, true}).text.Width(), 0);
                layout.ImageIn(cell);
                layout.CheckIn(cell);
                layout.TreeBoxOf(cell);
                layout.TreeBoxIn(cell);
            }
    }
}

// Previews alone, of which there are none but one of a row in 400: a walk asks of what fits on a screen.
TEST(Geometry, LooksPastFewRowsWithoutHeight)
{
    const RowShape preview{10, true, -1, false, -1};
    for (const bool hasSome : {false, true})
    {
        Sheet sheet;
        sheet.rows.resize(100000);
        for (std::size_t row = 0; hasSome && row < sheet.rows.size(); row += 400)
            sheet.rows[row] = preview;
        sheet.view.showLines = false;
        LayOut(sheet.view, 100, 700, 0, false);
        sheet.view.topRow = 5000;
        int shown = 0;
        const std::function<void(Geometry&)> walks[] = {
            [](Geometry& geometry) { EXPECT_LT(5100, geometry.RowsFrom(5000).last); },
            [](Geometry& geometry) { EXPECT_GT(4900, geometry.RowsUpTo(5000).first); },
            [](Geometry& geometry) { geometry.FittingTop(5000); },
            [](Geometry& geometry) { geometry.HitTest(5, 650); },
            [&shown](Geometry& geometry) {
                for (ShownRow row; geometry.Next(row, 700);)
                    ++shown;
            }};
        for (const auto& walk : walks)
        {
            sheet.asked = 0;
            walk(sheet.geometry);
            EXPECT_GE(kMaxHidden + 70, sheet.asked) << &walk - walks;
        }
        EXPECT_EQ(hasSome ? 3 : 0, shown);

        sheet.rows.assign(static_cast<std::size_t>(kMaxHidden + hasSome), {});
        sheet.rows.push_back(preview);
        sheet.view.topRow = 0;
        ShownRow row;
        EXPECT_EQ(!hasSome, sheet.geometry.Next(row, 700)) << "after as many hidden rows, or one more";
    }
}

} // namespace
