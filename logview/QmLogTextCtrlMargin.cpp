// The wide margin of the log text window, and its look as a whole.
#include "QmLogTextCtrl.h"
#include "logview/LookColors.h"
#include "logview/MarginLayout.h"
#include "logview/ShownRows.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <string_view>

namespace
{

void DrawStripe(CDC& dc, const CRect& row, logview::MarginBand band, int file, COLORREF color)
{
    const logview::StripePattern pattern = logview::StripeOf(file);
    const int left = static_cast<int>(row.left) + band.begin + band.Width() * pattern.begin / 16;
    const int right = static_cast<int>(row.left) + band.begin + band.Width() * pattern.end / 16;
    const int height = row.Height();
    if (pattern.dash == pattern.period)
        return dc.FillSolidRect(CRect(left, row.top, right, row.bottom), color);
    for (int at = 0; at < 16; at += pattern.period)
    {
        const int top = static_cast<int>(row.top) + at * height / 16;
        const int bottom = static_cast<int>(row.top) + (at + pattern.dash) * height / 16;
        dc.FillSolidRect(CRect(left, top, right, bottom), color);
    }
}

// A box with a minus in it, or with a plus.
void DrawBox(CDC& dc, CPoint corner, const logview::MarginBox& box, int line, bool expanded, COLORREF color)
{
    const int x = static_cast<int>(corner.x) + box.left;
    const int y = static_cast<int>(corner.y) + box.top;
    dc.FillSolidRect(x, y, box.size, line, color);
    dc.FillSolidRect(x, y + box.size - line, box.size, line, color);
    dc.FillSolidRect(x, y, line, box.size, color);
    dc.FillSolidRect(x + box.size - line, y, line, box.size, color);
    const int inset = std::max(box.size / 4, line + 1);
    const int thick = box.size % 2 == line % 2 ? line : line + 1;
    const int middle = (box.size - thick) / 2;
    dc.FillSolidRect(x + inset, y + middle, box.size - 2 * inset, thick, color);
    if (!expanded)
        dc.FillSolidRect(x + middle, y + inset, thick, box.size - 2 * inset, color);
}

// A ribbon with a notch at its lower end.
void DrawBookmark(CDC& dc, const CRect& row, logview::MarginBand band, COLORREF color)
{
    const LONG left = row.left + band.begin + band.Width() / 5;
    const LONG right = row.left + band.end - band.Width() / 5;
    const LONG top = row.top + row.Height() / 8;
    const LONG bottom = row.bottom - row.Height() / 8;
    const POINT corners[] = {{left, top},
                             {right, top},
                             {right, bottom},
                             {(left + right) / 2, bottom - band.Width() / 3},
                             {left, bottom}};
    const CPen pen(PS_SOLID, 1, color);
    const CBrush brush(color);
    const VkGrafic::Selected selectedPen(dc, pen.GetSafeHandle());
    const VkGrafic::Selected selectedBrush(dc, brush.GetSafeHandle());
    ::Polygon(dc, corners, static_cast<int>(std::size(corners)));
}

} // namespace

void CQmLogTextCtrl::SetLook(const QmLogLook& look)
{
    m_look = look;
    if (!look.colors)
        SetTextColors(nullptr);
    else
    {
        m_colors = *look.colors;
        m_look.colors = &m_colors;
        const QmTextColors text = {
            m_colors.window,        m_colors.kinds[kPlainKind], m_colors.selection,
            m_colors.selectionText, m_colors.inactiveSelection, m_colors.inactiveSelectionText};
        SetTextColors(&text);
    }
    MetricsChanged();
}

QmLogColors CQmLogTextCtrl::GetThemeColors(QmLogTheme theme)
{
    return logview::ThemeColors(theme);
}

const QmLogColors& CQmLogTextCtrl::GetMarginColors() const
{
    return HasOwnColors() ? m_colors : logview::ThemeColors(logview::ThemeFor(GetWindowColor()));
}

void CQmLogTextCtrl::SetMarginTexts(int columns, std::function<std::string(std::uint32_t number)> text)
{
    m_marginColumns = text ? std::max(columns, 0) : 0;
    m_marginText = std::move(text);
    if (GetSafeHwnd())
        MetricsChanged();
}

logview::MarginLayout CQmLogTextCtrl::GetMarginLayout()
{
    CRect client;
    GetClientRect(client);
    return logview::MarginLayout(GetRowHeight(), GetColumnWidth(), client.Width(), m_marginColumns);
}

int CQmLogTextCtrl::GetMarginWidth()
{
    return m_look.wideMargin ? GetMarginLayout().Width() : 0;
}

void CQmLogTextCtrl::DrawMargin(CDC& dc, const CRect& margin, int row)
{
    logview::RowCache alone(m_rows->source);
    const logview::CachedRow* const shown = m_look.wideMargin ? m_rows->GetRow(row, alone) : nullptr;
    if (!shown || !shown->readable)
        return;
    const logview::MarginLayout layout = GetMarginLayout();
    const QmLogColors& colors = GetMarginColors();
    if (row == GetCaretRow())
    {
        if (!IsHighContrast())
            dc.FillSolidRect(margin, colors.caretMargin);
        dc.FillSolidRect(CRect(margin.right - 2 * layout.Line(), margin.top, margin.right, margin.bottom),
                         GetDrawColor(colors.mark));
    }

    const int file = static_cast<int>(shown->place.file);
    const COLORREF logColor = GetDrawColor(file < GetFilePathCount() ? colors.logs[file] : colors.mark);
    const COLORREF markColor = GetDrawColor(colors.mark);
    const auto draw = [&](logview::MarginBand band, std::string_view text, COLORREF color) {
        dc.SetTextColor(color);
        dc.SetBkMode(TRANSPARENT);
        if (band.Width() > 0 && !text.empty())
            GraphicText(dc.GetSafeHdc(), &GetGraphicFont())
                .DrawCells(text.data(), static_cast<int>(text.size()), margin.left + band.begin,
                           margin.top + 1, GetColumnWidth());
    };
    if (IsBookmarked(shown->record.time))
        DrawBookmark(dc, margin, layout.Bookmark(), markColor);
    DrawStripe(dc, margin, layout.Stripe(), file, logColor);
    draw(layout.Initial(), logview::InitialOf(file), logColor);
    if (layout.Text().Width() > 0)
        draw(layout.Text(), m_marginText(shown->record.time), GetDrawColor(colors.kinds[kDetailKind]));
    if (!shown->marked)
        return;
    DrawBox(dc, CPoint(margin.left, margin.top), layout.FoldBox(), layout.Line(), shown->expanded, markColor);
    if (!shown->expanded)
        draw(layout.Count(), logview::CountText(CountHiddenErrors(row)),
             GetDrawColor(colors.kinds[kErrorKind]));
}
