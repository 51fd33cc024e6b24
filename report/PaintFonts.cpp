#include "report/PaintFonts.h"

#include "report/DrawingGuards.h"

#include <algorithm>

namespace report
{

PaintFonts::PaintFonts()
{
    m_measuring.CreateCompatibleDC(nullptr);
    Use(nullptr);
}

void PaintFonts::Use(HFONT font)
{
    m_font = font ? font : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    LOGFONT description = {};
    ::GetObject(m_font, sizeof(description), &description);
    description.lfWeight = FW_BOLD;
    m_bold.DeleteObject();
    m_bold.CreateFontIndirect(&description);
    m_height = 0;
    m_measures = Measure(m_font);
    m_boldMeasures = Measure(Bold());
}

GraphicFont PaintFonts::Measure(HGDIOBJ font)
{
    const Selected selected(m_measuring, font);
    TEXTMETRIC metrics = {};
    if (::GetTextMetrics(m_measuring, &metrics))
        m_height = std::max<int>(m_height, metrics.tmHeight);
    return GraphicFont(m_measuring);
}

int PaintFonts::WidthOf(std::string_view text, bool bold)
{
    const Selected selected(m_measuring, HandleOf(bold));
    return GraphicText(m_measuring, &Measures(bold)).GetWidth(text.data(), static_cast<int>(text.size()));
}

} // namespace report
