// What is known of a font, for the files that draw with it.
#pragma once

#include "vkgrafic/GraphicText.h"

#include <cstddef>
#include <memory>

namespace vkgrafic
{

// Units a call: the system's text functions have limits of their own, the lowest at 8,192.
constexpr std::size_t kRunLength = 512;

constexpr WORD kNoGlyph = 0xFFFF;
static_assert(sizeof(wchar_t) == sizeof(WORD)); // glyphs go where characters would

} // namespace vkgrafic

// A font's characters in pages of 256, each asked for when one of its characters is first met.
struct GraphicFont::Data
{
    Data() = default;
    ~Data()
    {
        if (linked)
            ::DeleteObject(linked);
    }
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    static constexpr std::size_t kPageSize = 256;
    struct Page
    {
        int widths[kPageSize]; // -1: not simple, has to be measured with its neighbours
        WORD glyphs[kPageSize];
    };

    const Page& PageOf(HDC dc, wchar_t unit)
    {
        std::unique_ptr<Page>& page = pages[unit / kPageSize];
        if (!page)
            page = MakePage(dc, static_cast<wchar_t>(unit / kPageSize * kPageSize));
        return *page;
    }

    // Whether the font has a glyph for each unit. Of a font of bitmaps the system does not tell: it has what
    // its character set has.
    bool Has(HDC dc, const wchar_t* units, int count);

    // A font as high as this one for what it does not have, which the system links with those of all scripts.
    HFONT Linked(HDC dc);

    static std::unique_ptr<Page> MakePage(HDC dc, wchar_t first);

    int height = 0;
    int ascent = 0;
    int linkedAscent = 0;
    HFONT linked = nullptr; // made when it is first needed
    std::unique_ptr<Page> pages[0x10000 / kPageSize];
};
