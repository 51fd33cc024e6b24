#include "vkgrafic/GraphicText.h"

#include "vkgrafic/TextCells.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>
#include <string>

using vkgrafic::Align;
using vkgrafic::AlignedBegin;

namespace
{

// Characters a call: the system's text functions have limits of their own, the lowest at 8,192.
constexpr int kRunLength = 512;

constexpr WORD kNoGlyph = 0xFFFF;

// Characters are converted one by one, because the 8-bit functions take a lead byte of the code page together
// with the byte after it. It is the one place where 16-bit text is drawn.
constexpr std::size_t kBytes = 256;
using Characters = std::array<wchar_t, kBytes>;

Characters MakeCharacters()
{
    Characters characters;
    for (unsigned byte = 0; byte < characters.size(); ++byte)
    {
        const unsigned char visible = vkgrafic::VisibleByte(static_cast<unsigned char>(byte));
        const char ansi = static_cast<char>(visible);
        wchar_t wide = vkgrafic::kPlaceholder;
        const bool placeholder = visible != byte && visible != ' ';
        if (!placeholder && ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &ansi, 1, &wide, 1) != 1)
            wide = vkgrafic::kPlaceholder;
        if (wide >= 0x7F && wide < 0xA0)
            wide = vkgrafic::kPlaceholder; // undefined in the code page: a control character of Unicode
        characters[byte] = wide;
    }
    return characters;
}

const Characters& GetCharacters()
{
    static const Characters characters = MakeCharacters();
    return characters;
}

// A bounded run of a text, ready to be drawn.
class Run
{
public:
    Run(const char* text, int length) : m_length(std::clamp(length, 0, kRunLength))
    {
        const Characters& characters = GetCharacters();
        for (int i = 0; i < m_length; ++i)
            m_text[static_cast<std::size_t>(i)] = characters[static_cast<unsigned char>(text[i])];
    }

    const wchar_t* Text() const { return m_text.data(); }
    UINT Length() const { return static_cast<UINT>(m_length); }

    SIZE Extent(HDC dc) const
    {
        SIZE size = {};
        ::GetTextExtentPoint32W(dc, m_text.data(), m_length, &size);
        return size;
    }

    // How many characters fit into `width` pixels.
    int Fitting(HDC dc, int width) const
    {
        int count = 0;
        SIZE size = {};
        ::GetTextExtentExPointW(dc, m_text.data(), m_length, std::max(width, 0), &count, nullptr, &size);
        return count;
    }

private:
    int m_length;
    std::array<wchar_t, kRunLength> m_text;
};

// How many bytes of `text` fit into `width` pixels.
int FittingLength(HDC dc, const char* text, int length, int width)
{
    int fitting = 0;
    while (fitting < length)
    {
        const Run run(text + fitting, length - fitting);
        const int count = run.Fitting(dc, width);
        fitting += count;
        width -= run.Extent(dc).cx;
        if (width < 0 || count < static_cast<int>(run.Length()))
            break;
    }
    return fitting;
}

// Draws from (x, y) and answers where the text ends. Runs out of `rect` are only measured.
int DrawRuns(HDC dc, const char* text, int length, int x, int y, const RECT& rect)
{
    for (int done = 0; done < length && x < rect.right; done += kRunLength)
    {
        const Run run(text + done, length - done);
        const int end = x + run.Extent(dc).cx;
        if (end >= rect.left)
            ::ExtTextOutW(dc, x, y, ETO_CLIPPED, &rect, run.Text(), run.Length(), nullptr);
        x = end;
    }
    return x;
}

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

GraphicFont::GraphicFont(HDC dc)
{
    constexpr int kCount = static_cast<int>(kBytes);
    const Characters& characters = GetCharacters();
    SIZE size = {};
    if (!::GetTextExtentExPointW(dc, characters.data(), kCount, 0, nullptr, m_widths, &size))
        return;
    m_height = size.cy;
    std::adjacent_difference(std::begin(m_widths), std::end(m_widths), std::begin(m_widths));
    if (::GetGlyphIndicesW(dc, characters.data(), kCount, m_glyphs, GGI_MARK_NONEXISTING_GLYPHS) == GDI_ERROR)
        std::fill(std::begin(m_glyphs), std::end(m_glyphs), kNoGlyph); // a font of bitmaps
}

int GraphicFont::GetWidth(const char* text, int length) const
{
    std::int64_t width = 0;
    for (int i = 0; i < length; ++i)
        width += m_widths[static_cast<unsigned char>(text[i])];
    return static_cast<int>(std::min<std::int64_t>(width, std::numeric_limits<int>::max()));
}

GraphicText::GraphicText(HDC dc, const GraphicFont* font) : m_dc(dc), m_font(font) {}

