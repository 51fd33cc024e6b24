// What the report control uses of the framework: headers, image lists, palettes, styles, scroll bars.
#include "afxcmn.h"
#include "tests/support/NothingLeft.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
TEST(MfcHeader, KeepsIndexesApartFromTheOrderShown)
{
    CWnd parent;
    CHeaderCtrl header;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, "", WS_POPUP, CRect(0, 0, 300, 100), nullptr, 0));
    ASSERT_TRUE(header.Create(WS_CHILD | HDS_HORZ, CRect(), &parent, 3));
    HDITEM item = {};
    item.mask = HDI_WIDTH | HDI_LPARAM;
    for (item.lParam = 0; item.lParam < 3; ++item.lParam)
        EXPECT_EQ(item.lParam, header.InsertItem(99, &item));
    RECT area = {0, 0, 300, 100};
    WINDOWPOS place = {};
    HDLAYOUT layout = {&area, &place};
    EXPECT_TRUE(header.Layout(&layout));
    EXPECT_EQ(place.cy, area.top);

    std::vector<int> order = {2, 0, 1};
    EXPECT_TRUE(header.SetOrderArray(3, order.data()));
    EXPECT_EQ(2, header.OrderToIndex(0));
    EXPECT_TRUE(header.DeleteItem(0));
    EXPECT_FALSE(header.DeleteItem(2));
    order.assign(3, -1);
    EXPECT_TRUE(header.GetOrderArray(order.data()));
    EXPECT_EQ((std::vector<int>{1, 0, -1}), order);
    EXPECT_TRUE(header.GetItem(1, &item));
    EXPECT_EQ(2, item.lParam);
    EXPECT_FALSE(header.GetItem(2, &item));
}

TEST(MfcImageList, IsDeletedByItsOwner)
{
    const auto use = [] {
        CBitmap image;
        CImageList owner;
        ASSERT_TRUE(image.CreateBitmap(16, 8, 1, 32, nullptr) && owner.Create(8, 8, ILC_COLOR32, 1, 1));
        ASSERT_TRUE(owner.Create(8, 8, ILC_COLOR32 | ILC_MASK, 1, 1)); // in the place of the first
        EXPECT_EQ(0, owner.Add(&image, RGB(255, 0, 255)));
        EXPECT_EQ(2, owner.Add(&image, nullptr));
        EXPECT_EQ(4, owner.GetImageCount());
    };
    ExpectNothingLeft(use);
}

TEST(MfcPalette, IsSelectedByItsObject)
{
    const int before = GdiObjectCount();
    {
        LOGPALETTE one = {0x300, 1, {{1, 2, 3, 0}}};
        CPalette palette;
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr) && palette.CreateHalftonePalette(&dc));
        EXPECT_EQ(256, palette.GetEntryCount());
        ASSERT_TRUE(palette.CreatePalette(&one)); // in the place of the first
        EXPECT_EQ(1, palette.GetEntryCount());
        CPalette* const old = dc.SelectPalette(&palette, FALSE);
        EXPECT_EQ(&palette, dc.SelectPalette(old, FALSE));
        CFont font;
        EXPECT_TRUE(font.CreateStockObject(DEFAULT_GUI_FONT));
    }
    CGdiObject::DeleteTempMap();
    EXPECT_EQ(before, GdiObjectCount()) << "the system's font and palette stay";
}

TEST(MfcWindow, StylesChangeInPlaceAndScrollInfoIs32BitsWide)
{
    CWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, "", WS_POPUP, CRect(5, 6, 105, 56), nullptr, 0));
    EXPECT_FALSE(wnd.ModifyStyle(WS_BORDER, WS_POPUP, SWP_FRAMECHANGED)) << "nothing changes";
    EXPECT_TRUE(wnd.ModifyStyle(WS_BORDER, WS_DLGFRAME, SWP_FRAMECHANGED));
    CRect rect;
    wnd.GetClientRect(&rect);
    EXPECT_GT(100, rect.Width());
    wnd.GetWindowRect(&rect);
    EXPECT_EQ(CRect(5, 6, 105, 56), rect);

    SCROLLINFO info = {};
    EXPECT_FALSE(wnd.GetScrollInfo(SB_VERT, &info)) << "it has no scroll bar yet";
    info.fMask = SIF_RANGE | SIF_POS;
    info.nMax = 5'000'000;
    info.nPos = 4'000'000;
    EXPECT_TRUE(wnd.SetScrollInfo(SB_VERT, &info));
    info = {};
    EXPECT_TRUE(wnd.GetScrollInfo(SB_VERT, &info, SIF_POS));
    EXPECT_EQ(4'000'000, info.nPos);
    EXPECT_EQ(0, info.nMax) << "not asked for";
}
} // namespace
