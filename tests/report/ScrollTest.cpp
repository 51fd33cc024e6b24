// Where scroll bars lead, and what is invalidated.
#include "report/model/DirtyRows.h"
#include "report/model/ScrollPosition.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

using namespace report;

// 100 rows of 10 pixels and three columns of 100, in an area of 205 by 45 pixels.
class ScrolledSheet : public GeometrySource
{
public:
    ScrolledSheet() { LayOut(view, 205, 45, 0, false); }
    int RowCount() override { return 100; }
    RowShape ShapeOf(int) override { return {}; }
    CellContents ContentsOf(int, int) override { return {}; }
    const std::vector<Column>& Columns() override { return columns; }

    View view;
    std::vector<Column> columns{{0, 100}, {1, 100}, {2, 100}};
    Geometry geometry{view, *this};
};

TEST(ScrollPosition, GoesWhereTheBarWantsButNotPastTheEnd)
{
    using Request = ScrollRequest;
    const struct
    {
        Request request;
        int thumb, top, rowAfter, left, leftAfter;
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
                 {Request::PageForward, 0, 98, 98, 299, 299}};
    for (const auto& each : cases)
    {
        ScrolledSheet sheet;
        sheet.view.topRow = each.top;
        sheet.view.left = each.left;
        EXPECT_EQ(each.rowAfter, RowAfter(each.request, each.thumb, sheet.view, sheet.geometry))
            << &each - cases;
        EXPECT_EQ(each.leftAfter, LeftAfter(each.request, each.thumb, sheet.view, sheet.geometry))
            << &each - cases;
    }
}

TEST(ScrollPosition, IsCutToTheRowsAndToTheirWidth)
{
    View view;
    ScrollPosition position(view);
    const std::tuple<int, int, bool> cases[] = {{-1, 0, false}, {7, 7, true}, {7, 7, false}, {9, 8, true}};
    for (const auto& [wanted, reached, moved] : cases)
    {
        EXPECT_EQ(moved, position.SetTop(wanted, 8));
        EXPECT_EQ(reached, view.topRow);
        EXPECT_EQ(moved, position.SetLeft(wanted, 8));
        EXPECT_EQ(reached, view.left);
    }
}

TEST(ScrollPosition, ComesBackOnceFromTooFar)
{
    ScrolledSheet sheet;
    ScrollPosition position(sheet.view);
    position.SetTop(99, 100);
    EXPECT_FALSE(position.Fit(sheet.geometry)) << "a program may scroll so far";
    position.MarkTooFar();
    EXPECT_TRUE(position.IsTooFar() && position.Fit(sheet.geometry));
    EXPECT_EQ(96, sheet.view.topRow);
    EXPECT_FALSE(position.IsTooFar());
    position.MarkTooFar();
    EXPECT_FALSE(position.Fit(sheet.geometry)) << "nothing moves";
}

TEST(ScrollPosition, PagesGoOnWhereOneRowFillsTheArea)
{
    ScrolledSheet sheet;
    LayOut(sheet.view, 205, 5, 0, false);
    sheet.view.topRow = 5;
    EXPECT_EQ(6, RowAfter(ScrollRequest::PageForward, 0, sheet.view, sheet.geometry));
    EXPECT_EQ(4, RowAfter(ScrollRequest::PageBack, 0, sheet.view, sheet.geometry));
    sheet.view.left = INT_MAX;
    EXPECT_EQ(INT_MAX, LeftAfter(ScrollRequest::LineForward, 0, sheet.view, sheet.geometry));
}

TEST(DirtyRows, AskForFewRangesInViewAndThenForAll)
{
    using Request = DirtyRows::Request;
    ScrolledSheet sheet;
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
