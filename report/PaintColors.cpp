#include "report/PaintColors.h"

#include "report/DrawingGuards.h"
#include "report/model/InvalidArgument.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace report
{

namespace
{

constexpr std::size_t kMaxPalette = 256;
constexpr int kMaxColors = 1 << 24; // there are no more

PALETTEENTRY EntryOf(COLORREF color)
{
    return {GetRValue(color), GetGValue(color), GetBValue(color), 0};
}

// The colours of a bitmap; the count alone when there are more than a palette holds.
std::size_t ReadColors(const CBitmap& bitmap, std::vector<PALETTEENTRY>& entries)
{
    DIBSECTION section = {};
    if (!bitmap.GetSafeHandle() || bitmap.GetObject(sizeof(section), &section) != sizeof(section))
        return 0;
    const BITMAPINFOHEADER& header = section.dsBmih;
    const std::size_t count = header.biClrUsed ? header.biClrUsed : std::size_t{1} << header.biBitCount;
    if (count > kMaxPalette)
        return count;

    std::vector<RGBQUAD> colors(count);
    CDC dc;
    if (!dc.CreateCompatibleDC(nullptr))
        return 0;
    const Selected selected(dc, bitmap.GetSafeHandle());
    colors.resize(::GetDIBColorTable(dc, 0, static_cast<UINT>(count), colors.data()));
    for (const RGBQUAD& color : colors)
        entries.push_back({color.rgbRed, color.rgbGreen, color.rgbBlue, 0});
    return count;
}

} // namespace

void PaintColors::ReadSystem(HWND hwnd)
{
    using VkGrafic::UiColor;
    constexpr UiColor sources[RVSC_COUNT] = {
        UiColor::Window,     UiColor::Highlight,     UiColor::InactiveHighlight,
        UiColor::WindowText, UiColor::HighlightText, UiColor::InactiveHighlightText,
        UiColor::Face,       UiColor::Face,          UiColor::Light,
        UiColor::Edge,       UiColor::FaceHighlight, UiColor::DarkShadow};
    const VkGrafic::WindowColors colors(hwnd);
    std::transform(std::begin(sources), std::end(sources), m_system,
                   [&](UiColor color) { return colors[color]; });
    m_isDark = colors.IsDark();
}

void PaintColors::ReadDisplay()
{
    const HDC screen = ::GetDC(nullptr);
    m_needsPalette = (::GetDeviceCaps(screen, RASTERCAPS) & RC_PALETTE) != 0;
    ::ReleaseDC(nullptr, screen);
}

COLORREF PaintColors::System(int slot) const
{
    if (slot < 0 || slot >= RVSC_COUNT)
        ThrowInvalidArgument();
    if (slot == RVSC_INACTIVEHIGHLIGHT && m_inactiveHighlight >= 0)
        return static_cast<COLORREF>(m_inactiveHighlight);
    return m_system[slot];
}

COLORREF PaintColors::Readable(COLORREF text, COLORREF background) const
{
    return m_isDark ? VkGrafic::ReadableColor(text, background) : text;
}

bool PaintColors::Insert(int index, COLORREF color)
{
    if (index > kMaxColors)
        return false;
    try
    {
        if (static_cast<std::size_t>(index) > m_table.size())
            m_table.resize(static_cast<std::size_t>(index));
        m_table.insert(m_table.begin() + index, color);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    return true;
}

COLORREF PaintColors::At(int index) const
{
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < m_table.size() ? m_table[at] : 0;
}

COLORREF PaintColors::ForDrawing(int index) const
{
    const COLORREF plain = At(index);
    return m_needsPalette ? PALETTERGB(GetRValue(plain), GetGValue(plain), GetBValue(plain)) : plain;
}

bool PaintColors::MakePalette(const CBitmap& picture)
{
    m_palette.DeleteObject();
    std::vector<PALETTEENTRY> entries;
    const std::size_t count = m_table.size() + ReadColors(picture, entries);
    if (count == 0)
        return false;
    if (count > kMaxPalette)
    {
        CClientDC screen(nullptr);
        return m_palette.CreateHalftonePalette(&screen) != FALSE;
    }
    std::vector<PALETTEENTRY> all;
    for (const COLORREF color : m_table)
        all.push_back(EntryOf(color));
    all.insert(all.end(), entries.begin(), entries.end());

    struct
    {
        WORD version = 0x300;
        WORD count = 0;
        PALETTEENTRY entries[kMaxPalette] = {};
    } logical;
    logical.count = static_cast<WORD>(count);
    std::copy(all.begin(), all.end(), logical.entries);
    return m_palette.CreatePalette(reinterpret_cast<LOGPALETTE*>(&logical)) != FALSE;
}

} // namespace report
