// How a cell is divided, against a table; tests of the geometry compare its parts with a picture.
#include "report/model/CellLayout.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

using report::CellContents;
using report::CellLayout;
using report::Rect;
using report::View;

View SizesOf(int margin, int image, int check)
{
    View view;
    view.margin = margin;
    view.imageWidth = view.imageHeight = image;
    view.checkWidth = view.checkHeight = check;
    return view;
}

TEST(CellLayout, DividesACellFromLeftToRight)
{
    const struct
    {
        int line;
        int margin, image, check; // sizes
        CellContents contents;
        int width;                          // of the cell, from 100 on
        int imageEnd, checkEnd, text, room; // where the parts end; the text's beginning and end
        int measured;                       // with a text of 30
    } cases[] = {
        {__LINE__, 6, 16, 8, {}, 80, 106, 106, 106, 174, 42},
        {__LINE__, 6, 16, 8, {true, true, false, false}, 80, 128, 142, 142, 174, 78},
        {__LINE__, 6, 16, 8, {false, false, true, true}, 80, 128, 142, 142, 174, 42},
        {__LINE__, 6, 0, 8, {true, true, false, false}, 80, 106, 120, 120, 174, 62}, // no list of images
        {__LINE__, 6, 16, 0, {true, true, false, false}, 80, 128, 128, 128, 174, 70},
        // A check box needs one pixel more than its width; room that is kept is kept in any case.
        {__LINE__, 6, 16, 8, {true, true, false, false}, 42, 128, 128, 128, 136, 78},
        {__LINE__, 6, 16, 8, {true, true, false, false}, 43, 128, 137, 142, 137, 78},
        {__LINE__, 6, 16, 8, {true, false, false, true}, 42, 128, 136, 142, 136, 64},
        {__LINE__, 0, 16, 8, {true, true, false, false}, 80, 116, 124, 124, 180, 54},
        {__LINE__, 6, 16, 8, {true, true, false, false}, 20, 114, 114, 128, 114, 78}, // narrower than its
                                                                                      // image
        {__LINE__, 6, 16, 8, {}, 0, 94, 94, 106, 94, 42},
    };
    for (const auto& each : cases)
    {
        const View view = SizesOf(each.margin, each.image, each.check);
        const CellLayout layout(view);
        const report::CellParts parts = layout.PartsOf({100, 10, 100 + each.width, 30}, each.contents);
        EXPECT_EQ((Rect{100 + each.margin, 10, each.imageEnd, 30}), parts.image) << "line " << each.line;
        EXPECT_EQ(each.checkEnd, parts.check.right) << "line " << each.line;
        EXPECT_EQ((Rect{each.text, 10, each.room, 30}), parts.text) << "line " << each.line;
        EXPECT_EQ(each.measured, layout.ContentsWidth(each.contents, 30)) << "line " << each.line;
        EXPECT_EQ(each.measured - each.margin - 30, layout.ContentsWidth(each.contents, -1));
    }
}

TEST(CellLayout, PutsPicturesInTheMiddleOfTheLine)
{
    const View view = SizesOf(6, 16, 7);
    const CellLayout layout(view);
    EXPECT_EQ((Rect{100, 13, 116, 29}), layout.ImageIn({100, 10, 300, 30}));
    EXPECT_EQ((Rect{100, 18, 107, 25}), layout.CheckIn({100, 10, 300, 30}));
    EXPECT_EQ((Rect{100, 8, 116, 24}), layout.ImageIn({100, 10, 300, 20})) << "higher than the line";

    // The tree box's middle is the pixel in the middle of its square, left of the window too.
    EXPECT_EQ((Rect{106, 16, 115, 25}), CellLayout(View()).TreeBoxIn({100, 10, 300, 31}));
    EXPECT_EQ((Rect{-95, 16, -86, 25}), CellLayout(View()).TreeBoxIn({-101, 10, -81, 31}));
    View fine;
    fine.dpi = 192;
    EXPECT_EQ((Rect{106, 16, 124, 34}), CellLayout(fine).TreeBoxIn({100, 10, 300, 41}));
    EXPECT_EQ((Rect{20, 10, 30, 40}), layout.TreeBoxOf({30, 10, 90, 40}));
    EXPECT_EQ(0, layout.Indentation(-1));
    EXPECT_EQ(30, layout.Indentation(3));
}

TEST(CellLayout, StandsSizesAtTheirLimits)
{
    const View view = SizesOf(INT_MAX, INT_MAX, INT_MAX);
    const CellLayout layout(view);
    const CellContents all = {true, true, true, true};
    EXPECT_EQ(INT_MAX, layout.ContentsWidth(all, INT_MAX));
    EXPECT_EQ(INT_MAX, layout.Indentation(INT_MAX));
    for (const Rect& cell :
         {Rect{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, Rect{INT_MAX, INT_MAX, INT_MIN, INT_MIN},
          Rect{INT_MAX, INT_MAX, INT_MAX, INT_MAX}, Rect{INT_MIN, INT_MIN, INT_MIN, INT_MIN}})
    {
        const report::CellParts parts = layout.PartsOf(cell, all);
        EXPECT_LE(parts.text.Width(), 0);
        layout.ImageIn(cell);
        layout.CheckIn(cell);
        layout.TreeBoxOf(cell);
        CellLayout(View()).TreeBoxIn(cell);
    }
}

} // namespace
