// The fonts that a report control is painted in.
#pragma once

#include "afxwin.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <string_view>

namespace report
{

// The owner's font or the system's, its bold variant, and how wide their characters are.
class PaintFonts
{
public:
    PaintFonts();

    // Null for the system's font. It stays the owner's.
    void Use(HFONT font);

    HFONT Plain() const { return m_font; }
    HGDIOBJ Bold() const { return m_bold.GetSafeHandle(); }
    int Height() const { return std::max(m_plainHeight, m_boldHeight); }
    const GraphicFont& Measures(bool bold) const { return bold ? m_boldMeasures : m_measures; }

    // Pixels, as GraphicText draws it.
    int WidthOf(std::string_view text, bool bold);
    int HeightOf(bool bold) const { return bold ? m_boldHeight : m_plainHeight; }

    // The bytes of a text in UTF-8 that are no wider.
    std::size_t Fitting(std::string_view text, int width, bool bold);

private:
    GraphicFont Measure(HGDIOBJ font, int& height);
    HGDIOBJ HandleOf(bool bold) const { return bold ? Bold() : m_font; }

    CDC m_measuring; // a memory device context
    HFONT m_font = nullptr;
    CFont m_bold;
    int m_plainHeight = 0; // of a line
    int m_boldHeight = 0;
    GraphicFont m_measures;
    GraphicFont m_boldMeasures;
};

} // namespace report
