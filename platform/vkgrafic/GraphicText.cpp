#include "vkgrafic/GraphicText.h"

#include "vkgrafic/GraphicFont.h"
#include "vkgrafic/LineLayout.h"
#include "vkgrafic/WideLine.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

using vkgrafic::Align;
using vkgrafic::AlignedBegin;
using vkgrafic::kNoGlyph;
using vkgrafic::kRunLength;
using vkgrafic::WideLine;

namespace
{

Align Horizontal(UINT flags)
{
    if ((flags & DT_CENTER) != 0)
        return Align::Middle;
    return (flags & DT_RIGHT) != 0 ? Align::End : Align::Begin;
}

Align Vertical(UINT flags)
{
    if ((flags & DT_VCENTER) != 0)
        return Align::Middle;
    return (flags & DT_BOTTOM) != 0 ? Align::End : Align::Begin;
}

} // namespace

namespace
{

// A text on its way into a device context.
class Line
{
public:
    // Takes a text that has not been measured.
    void Take(const char* text, int length);

    // Measures all, or at least until it is clear that it is wider than `enough`.
    void Measure(HDC dc, GraphicFont::Data* font, std::int64_t enough);

    void CutTo(HDC dc, GraphicFont::Data* font, int width);
    void Draw(HDC dc, int x, int y, const RECT& clip) const;
    int Width() const { return m_width; }                                  // of what has been measured
    std::size_t Fitting(int width) const { return m_line.Fitting(width); } // units

private:
    bool MeasureByFont(HDC dc, GraphicFont::Data& font);
    void MeasureBySystem(HDC dc, std::int64_t enough);
    std::int64_t MeasureRun(HDC dc, std::size_t begin, std::size_t end);

    WideLine m_line;
    std::vector<WORD> m_glyphs;
    bool m_hasGlyphs = false;
    int m_width = 0;
};

void Line::Take(const char* text, int length)
{
    ZEMA::ToWide(text, static_cast<std::size_t>(std::max(length, 0)), m_line.text);
    m_line.advances.clear();
    m_hasGlyphs = false;
}

void Line::Measure(HDC dc, GraphicFont::Data* font, std::int64_t enough)
{
    const bool isMeasured = font && MeasureByFont(dc, *font);
    if (!m_hasGlyphs) // which are those of the visible units
        std::transform(m_line.text.begin(), m_line.text.end(), m_line.text.begin(), vkgrafic::VisibleUnit);
    if (!isMeasured)
        MeasureBySystem(dc, enough);
}

// False if some character is not simple.
bool Line::MeasureByFont(HDC dc, GraphicFont::Data& font)
{
    const std::size_t length = m_line.text.size();
    m_line.advances.resize(length);
    m_glyphs.resize(length);
    const wchar_t* const units = m_line.text.data();
    int* const advances = m_line.advances.data();
    WORD* const glyphs = m_glyphs.data();
    m_hasGlyphs = true;
    std::int64_t width = 0;
    for (std::size_t i = 0; i < length; ++i)
    {
        const GraphicFont::Data::Page& page = font.PageOf(dc, units[i]);
        advances[i] = page.widths[units[i] % font.kPageSize];
        glyphs[i] = page.glyphs[units[i] % font.kPageSize];
        m_hasGlyphs = m_hasGlyphs && glyphs[i] != kNoGlyph;
        width += advances[i];
        if (advances[i] >= 0)
            continue;
        m_line.advances.clear();
        m_hasGlyphs = false;
        return false;
    }
    m_width = static_cast<int>(std::min<std::int64_t>(width, std::numeric_limits<int>::max()));
    return true;
}

void Line::MeasureBySystem(HDC dc, std::int64_t enough)
{
    const std::size_t length = m_line.text.size();
    m_line.advances.reserve(length);
    std::int64_t width = 0;
    for (std::size_t begin = 0; begin < length && width <= enough;)
    {
        const std::size_t end = vkgrafic::EndOfPiece(m_line.text.data(), length, begin, kRunLength);
        width += MeasureRun(dc, begin, end);
        begin = end;
    }
    m_width = m_line.Width();
}

// The system answers with the ends of the units, counted from the first.
std::int64_t Line::MeasureRun(HDC dc, std::size_t begin, std::size_t end)
{
    m_line.advances.resize(end);
    const auto first = m_line.advances.begin() + static_cast<std::ptrdiff_t>(begin);
    SIZE size = {};
    if (!::GetTextExtentExPointW(dc, m_line.text.data() + begin, static_cast<int>(end - begin), 0, nullptr,
                                 &*first, &size))
        std::fill(first, m_line.advances.end(), 0);
    const int width = m_line.advances.back();
    std::adjacent_difference(first, m_line.advances.end(), first);
    return width;
}

void Line::CutTo(HDC dc, GraphicFont::Data* font, int width)
{
    Line point;
    point.Take(".", 1);
    point.Measure(dc, font, 0);
    m_line.CutTo(width, point.Width());
    m_glyphs.resize(m_line.text.size());
    if (m_hasGlyphs)
        std::fill_n(m_glyphs.rbegin(), std::min<std::size_t>(3, m_glyphs.size()), point.m_glyphs[0]);
    m_width = m_line.Width();
}

// Told the advances that were measured: left to itself the system draws some fonts with other ones.
void Line::Draw(HDC dc, int x, int y, const RECT& clip) const
{
    const std::size_t length = m_line.text.size();
    for (std::size_t begin = 0; begin < length && x < clip.right;)
    {
        const std::size_t end = vkgrafic::EndOfPiece(m_line.text.data(), length, begin, kRunLength);
        const int* const advances = m_line.advances.data() + begin;
        const int width =
            end - begin == length ? m_width : std::accumulate(advances, advances + (end - begin), 0);
        const wchar_t* const units =
            (m_hasGlyphs ? reinterpret_cast<const wchar_t*>(m_glyphs.data()) : m_line.text.data()) + begin;
        if (x + width >= clip.left)
            ::ExtTextOutW(dc, x, y, ETO_CLIPPED | (m_hasGlyphs ? ETO_GLYPH_INDEX : 0), &clip, units,
                          static_cast<UINT>(end - begin), advances);
        x += width;
        begin = end;
    }
}

// One for all texts of a thread: its memory is used again. Nothing that it calls draws text in turn.
Line& TakeLine(const char* text, int length)
{
    static thread_local Line line;
    line.Take(text, length);
    return line;
}

int HeightOf(HDC dc)
{
    TEXTMETRICW metrics = {};
    ::GetTextMetricsW(dc, &metrics);
    return metrics.tmHeight;
}

// What so many units of UTF-16 are in UTF-8.
int BytesOf(const char* text, int length, std::size_t units)
{
    int bytes = 0;
    for (std::size_t done = 0; bytes < length; ++bytes)
    {
        const auto byte = static_cast<unsigned char>(text[bytes]);
        const bool begins = (byte & 0xC0) != 0x80;
        if (begins && done >= units)
            break;
        if (begins)
            done += byte >= 0xF0 ? 2 : 1;
    }
    return bytes;
}

void DrawTextOf(HDC dc, const char* text, int length, RECT& rect, UINT flags)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text, static_cast<std::size_t>(std::max(length, 0)), wide);
    ::DrawTextW(dc, wide.data(), static_cast<int>(wide.size()), &rect,
                flags | DT_NOPREFIX | DT_EXPANDTABS | DT_END_ELLIPSIS);
}

} // namespace

