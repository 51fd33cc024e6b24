// Where scroll bars lead, and what is invalidated.
#include "report/model/DirtyRows.h"
#include "report/model/ScrollPosition.h"
#include "tests/report/Sheet.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <set>

namespace
{

using namespace report;

// 100 rows of 10 pixels.
class HundredRows : public Sheet
{
public:
    HundredRows(int width, int height, const std::vector<int>& columnWidths)
    {
        rows.resize(100);
        for (const int each : columnWidths)
            columns.push_back({static_cast<int>(columns.size()), each});
        LayOut(view, width, height, 0, false);
    }
};

TEST(ScrollPosition, BringsColumnsIntoView)
{
    HundredRows sheet(200, 80, {50, 300, 40, 30000});
    const struct
    {
        int left, column, expected;
    } cases[] = {{0, 0, 0},     {30, 0, 0},    {0, 1, 50},  {350, 1, 50},    {0, 2, 350},  {190, 2, 190},
                 {191, 2, 191}, {200, 2, 200}, {0, 3, 390}, {20000, 3, 390}, {70, -1, 70}, {70, 4, 70}};
    for (const auto& each : cases)
    {
        sheet.view.left = each.left;
        EXPECT_EQ(each.expected, sheet.geometry.LeftToShow(each.column)) << each.left << ' ' << each.column;
    }
    EXPECT_EQ(30390 - 200, sheet.geometry.EndLeft());
}

TEST(ScrollPosition, GoesWhereTheBarWantsButNotPastTheEnd)
{
    using Request = ScrollRequest;
    const struct
    {
        Request request;
        int thumb, top, rowAfter, left, leftAfter;
        int height = 45; // of the area
        int itemHeight = 10;
    } cases[] = {{Request::LineBack, 0, 0, 0, 0, 0},
                 {Request::LineBack, 0, 5, 4, 25, 15},
                 {Request::LineForward, 0, 5, 6, 25, 35},
                 {Request::LineForward, 0, 96, 96, 95, 95},
                 {Request::PageBack, 0, 5, 2, 90, 0},
                 {Request::PageBack, 0, 2, 0, 0, 0},
                 {Request::PageForward, 0, 5, 8, 0, 95},
                 {Request::PageForward, 0, 95, 96, 50, 95},
                 {Request::Begin, 0, 50, 0, 50, 0},
                 {Request::End, 0, 5, 96, 5, 95},
                 {Request::Thumb, 7, 50, 7, 50, 7},
                 {Request::Thumb, INT_MAX, 5, 96, 5, 95},
                 {Request::Thumb, -1, 5, 0, 5, 0},
                 {Request::LineForward, 0, 99, 99, 200, 200}, // past the end
                 {Request::PageForward, 0, 98, 98, 299, 299},
                 {Request::LineForward, 0, 99, 99, INT_MAX, INT_MAX},
                 {Request::PageForward, 0, 5, 6, 0, 95, 5}, // one row fills the area
                 {Request::PageBack, 0, 5, 4, 0, 0, 5},
                 {Request::LineBack, 0, 5, 4, 25, 24, 45, 0}};
    for (const auto& each : cases)
    {
        HundredRows sheet(205, each.height, {100, 100, 100});
        sheet.view.topRow = each.top;
        sheet.view.left = each.left;
        sheet.view.itemHeight = each.itemHeight;
        EXPECT_EQ(each.rowAfter, RowAfter(each.request, each.thumb, sheet.view, sheet.geometry))
            << &each - cases;
        EXPECT_EQ(each.leftAfter, LeftAfter(each.request, each.thumb, sheet.view, sheet.geometry))
            << &each - cases;
    }
}

TEST(ScrollPosition, PagesShowEachRowWholeOnTheWay)
{
    std::mt19937 random(17);
    for (int round = 0; round < 200; ++round)
    {
        HundredRows sheet(50, 40 + static_cast<int>(random() % 60), {});
        for (RowShape& row : sheet.rows)
            row.previewHeight = static_cast<int>(round % 2 != 0 && random() % 4 == 0 ? random() % 30 : 0);
        for (const ScrollRequest request : {ScrollRequest::PageForward, ScrollRequest::PageBack})
        {
            std::set<int> seen;
            for (int page = 0; page < 100; ++page)
            {
                const RowRange shown = sheet.geometry.RowsFrom(sheet.view.topRow);
                for (int row = shown.first; row <= shown.last; ++row)
                    seen.insert(row);
                sheet.view.topRow = RowAfter(request, 0, sheet.view, sheet.geometry);
            }
            EXPECT_EQ(100u, seen.size()) << "round " << round;
        }
    }
}

TEST(ScrollPosition, IsCutToTheRowsAndComesBackOnceFromTooFar)
{
    HundredRows sheet(205, 45, {});
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
    HundredRows sheet(205, 45, {});
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

} // namespace
