// Text in cells of one width.
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicFont.h"
#include "vkgrafic/LineLayout.h"
#include "vkgrafic/TextCells.h"
#include "vkgrafic/WideLine.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <vector>

using vkgrafic::kRunLength;

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

void GraphicText::DrawCells(const char* text, int length, int x, int y, int cellWidth) const
{
    RECT clip = {};
    if (length <= 0 || ::GetClipBox(m_dc, &clip) == ERROR)
        return;
    static thread_local VkGrafic::TextCells cells; // its memory is used again
    cells.Take(text, static_cast<std::size_t>(length));
    const bool isAscii = cells.Characters().empty();
    if (isAscii && m_font && (y >= clip.bottom || y + m_font->height <= clip.top))
        return; // of which linked fonts might reach out
    const int cellCount = cells.CellOf(length);
    const vkgrafic::Part part = vkgrafic::VisibleCells(x, cellCount, cellWidth, {clip.left, clip.right});
    CellRun run(m_dc, m_font, x, y, cellWidth);
    if (isAscii)
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
