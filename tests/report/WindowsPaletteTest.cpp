// What only a display of 256 colours shows; palette_test.sh provides one.
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"

#include "tests/support/GuiCounts.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>

namespace
{
class Palette : public ReportTest
{
protected:
    void SetUp() override
    {
        const char* const graphics = std::getenv("WINE_GRAPHICS");
        if (!graphics || std::string_view(graphics) != "palette")
            GTEST_SKIP() << "palette_test.sh runs it";
    }
};

// Palettes by how many colours they have, the first and the last.
std::multiset<std::string> Palettes()
{
    std::multiset<std::string> palettes;
    ForEachGdiObject([&palettes](HGDIOBJ object) {
        PALETTEENTRY entries[256] = {};
        if (::GetObjectType(object) != OBJ_PAL)
            return;
        const UINT count = ::GetPaletteEntries(static_cast<HPALETTE>(object), 0, 256, entries);
        const PALETTEENTRY &first = entries[0], &last = entries[count - 1];
        palettes.insert(Line(count, +first.peRed, +first.peGreen, +first.peBlue, "to", +last.peRed,
                             +last.peGreen, +last.peBlue));
    });
    return palettes;
}

TEST_F(Palette, MakesAPaletteOfItsColoursAndItsPicture)
{
    const std::string halftone = "256 0 0 0 to 255 255 255";
    const std::tuple<WORD, DWORD, int, std::string> cases[] = {
        {0, 0, 0, ""},
        {0, 0, 2, "2 17 34 51 to 1 0 0"},
        {0, 0, 256, "256 17 34 51 to 255 0 0"},
        {0, 0, 257, halftone},
        {4, 0, 0, "16 0 2 1 to 15 2 1"},
        {4, 0, 2, "18 17 34 51 to 15 2 1"},
        {8, 0, 0, "256 0 2 1 to 255 2 1"},
        {8, 0, 1, halftone},
        {24, 0, 0, halftone},
    };
    const std::multiset<std::string> before = Palettes();
    for (const auto& [bits, used, colors, made] : cases)
    {
        report.DeleteAllColors();
        std::string reds; // the colours of a bitmap have the red of their number
        for (DWORD color = 0; bits <= 8 && color < (used ? used : 1u << bits); ++color)
            reds += {'\1', '\2', static_cast<char>(color), '\0'};
        if (bits > 0)
            ShowBitmap(report, 1, bits, std::string(4, '\0'), reds, used);
        for (int index = 0; index < colors; ++index)
            EXPECT_EQ(index, report.InsertColor(index, index ? static_cast<COLORREF>(index) : 0x332211));
        EXPECT_EQ(!made.empty(), report.CreatePalette() == 1);
        std::multiset<std::string> expected = before;
        if (!made.empty())
            expected.insert(made);
        EXPECT_EQ(expected, Palettes()) << made;
        report.SetBkImage(0u);
    }
}

// A colour that the display does not show by itself: paints make room for it.
TEST_F(Palette, PaintsInTheColoursOfItsPalette)
{
    const PALETTEENTRY color = {13, 201, 77, 0};
    Show(WS_VISIBLE | RVS_NOHEADER, {""});
    ASSERT_TRUE(CClientDC(&report).GetDeviceCaps(RASTERCAPS) & RC_PALETTE) << "the display has no palette";
    report.InsertColor(0, RGB(color.peRed, color.peGreen, color.peBlue));
    report.SetColors(0, -1, 0);
    for (const int doubleBuffer : {0, 1})
    {
        report.ModifyProperty(RVP_DOUBLEBUFFER, doubleBuffer);
        Redraw();
        CClientDC dc(&report);
        PALETTEENTRY shown[256] = {};
        ::GetSystemPaletteEntries(dc, 0, 256, shown);
        EXPECT_TRUE(std::any_of(std::begin(shown), std::end(shown), [&](const PALETTEENTRY& entry) {
            return std::memcmp(&entry, &color, 3) == 0;
        })) << doubleBuffer;
    }
}
} // namespace
