// Where things are, against walks over all rows and pixels.
#include "report/model/Geometry.h"

#include "ReportItem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <random>

namespace
{

using namespace report;

// A control of any looks.
class Sheet : public GeometrySource
{
public:
    int RowCount() override { return static_cast<int>(rows.size()); }
    RowShape ShapeOf(int row) override
    {
        ++asked;
        return row == kFixedRow ? RowShape() : rows.at(static_cast<std::size_t>(row));
    }
    CellContents ContentsOf(int, int subitem) override { return contents[subitem]; }
    const std::vector<Column>& Columns() override { return columns; }

    int Height(int row)
    {
        const int preview = view.showPreviews ? rows.at(static_cast<std::size_t>(row)).previewHeight : 0;
        return (view.showLines ? view.itemHeight : 0) + preview;
    }
    int HeightOf(int first, int last)
    {
        int height = 0;
        for (int row = first; row <= last; ++row)
            height += Height(row);
        return height;
    }

    View view;
    std::vector<RowShape> rows;
    std::vector<Column> columns;
    std::map<int, CellContents> contents;
    int asked = 0;
};

int RowsOf(RowRange range)
{
    return range.last - range.first + 1;
}

class GeometryTest : public testing::Test
{
protected:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    void Randomise(Sheet& sheet)
    {
        View& view = sheet.view;
        view.itemHeight = 1 + Below(12);
        view.margin = Below(4);
        view.imageWidth = Below(2) * 9;
        view.checkWidth = 1 + Below(8);
        view.fixedFrame = Below(3);
        view.showLines = Below(4) != 0;
        view.showPreviews = !view.showLines || Below(2) == 0;
        sheet.columns.clear();
        for (int i = Below(5); i > 0; --i)
        {
            sheet.columns.push_back({static_cast<int>(sheet.columns.size()) + 10, Below(4) ? Below(60) : 0});
            CellContents& contents = sheet.contents[sheet.columns.back().subitem];
            contents = {Below(2) == 0, Below(2) == 0, Below(2) == 0, Below(2) == 0};
        }
        sheet.rows.resize(static_cast<std::size_t>(Below(40)));
        for (RowShape& row : sheet.rows)
            row = {Below(3) * 7, Below(2) == 0, Below(5) - 1, Below(2) == 0, Below(6) == 0 ? 10 : -1};
        LayOut(view, Below(150), Below(120), Below(20), Below(2) == 0);
        view.topRow = Below(sheet.RowCount() + 1);
        view.left = Below(80);
    }

private:
    std::mt19937 m_random{5};
};

TEST_F(GeometryTest, ScrollsAsAWalkOverAllRowsSays)
{
    for (int round = 0; round < 3000; ++round)
    {
        Sheet sheet;
        Randomise(sheet);
        Geometry geometry(sheet.view, sheet);
        const int count = sheet.RowCount();
        const int room = sheet.view.report.Height();
        if (count == 0)
        {
            EXPECT_EQ(0, geometry.FittingTop(7));
            continue;
        }
        const int row = Below(count);
        int last = row;
        while (last + 1 < count && sheet.HeightOf(row, last + 1) <= room)
            ++last;
        EXPECT_EQ((RowRange{row, last}), geometry.RowsFrom(row)) << round;
        int first = row;
        while (first > 0 && sheet.HeightOf(first - 1, row) <= room)
            --first;
        EXPECT_EQ((RowRange{first, row}), geometry.RowsUpTo(row)) << round;

        // The smallest way to a place where the row is seen whole, or is the first.
        const int top = sheet.view.topRow;
        const int shown = geometry.TopToShow(row);
        EXPECT_TRUE(shown == row || sheet.HeightOf(shown, row) <= room) << round;
        EXPECT_EQ(row <= top ? row : std::max(top, first), shown) << round;

        int end = count - 1;
        while (end > 0 && sheet.HeightOf(end - 1, count - 1) <= room)
            --end;
        EXPECT_EQ(std::min(top, end), geometry.FittingTop(top)) << round;
    }
}

// What each point should hit, painted into a picture in the order of the drawing.
using Picture = std::map<std::pair<int, int>, Hit>;

void Paint(Picture& picture, const View& view, const Rect& rect, const Rect& clip, Hit hit)
{
    hit.rect = rect;
    for (int y = std::max(rect.top, clip.top); y < std::min(rect.bottom, clip.bottom); ++y)
        for (int x = std::max(rect.left, clip.left); x < std::min(rect.right, clip.right); ++x)
            if (x < view.report.right)
                picture[{x, y}] = hit;
}

void PaintRow(Picture& picture, Sheet& sheet, int row, const Rect& rect, const Rect& clip,
              std::uint32_t flags)
{
    const View& view = sheet.view;
    const RowShape shape = row == kFixedRow ? RowShape() : sheet.rows.at(static_cast<std::size_t>(row));
    const int line = row == kFixedRow ? rect.Height() : view.LineHeight();
    const int indentation = std::max(0, shape.level) * view.itemHeight;
    Hit hit;
    hit.row = row;
    hit.flags = flags | RVHT_NOWHERE;
    Paint(picture, view, rect, clip, hit);
    std::vector<Column> columns = sheet.columns;
    if (shape.spanning >= 0)
        columns = {{shape.spanning, rect.Width()}};
    int x = rect.left;
    for (std::size_t i = 0; i < columns.size(); ++i)
    {
        hit.column = static_cast<int>(i);
        hit.subitem = columns[i].subitem;
        const int right = x + columns[i].width;
        Rect cell{x, rect.top, right, rect.top + line};
        hit.flags = flags | RVHT_NOWHERE;
        Paint(picture, view, {x, rect.top, right, rect.bottom}, clip, hit);
        if (i == 0)
            cell.left = std::min(right, x + indentation);
        // Parts stand side by side, whatever there is of them, and end at the right margin.
        const CellContents contents = sheet.contents[hit.subitem];
        int at = cell.left + view.margin;
        const int end = right - view.margin;
        const auto part = [&](int width, std::uint32_t flag) {
            hit.flags = flags | flag;
            Paint(picture, view, {at, cell.top, std::min(at + width, end), cell.bottom}, clip, hit);
            at += width;
        };
        if (view.imageWidth > 0 && (contents.hasImage || contents.keepsImageRoom))
            part(view.imageWidth + view.margin, contents.hasImage ? RVHT_ONITEMIMAGE : RVHT_NOWHERE);
        if (contents.hasCheck ? end - at > view.checkWidth : contents.keepsCheckRoom)
            part(view.checkWidth + view.margin, contents.hasCheck ? RVHT_ONITEMCHECK : RVHT_NOWHERE);
        part(std::max(0, end - at), RVHT_ONITEMTEXT);
        if (i == 0 && shape.level >= 0 && shape.hasBox && x + indentation <= right)
        {
            hit.flags = flags | RVHT_ONITEMTREEBOX;
            const Rect box{cell.left - view.itemHeight, cell.top, cell.left, cell.bottom};
            Paint(picture, view, box, {x, clip.top, clip.right, clip.bottom}, hit);
        }
        x = right;
    }
    hit = {};
    hit.row = row;
    hit.flags = flags | RVHT_ONITEMPREVIEW;
    if (row != kFixedRow && view.showPreviews && shape.hasPreview)
        Paint(picture, view, {rect.left, rect.top + line, rect.right, rect.bottom}, clip, hit);
}

TEST_F(GeometryTest, EveryPointHitsWhatIsDrawnThere)
{
    constexpr std::uint32_t kParts = RVHT_ONITEMIMAGE | RVHT_ONITEMCHECK | RVHT_ONITEMTEXT |
                                     RVHT_ONITEMTREEBOX |
                                     RVHT_ONITEMPREVIEW; // which have rectangles of their own
    Hit nowhere;
    nowhere.flags = RVHT_NOWHERE;
    for (int round = 0; round < 300; ++round)
    {
        Sheet sheet;
        Randomise(sheet);
        const View& view = sheet.view;
        Geometry geometry(view, sheet);
        int columns = 0;
        for (const Column& column : sheet.columns)
            columns += column.width;
        const int width = std::max(view.header.Width(), columns);

        Picture picture;
        const Rect fixed{-view.left, view.fixedRow.top + view.fixedFrame, width - view.left,
                         view.fixedRow.bottom - view.fixedFrame};
        if (fixed.Height() > 0)
            PaintRow(picture, sheet, kFixedRow, fixed, view.fixedRow, RVHT_ONFIXEDROW);
        int y = view.report.top;
        for (int row = view.topRow; row < sheet.RowCount() && y < view.report.bottom; ++row)
        {
            const Rect rect{-view.left, y, width - view.left, y + sheet.Height(row)};
            PaintRow(picture, sheet, row, rect, view.report, 0);
            y = rect.bottom;
        }
        for (int py = 0; py < view.report.bottom; ++py)
        {
            for (int px = 0; px < view.report.right; ++px)
            {
                const auto found = picture.find({px, py});
                if (found == picture.end() && !view.report.Contains(px, py))
                    continue;
                const Hit hit = geometry.HitTest(px, py);
                Hit expected = found != picture.end() ? found->second : nowhere;
                if ((expected.flags & kParts) == 0)
                    expected.rect = hit.rect;
                ASSERT_EQ(expected, hit) << round << ": " << px << ' ' << py;
            }
        }
    }
}

TEST_F(GeometryTest, TellsWherePointsOutsideLie)
{
    Sheet sheet;
    sheet.view.fixedFrame = 3;
    LayOut(sheet.view, 100, 80, 20, true);
    EXPECT_EQ((Rect{0, 20, 100, 36}), sheet.view.fixedRow);
    Geometry geometry(sheet.view, sheet);
    const struct
    {
        int x, y;
        std::uint32_t flags;
    } cases[] = {{-1, -1, RVHT_ABOVE | RVHT_TOLEFT},       {50, 5, RVHT_ABOVE}, // the header
                 {50, 25, RVHT_ONFIXEDROW | RVHT_NOWHERE}, {50, 40, RVHT_NOWHERE},
                 {100, 80, RVHT_BELOW | RVHT_TORIGHT},     {INT_MIN, INT_MAX, RVHT_BELOW | RVHT_TOLEFT}};
    for (const auto& each : cases)
        EXPECT_EQ(each.flags, geometry.HitTest(each.x, each.y).flags) << each.x << ' ' << each.y;
}

TEST_F(GeometryTest, BringsColumnsIntoView)
{
    Sheet sheet;
    sheet.columns = {{0, 50}, {1, 300}, {2, 40}, {3, 30000}};
    LayOut(sheet.view, 200, 80, 0, false);
    Geometry geometry(sheet.view, sheet);
    const struct
    {
        int left, column, expected;
    } cases[] = {{0, 0, 0},     {30, 0, 0},    {0, 1, 50},  {350, 1, 50},    {0, 2, 350},  {190, 2, 190},
                 {191, 2, 191}, {200, 2, 200}, {0, 3, 390}, {20000, 3, 390}, {70, -1, 70}, {70, 4, 70}};
    for (const auto& each : cases)
    {
        sheet.view.left = each.left;
        EXPECT_EQ(each.expected, geometry.LeftToShow(each.column)) << each.left << ' ' << each.column;
    }
    EXPECT_EQ(30390 - 200, geometry.EndLeft());
}

// As many rows as there may be, and columns beyond the range of int: neither overflows nor takes long.
TEST_F(GeometryTest, StandsSizesAtTheirLimits)
{
    class Huge : public Sheet
    {
    public:
        int RowCount() override { return INT_MAX; }
        RowShape ShapeOf(int) override
        {
            ++asked;
            return {previewHeight, true, INT_MAX, true, -1};
        }
        int previewHeight = 0;
    } sheet;
    sheet.columns.assign(70000, {0, 0x7FFF});
    sheet.contents[0] = {true, true, true, true};
    LayOut(sheet.view, 1000, 1000, 20, false);
    Geometry geometry(sheet.view, sheet);
    EXPECT_EQ(INT_MAX - 98, geometry.EndTop());
    EXPECT_EQ(INT_MAX, geometry.RowWidth());
    sheet.view.topRow = geometry.TopToShow(INT_MAX - 1);
    EXPECT_EQ(INT_MAX - 98, sheet.view.topRow);
    EXPECT_EQ(INT_MAX - 1, geometry.HitTest(5, 995).row);
    sheet.view.left = INT_MAX - 1000;
    EXPECT_NE(kNoColumn, geometry.HitTest(5, 900).column);
    EXPECT_GT(10000, sheet.asked);

    sheet.view.showLines = false;
    sheet.previewHeight = 0x7FFF;
    ShownRow shown;
    EXPECT_TRUE(geometry.Next(shown, 1000));
    EXPECT_EQ(RVHT_ONITEMPREVIEW, geometry.HitTest(5, 900).flags);

    // Sizes that no window has: what matters is that nothing overflows.
    for (const int size : {INT_MAX - 1, INT_MAX})
    {
        View& view = sheet.view;
        view.showLines = true;
        view.itemHeight = view.margin = view.imageWidth = view.checkWidth = view.fixedFrame = size;
        LayOut(view, size, size, size, true);
        view.fixedRow = view.report = {0, 0, size, size};
        sheet.previewHeight = sheet.columns[0].width = size;
        for (const int scrolled : {0, size})
        {
            view.left = view.topRow = scrolled;
            for (const int point : {INT_MIN, -1, 0, size - 1, size})
            {
                geometry.HitTest(point, point);
                view.fixedRow = {};
                geometry.HitTest(point, point);
                view.fixedRow = view.report;
            }
            for (const int row : {kFixedRow, 0, INT_MAX - 1})
                if (const std::optional<ShownRow> found = geometry.FindRow(row))
                {
                    EXPECT_GE(geometry.FindCell(*found, 0)->rect.Width(), 0);
                    EXPECT_TRUE(geometry.FindCell(*found, 1));
                }
            geometry.HeightOf(0);
            geometry.RowsFrom(0);
            geometry.RowsUpTo(INT_MAX - 1);
            geometry.TopToShow(INT_MAX - 1);
            geometry.LeftToShow(1);
            geometry.EndLeft();
            geometry.FittingTop(INT_MAX);
        }
    }
}

// Previews alone, of which there are none but one of a row in 400: a walk asks of what fits on a screen.
TEST_F(GeometryTest, LooksPastFewRowsWithoutHeight)
{
    for (const bool hasSome : {false, true})
    {
        Sheet sheet;
        sheet.rows.resize(100000);
        for (std::size_t row = 0; hasSome && row < sheet.rows.size(); row += 400)
            sheet.rows[row] = {10, true, -1, false, -1};
        sheet.view.showLines = false;
        LayOut(sheet.view, 100, 700, 0, false);
        sheet.view.topRow = 5000;
        Geometry geometry(sheet.view, sheet);
        const auto asks = [&](const auto& walk) {
            sheet.asked = 0;
            walk();
            return sheet.asked;
        };
        EXPECT_GE(kMaxHidden + 70, asks([&] { EXPECT_GT(RowsOf(geometry.RowsFrom(5000)), 100); }));
        EXPECT_GE(kMaxHidden + 70, asks([&] { EXPECT_GT(RowsOf(geometry.RowsUpTo(5000)), 100); }));
        EXPECT_GE(kMaxHidden + 70, asks([&] { geometry.FittingTop(5000); }));
        EXPECT_GE(kMaxHidden + 70, asks([&] { geometry.HitTest(5, 650); }));
        int shown = 0;
        EXPECT_GE(kMaxHidden + 70, asks([&] {
                      for (ShownRow row; geometry.Next(row, 700);)
                          ++shown;
                  }));
        EXPECT_EQ(hasSome ? 3 : 0, shown);
    }
}

TEST_F(GeometryTest, FindsTheRowAfterAsManyHiddenOnesAsAreLookedPast)
{
    for (const int hidden : {kMaxHidden, kMaxHidden + 1})
    {
        Sheet sheet;
        sheet.rows.resize(static_cast<std::size_t>(hidden));
        sheet.rows.push_back({10, true, -1, false, -1});
        sheet.view.showLines = false;
        LayOut(sheet.view, 100, 700, 0, false);
        ShownRow row;
        EXPECT_EQ(hidden == kMaxHidden, Geometry(sheet.view, sheet).Next(row, 700));
    }
}

} // namespace