// Draws a short text that fits, in one call that has nothing left to look up. Clipping costs as much again,
// and is left out where there is nothing to clip.
bool GraphicText::DrawByFont(const char* text, int length, const RECT& rect, UINT flags, int& width) const
{
    if (length > kRunLength)
        return false;
    width = m_font->GetWidth(text, length);
    if (width > rect.right - rect.left)
        return false;
    std::array<WORD, kRunLength> glyphs;
    for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i)
    {
        glyphs[i] = m_font->m_glyphs[static_cast<unsigned char>(text[i])];
        if (glyphs[i] == kNoGlyph)
            return false;
    }
    const int x = AlignedBegin({rect.left, rect.right}, width, Horizontal(flags));
    const int y = AlignedBegin({rect.top, rect.bottom}, m_font->m_height, Vertical(flags));
    static_assert(sizeof(wchar_t) == sizeof(WORD)); // glyphs go where characters would
    ::ExtTextOutW(m_dc, x, y, ETO_GLYPH_INDEX | ETO_CLIPPED, &rect,
                  reinterpret_cast<const wchar_t*>(glyphs.data()), static_cast<UINT>(length), nullptr);
    return true;
}

int GraphicText::Draw(const char* text, int length, const RECT& rect, UINT flags) const
{
    const int room = std::max(0, static_cast<int>(rect.right - rect.left));
    int width = 0;
    if (m_font != nullptr && DrawByFont(text, length, rect, flags, width))
        return width;
    if (length <= kRunLength) // measured at once, and drawn so when it fits
    {
        const Run run(text, length);
        int fitting = 0;
        SIZE size = {};
        ::GetTextExtentExPointW(m_dc, run.Text(), static_cast<int>(run.Length()), room, &fitting, nullptr,
                                &size);
        if (fitting == length || (flags & DT_END_ELLIPSIS) == 0)
        {
            const int x = AlignedBegin({rect.left, rect.right}, size.cx, Horizontal(flags));
            const int y = AlignedBegin({rect.top, rect.bottom}, size.cy, Vertical(flags));
            ::ExtTextOutW(m_dc, x, y, ETO_CLIPPED, &rect, run.Text(), run.Length(), nullptr);
            return std::min(static_cast<int>(size.cx), room);
        }
    }
    return DrawLong(text, length, rect, flags);
}

// A text of several runs, or one that has to be cut.
int GraphicText::DrawLong(const char* text, int length, const RECT& rect, UINT flags) const
{
    constexpr char kEllipsis[] = "...";
    constexpr int kEllipsisLength = 3;

    const int room = std::max(0, static_cast<int>(rect.right - rect.left));
    std::string cut;
    if ((flags & DT_END_ELLIPSIS) != 0 && FittingLength(m_dc, text, length, room) < length)
    {
        const int left = room - GetWidth(kEllipsis, kEllipsisLength);
        cut.assign(text, static_cast<std::size_t>(FittingLength(m_dc, text, length, left)));
        cut += kEllipsis; // drawn as one text, whose parts lie together whatever they measure
        text = cut.c_str();
        length = static_cast<int>(cut.size());
    }
    const int width = (flags & (DT_CENTER | DT_RIGHT)) != 0 ? GetWidth(text, length) : 0;
    TEXTMETRICA metrics = {};
    ::GetTextMetricsA(m_dc, &metrics);
    const int y = AlignedBegin({rect.top, rect.bottom}, metrics.tmHeight, Vertical(flags));
    const int x = AlignedBegin({rect.left, rect.right}, width, Horizontal(flags));
    const int end = DrawRuns(m_dc, text, length, x, y, rect);
    return cut.empty() ? std::min(end - x, room) : room;
}

void GraphicText::DrawCells(const char* text, int length, int x, int y, int cellWidth) const
{
    RECT clip = {};
    if (::GetClipBox(m_dc, &clip) == ERROR)
        return;
    const vkgrafic::Part part = vkgrafic::VisibleCells(x, length, cellWidth, {clip.left, clip.right});
    std::array<INT, kRunLength> widths;
    widths.fill(cellWidth);
    for (int done = 0; done < part.count; done += kRunLength)
    {
        const int first = part.first + done;
        const Run run(text + first, part.count - done);
        // The sum is near the clip box, while the product may be beyond the range of int.
        const std::int64_t left = x + static_cast<std::int64_t>(first) * cellWidth;
        ::ExtTextOutW(m_dc, static_cast<int>(left), y, 0, nullptr, run.Text(), run.Length(), widths.data());
    }
}

int GraphicText::GetWidth(const char* text, int length) const
{
    int width = 0;
    for (int done = 0; done < length; done += kRunLength)
        width += static_cast<int>(Run(text + done, length - done).Extent(m_dc).cx);
    return width;
}
