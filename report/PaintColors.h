// The colours that a report control is painted in.
#pragma once

#include "ReportStyle.h"
#include "afxwin.h"

#include <vector>

namespace report
{

// The system's colours, the owner's table, and the palette for displays that show only the colours of one.
class PaintColors
{
public:
    void ReadSystem(HWND hwnd);      // those of a dark window, if it is one
    void ReadDisplay();              // whether it needs a palette
    COLORREF System(int slot) const; // RVSC_*; invalid argument for others

    // Colours of owners are meant for light windows: in a dark one, a colour like it that can be read.
    COLORREF Readable(COLORREF text, COLORREF background) const;

    // That of selected rows without the focus; negative for the system's.
    void UseInactiveHighlight(std::int64_t color) { m_inactiveHighlight = color; }

    // The table. Inserting fills what lies between with black; false without memory or for too many.
    std::size_t Count() const { return m_table.size(); }
    bool Insert(int index, COLORREF color);
    void Set(int index, COLORREF color) { m_table[static_cast<std::size_t>(index)] = color; }
    COLORREF At(int index) const; // black outside the table
    void Delete(int index) { m_table.erase(m_table.begin() + index); }
    void Clear() { m_table.clear(); }

    // A colour of the table, as a device context takes it.
    COLORREF ForDrawing(int index) const;

    // Makes the palette from the table and the colours of a picture; false if both have none.
    bool MakePalette(const CBitmap& picture);

    // Null where the display shows all colours.
    bool NeedsPalette() const { return m_needsPalette; }
    HPALETTE PaletteToRealize() const { return m_needsPalette ? static_cast<HPALETTE>(m_palette) : nullptr; }

private:
    COLORREF m_system[RVSC_COUNT] = {};
    std::int64_t m_inactiveHighlight = -1;
    std::vector<COLORREF> m_table;
    CPalette m_palette;
    bool m_needsPalette = false;
    bool m_isDark = false;
};

} // namespace report
