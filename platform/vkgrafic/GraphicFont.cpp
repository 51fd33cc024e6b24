#include "vkgrafic/GraphicFont.h"

#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/WideLine.h"

#include <algorithm>
#include <iterator>
#include <numeric>

using vkgrafic::kNoGlyph;

// What is not simple is measured as a blank, so that it does nothing to its neighbours.
std::unique_ptr<GraphicFont::Data::Page> GraphicFont::Data::MakePage(HDC dc, wchar_t first)
{
    auto page = std::make_unique<Page>();
    wchar_t units[kPageSize];
    for (std::size_t i = 0; i < kPageSize; ++i)
    {
        const wchar_t unit = vkgrafic::VisibleUnit(static_cast<wchar_t>(first + i));
        units[i] = vkgrafic::IsSimple(unit) ? unit : L' ';
    }
    constexpr int kCount = static_cast<int>(kPageSize);
    SIZE size = {};
    const bool isMeasured = ::GetTextExtentExPointW(dc, units, kCount, 0, nullptr, page->widths, &size) != 0;
    std::adjacent_difference(std::begin(page->widths), std::end(page->widths), std::begin(page->widths));
    for (std::size_t i = 0; i < kPageSize; ++i)
        if (!isMeasured || !vkgrafic::IsSimple(vkgrafic::VisibleUnit(static_cast<wchar_t>(first + i))))
            page->widths[i] = -1;
    for (std::size_t i = 0; i < kPageSize; ++i)
        units[i] = vkgrafic::VisibleUnit(static_cast<wchar_t>(first + i));
    if (::GetGlyphIndicesW(dc, units, kCount, page->glyphs, GGI_MARK_NONEXISTING_GLYPHS) == GDI_ERROR)
        std::fill(std::begin(page->glyphs), std::end(page->glyphs), kNoGlyph); // a font of bitmaps
    return page;
}

bool GraphicFont::Data::Has(HDC dc, const wchar_t* units, int count)
{
    const auto isThere = [&](wchar_t unit) { return PageOf(dc, unit).glyphs[unit % kPageSize] != kNoGlyph; };
    if (isThere(L' '))
        return std::all_of(units, units + count, isThere);
    CHARSETINFO set = {};
    BOOL isMissing = FALSE;
    if (!::TranslateCharsetInfo(reinterpret_cast<DWORD*>(static_cast<DWORD_PTR>(::GetTextCharset(dc))), &set,
                                TCI_SRCCHARSET))
        return true;
    ::WideCharToMultiByte(set.ciACP, WC_NO_BEST_FIT_CHARS, units, count, nullptr, 0, nullptr, &isMissing);
    return !isMissing;
}

HFONT GraphicFont::Data::Linked(HDC dc)
{
    if (!linked)
    {
        LOGFONTW description = {};
        description.lfHeight = height;
        description.lfCharSet = DEFAULT_CHARSET;
        ::lstrcpynW(description.lfFaceName, L"MS Shell Dlg 2", LF_FACESIZE);
        linked = ::CreateFontIndirectW(&description);
        const VkGrafic::Selected selected(dc, linked);
        TEXTMETRICW metrics = {};
        ::GetTextMetricsW(dc, &metrics);
        linkedAscent = metrics.tmAscent;
    }
    return linked;
}

GraphicFont::GraphicFont(HDC dc) : m_data(std::make_shared<Data>())
{
    TEXTMETRICW metrics = {};
    ::GetTextMetricsW(dc, &metrics);
    m_data->height = metrics.tmHeight;
    m_data->ascent = metrics.tmAscent;
}

bool GraphicFont::Has(HDC dc, const char* text, int length) const
{
    const std::size_t size = static_cast<std::size_t>(std::max(length, 0));
    if (ZEMA::IsAscii(text, size))
        return true;
    ZEMA::WideString wide;
    ZEMA::ToWide(text, size, wide);
    std::transform(wide.begin(), wide.end(), wide.begin(), vkgrafic::VisibleUnit);
    return !m_data || m_data->Has(dc, wide.data(), static_cast<int>(wide.size()));
}
