// What only a display of 256 colours shows; palette_test.sh provides one.
#include "tests/report/ReportFixture.h"

#include "tests/support/GuiCounts.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
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
        const PALETTEENTRY& last = entries[count - 1];
        char text[64];
        std::snprintf(text, sizeof(text), "%u: %02x%02x%02x to %02x%02x%02x", count, entries[0].peRed,
                      entries[0].peGreen, entries[0].peBlue, last.peRed, last.peGreen, last.peBlue);
        palettes.insert(text);
    });
    return palettes;
}

// A picture of one pixel whose colours have the red of their number.
std::string WriteBitmap(WORD bits, DWORD used)
{
    char path[MAX_PATH] = "";
    ::GetTempPath(sizeof(path), path);
    const std::string file = std::string(path) + "palette_test.bmp";
    const DWORD colors = bits > 8 ? 0 : used ? used : 1u << bits;
    BITMAPFILEHEADER fileHeader = {};
    fileHeader.bfType = 0x4D42;
    fileHeader.bfOffBits = static_cast<DWORD>(sizeof(fileHeader) + sizeof(BITMAPINFOHEADER) + 4 * colors);
    fileHeader.bfSize = fileHeader.bfOffBits + 4;
    const BITMAPINFOHEADER header = {sizeof(header), 1, 1, 1, bits, BI_RGB, 4, 0, 0, used, 0};
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&fileHeader), sizeof(fileHeader));
    out.write(reinterpret_cast<const char*>(&header), sizeof(header));
    for (DWORD color = 0; color < colors; ++color)
        out.write("\1\2", 2).put(static_cast<char>(color)).put(0);
    out.write("\0\0\0", 4);
    return file;
}

TEST_F(Palette, MakesAPaletteOfItsColoursAndItsPicture)
{
    const std::string halftone = "256: 000000 to ffffff";
    const struct
    {
        WORD bits;
        DWORD used;
        int colors;
        std::string expected;
    } cases[] = {
        {0, 0, 0, ""},
        {0, 0, 2, "2: 112233 to 010000"},
        {0, 0, 256, "256: 112233 to ff0000"},
        {0, 0, 257, halftone},
        {4, 0, 0, "16: 000201 to 0f0201"},
        {4, 0, 2, "18: 112233 to 0f0201"},
        {8, 0, 0, "256: 000201 to ff0201"},
        {8, 0, 1, halftone},
        {24, 0, 0, halftone},
    };
    const std::multiset<std::string> before = Palettes();
    for (const auto& each : cases)
    {
        report.DeleteAllColors();
        if (each.bits)
        {
            const std::string file = WriteBitmap(each.bits, each.used);
            EXPECT_EQ(1, report.SetBkImage(file.c_str()));
            EXPECT_TRUE(::DeleteFile(file.c_str()));
        }
        for (int index = 0; index < each.colors; ++index)
            EXPECT_EQ(index, report.InsertColor(index, index ? static_cast<COLORREF>(index) : 0x332211));
        EXPECT_EQ(!each.expected.empty(), report.CreatePalette() == 1);
        std::multiset<std::string> expected = before;
        if (!each.expected.empty())
            expected.insert(each.expected);
        EXPECT_EQ(expected, Palettes()) << &each - cases;
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
    _RVITEM change;
    change.mask = RVIM_BACKGROUNDCOLOR;
    change.backgroundColor = 0;
    report.SetItem(&change);
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
