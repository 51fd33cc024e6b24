// What only a display of 256 colours shows; palette_test.sh provides one.
#include "afxcmn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace
{
TEST(Palette, ItsColoursAreShown)
{
    CWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 50, 50), nullptr, 0));
    CClientDC dc(&wnd);
    ASSERT_TRUE(dc.GetDeviceCaps(RASTERCAPS) & RC_PALETTE) << "the display has no palette";

    constexpr WORD kColors = 4;
    struct
    {
        WORD version = 0x300;
        WORD count = kColors;
        PALETTEENTRY entries[kColors] = {{11, 22, 33, 0}, {44, 55, 66, 0}, {77, 88, 99, 0}, {1, 99, 7, 0}};
    } colors;
    CPalette palette;
    ASSERT_TRUE(palette.CreatePalette(reinterpret_cast<LOGPALETTE*>(&colors)));
    CPalette* const old = dc.SelectPalette(&palette, FALSE);
    EXPECT_EQ(UINT{kColors}, dc.RealizePalette());

    PALETTEENTRY shown[256] = {};
    ASSERT_EQ(256U, ::GetSystemPaletteEntries(dc, 0, 256, shown));
    for (const PALETTEENTRY& color : colors.entries)
        EXPECT_TRUE(std::any_of(std::begin(shown), std::end(shown), [&](const PALETTEENTRY& entry) {
            return entry.peRed == color.peRed && entry.peGreen == color.peGreen &&
                   entry.peBlue == color.peBlue;
        })) << int{color.peRed};
    EXPECT_EQ(&palette, dc.SelectPalette(old, FALSE));
}
} // namespace
