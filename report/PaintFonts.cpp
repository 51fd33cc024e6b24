#include "report/PaintFonts.h"

#include "report/DrawingGuards.h"

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
    m_measures = Measure(m_font, m_plainHeight);
    m_boldMeasures = Measure(Bold(), m_boldHeight);
}

GraphicFont PaintFonts::Measure(HGDIOBJ font, int& height)
{
    const Selected selected(m_measuring, font);
    TEXTMETRIC metrics = {};
    ::GetTextMetrics(m_measuring, &metrics);
    height = metrics.tmHeight;
    return GraphicFont(m_measuring);
}

int PaintFonts::WidthOf(std::string_view text, bool bold)
{
    const Selected selected(m_measuring, HandleOf(bold));
    return GraphicText(m_measuring, &Measures(bold)).GetWidth(text.data(), static_cast<int>(text.size()));
}

std::size_t PaintFonts::Fitting(std::string_view text, int width, bool bold)
{
    const Selected selected(m_measuring, HandleOf(bold));
    return static_cast<std::size_t>(GraphicText(m_measuring, &Measures(bold))
                                        .GetFitting(text.data(), static_cast<int>(text.size()), width));
}

} // namespace report