GraphicText::GraphicText(HDC dc, const GraphicFont* font)
    : m_dc(dc), m_font(font ? font->m_data.get() : nullptr)
{
}

int GraphicText::Draw(const char* text, int length, const RECT& rect, UINT flags) const
{
    const int room = std::max(0, static_cast<int>(rect.right - rect.left));
    const Align align = Horizontal(flags);
    const bool cutsOff = (flags & DT_END_ELLIPSIS) != 0;
    Line& line = TakeLine(text, length);
    line.Measure(m_dc, m_font,
                 cutsOff || align == Align::Begin ? room : std::numeric_limits<std::int64_t>::max());
    if (cutsOff && line.Width() > room)
        line.CutTo(m_dc, m_font, room);
    const int width = line.Width();
    const int x = AlignedBegin({rect.left, rect.right}, width, align);
    const int y =
        AlignedBegin({rect.top, rect.bottom}, m_font ? m_font->height : HeightOf(m_dc), Vertical(flags));
    line.Draw(m_dc, x, y, rect);
    return std::min(width, room);
}

void GraphicText::DrawLines(const char* text, int length, const RECT& rect) const
{
    RECT room = rect;
    DrawTextOf(m_dc, text, length, room, DT_WORDBREAK);
}

void GraphicText::DrawWholeLines(const char* text, int length, const RECT& rect) const
{
    RECT room = rect;
    DrawTextOf(m_dc, text, length, room, 0);
}

SIZE GraphicText::MeasureWholeLines(const char* text, int length, int width) const
{
    RECT room = {0, 0, width, 0};
    DrawTextOf(m_dc, text, length, room, DT_CALCRECT);
    return {room.right, room.bottom};
}

int GraphicText::GetWidth(const char* text, int length) const
{
    Line& line = TakeLine(text, length);
    line.Measure(m_dc, m_font, std::numeric_limits<std::int64_t>::max());
    return line.Width();
}

int GraphicText::GetFitting(const char* text, int length, int width) const
{
    Line& line = TakeLine(text, length);
    line.Measure(m_dc, m_font, width);
    return BytesOf(text, length, line.Fitting(width));
}
