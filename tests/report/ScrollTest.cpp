// How far one may scroll, and what is invalidated.
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
