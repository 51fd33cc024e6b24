#include "vkgrafic/GraphicText.h"

#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/LineLayout.h"
#include "vkgrafic/TextCells.h"
#include "vkgrafic/WideLine.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

using vkgrafic::Align;
using vkgrafic::AlignedBegin;
using vkgrafic::WideLine;

namespace
{

// Units a call: the system's text functions have limits of their own, the lowest at 8,192.
constexpr std::size_t kRunLength = 512;

constexpr WORD kNoGlyph = 0xFFFF;
static_assert(sizeof(wchar_t) == sizeof(WORD)); // glyphs go where characters would

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
    int Width() const { return m_line.Width(); }
    std::size_t Fitting(int width) const { return m_line.Fitting(width); } // units

private:
    bool MeasureByFont(HDC dc, GraphicFont::Data& font);
    std::int64_t MeasureRun(HDC dc, std::size_t begin, std::size_t end);

    WideLine m_line;
    std::vector<WORD> m_glyphs;
    bool m_hasGlyphs = false;
};

void Line::Take(const char* text, int length)
{
    ZEMA::ToWide(text, static_cast<std::size_t>(std::max(length, 0)), m_line.text);
    std::transform(m_line.text.begin(), m_line.text.end(), m_line.text.begin(), vkgrafic::VisibleUnit);
    m_line.advances.clear();
    m_hasGlyphs = false;
}

void Line::Measure(HDC dc, GraphicFont::Data* font, std::int64_t enough)
{
    if (font && MeasureByFont(dc, *font))
        return;
    const std::size_t length = m_line.text.size();
    m_line.advances.reserve(length);
    std::int64_t width = 0;
    for (std::size_t begin = 0; begin < length && width <= enough;)
    {
        const std::size_t end = vkgrafic::EndOfPiece(m_line.text.data(), length, begin, kRunLength);
        width += MeasureRun(dc, begin, end);
        begin = end;
    }
}

// False if some character is not simple.
bool Line::MeasureByFont(HDC dc, GraphicFont::Data& font)
{
    const std::size_t length = m_line.text.size();
    m_line.advances.resize(length);
    m_glyphs.resize(length);
    m_hasGlyphs = true;
    for (std::size_t i = 0; i < length; ++i)
    {
        const wchar_t unit = m_line.text[i];
        const GraphicFont::Data::Page& page = font.PageOf(dc, unit);
        m_line.advances[i] = page.widths[unit % font.kPageSize];
        m_glyphs[i] = page.glyphs[unit % font.kPageSize];
        m_hasGlyphs = m_hasGlyphs && m_glyphs[i] != kNoGlyph;
        if (m_line.advances[i] >= 0)
            continue;
        m_line.advances.clear();
        m_hasGlyphs = false;
        return false;
    }
    return true;
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
}

// Told the advances that were measured: left to itself the system draws some fonts with other ones.
void Line::Draw(HDC dc, int x, int y, const RECT& clip) const
{
    const std::size_t length = m_line.text.size();
    for (std::size_t begin = 0; begin < length && x < clip.right;)
    {
        const std::size_t end = vkgrafic::EndOfPiece(m_line.text.data(), length, begin, kRunLength);
        const int* const advances = m_line.advances.data() + begin;
        const int right = x + std::accumulate(advances, advances + (end - begin), 0);
        const wchar_t* const units =
            (m_hasGlyphs ? reinterpret_cast<const wchar_t*>(m_glyphs.data()) : m_line.text.data()) + begin;
        if (right >= clip.left)
            ::ExtTextOutW(dc, x, y, ETO_CLIPPED | (m_hasGlyphs ? ETO_GLYPH_INDEX : 0), &clip, units,
                          static_cast<UINT>(end - begin), advances);
        x = right;
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

namespace
{

// Characters in cells, which are drawn as many together as there are in one font.
class CellRun
{
public:
    CellRun(HDC dc, GraphicFont::Data* font, int x, int y, int cellWidth)
        : m_dc(dc), m_font(font), m_x(x), m_y(y), m_cellWidth(cellWidth)
    {
    }
    ~CellRun() { Draw(); }
    CellRun(const CellRun&) = delete;
    CellRun& operator=(const CellRun&) = delete;

    // A character behind the one before; `isLinked` if the font does not have it.
    void Add(wchar_t unit, int cell, int width, bool isLinked)
    {
        const bool isOtherFont = isLinked != m_isLinked && unit != L' '; // a blank is the same in all
        if (m_count == kRunLength || isOtherFont)
            Draw();
        if (m_count == 0)
            m_cell = cell;
        if (isOtherFont)
            m_isLinked = isLinked;
        m_units[m_count] = unit;
        m_widths[m_count++] = width * m_cellWidth;
    }

    // One that the system shapes: by itself, so that it moves none of the others.
    void DrawAlone(const wchar_t* units, int count, int cell, bool isLinked)
    {
        Draw();
        Output(units, static_cast<UINT>(count), cell, isLinked, nullptr);
    }

private:
    void Draw()
    {
        if (m_count > 0)
            Output(m_units.data(), static_cast<UINT>(m_count), m_cell, m_isLinked, m_widths.data());
        m_count = 0;
    }

    void Output(const wchar_t* units, UINT count, int cell, bool isLinked, const INT* widths)
    {
        // The sum is near the clip box, while the product may be beyond the range of int.
        const int x = static_cast<int>(m_x + static_cast<std::int64_t>(cell) * m_cellWidth);
        if (!isLinked)
            m_linked.reset();
        else if (!m_linked)
            m_linked.emplace(m_dc, m_font->Linked(m_dc));
        const int y = isLinked ? m_y + m_font->ascent - m_font->linkedAscent : m_y; // on one base line
        ::ExtTextOutW(m_dc, x, y, 0, nullptr, units, count, widths);
    }

    HDC m_dc;
    GraphicFont::Data* m_font;
    int m_x;
    int m_y;
    int m_cellWidth;
    int m_cell = 0;
    bool m_isLinked = false;
    std::optional<VkGrafic::Selected> m_linked; // while the other font is selected
    std::size_t m_count = 0;
    std::array<wchar_t, kRunLength> m_units;
    std::array<INT, kRunLength> m_widths;
};

} // namespace

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

void GraphicText::DrawCells(const char* text, int length, int x, int y, int cellWidth) const
{
    RECT clip = {};
    if (length <= 0 || ::GetClipBox(m_dc, &clip) == ERROR)
        return;
    static thread_local VkGrafic::TextCells cells; // its memory is used again
    cells.Take(text, static_cast<std::size_t>(length));
    const int cellCount = cells.CellOf(length);
    const vkgrafic::Part part = vkgrafic::VisibleCells(x, cellCount, cellWidth, {clip.left, clip.right});
    CellRun run(m_dc, m_font, x, y, cellWidth);
    if (cells.Characters().empty())
    {
        for (int cell = part.first; cell < part.first + part.count; ++cell)
            run.Add(vkgrafic::VisibleUnit(static_cast<unsigned char>(text[cell])), cell, 1, false);
        return;
    }
    const wchar_t* const wide = cells.Wide().data();
    const auto at = [&](int cell) {
        return std::lower_bound(
            cells.Characters().begin(), cells.Characters().end(), cell,
            [](const VkGrafic::TextCells::Character& character, int from) { return character.cell < from; });
    };
    const auto begin = at(part.first);
    const auto end = std::min(at(part.first + part.count), std::prev(cells.Characters().end()));

    // All are looked up before the first is drawn: what is drawn may have another font selected.
    struct Shown
    {
        wchar_t unit;
        bool isSimple;
        bool isLinked;
    };
    static thread_local std::vector<Shown> shown;
    shown.clear();
    for (auto character = begin; character < end; ++character)
    {
        const wchar_t* const units = wide + character->unit;
        const int count = character[1].unit - character->unit;
        const wchar_t unit = vkgrafic::VisibleUnit(*units);
        const bool isSimple = count == 1 && vkgrafic::IsSimple(unit);
        shown.push_back({unit, isSimple, m_font && !m_font->Has(m_dc, isSimple ? &unit : units, count)});
    }
    for (auto character = begin; character < end; ++character)
    {
        const Shown& how = shown[static_cast<std::size_t>(character - begin)];
        const auto& next = character[1];
        if (how.isSimple)
            run.Add(how.unit, character->cell, next.cell - character->cell, how.isLinked);
        else
            run.DrawAlone(wide + character->unit, next.unit - character->unit, character->cell, how.isLinked);
    }
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
