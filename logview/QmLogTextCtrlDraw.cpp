// What a row of the log text window looks like: text, block mark, and the marks of the usual margin.
#include "QmLogTextCtrl.h"
#include "logview/ShownRows.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{

constexpr int kMargin = 16;        // pixels to the left of text without indent
constexpr int kBlockMarkSize = 4;  // a square
constexpr int kCaretMarkWidth = 5; // a wedge that points left
constexpr int kFoldMarkWidth = 9;  // a diamond

// The text without its line feed and other characters at its end that show nothing.
std::string_view Printable(std::string_view text)
{
    const auto showsNothing = [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < ' ' || code == 0x7F;
    };
    while (!text.empty() && showsNothing(text.back()))
        text.remove_suffix(1);
    return text;
}

// What a fold mark is filled with. The face colour of many colour schemes cannot be told from the window's.
COLORREF FoldMarkColor(bool atCaret)
{
    if (atCaret)
        return ::GetSysColor(COLOR_ACTIVECAPTION);
    const COLORREF face = ::GetSysColor(COLOR_3DFACE);
    return textview::IsReadable(face, ::GetSysColor(COLOR_WINDOW)) ? face : ::GetSysColor(COLOR_3DSHADOW);
}

void VerticalLine(CDC& dc, int x, int top, int bottom)
{
    dc.MoveTo(x, top);
    dc.LineTo(x, bottom);
}

} // namespace

COLORREF CQmLogTextCtrl::GetKindColor(std::uint32_t kind) const
{
    if (HasOwnColors())
        return m_colors.kinds[kind < std::size(m_colors.kinds) ? kind : kPlainKind];
    switch (kind)
    {
    case kNoticeKind:
        return 0x00AEE8;
    case kErrorKind:
        return 0x7F7FE8;
    case kDetailKind:
        return 0x7F7F7F;
    default:
        return 0;
    }
}

void CQmLogTextCtrl::OnPaint()
{
    CQmTextCtrl::OnPaint();
    RefreshStrip();
    m_rows->cache.Clear(); // logs grow: what was read holds for this paint
}

int CQmLogTextCtrl::GetRowHeight()
{
    return CQmTextCtrl::GetRowHeight() + 1;
}

int CQmLogTextCtrl::GetRowLeft(int row)
{
    CQmLogRow record;
    if (const logview::CachedRow* const cached = m_rows->cache.Get(row))
        record = cached->record;
    else
        m_rows->Rows().ReadStyle(row, record);
    const int left = m_look.wideMargin ? GetColumnWidth() + kBlockMarkSize / 2 : kMargin;
    return GetColumnWidth() * record.indent + left;
}

void CQmLogTextCtrl::PrepareRows(int first, int count)
{
    m_rows->cache.Prepare(m_rows->Rows(), first, count);
}

void CQmLogTextCtrl::DrawRow(CDC& dc, int x, int y, int row)
{
    logview::RowCache alone(m_rows->source);
    const logview::CachedRow* const shown = m_rows->GetRow(row, alone);
    if (!shown || !shown->readable)
        return;

    const COLORREF color = GetDrawColor(GetKindColor(shown->record.kind));
    const std::string_view text = Printable(shown->text);
    // The letters of other fonts may be higher than a row.
    if (!IsAbovePainted(y) || !ZEMA::IsAscii(text.data(), text.size()))
        DrawLine(dc, x, y, text, color);

    if (shown->record.blockBegin != 0)
    {
        const int size = m_look.wideMargin ? std::max(GetRowHeight() / 4, kBlockMarkSize) : kBlockMarkSize;
        dc.FillSolidRect(x - (GetColumnWidth() - size) / 2 - size, y + (GetRowHeight() - size) / 2 + 1, size,
                         size, color);
    }

    if (m_look.wideMargin)
        return; // which has the other marks
    const int margin = x - GetRowLeft(row);
    const bool atCaret = row == GetCaretRow();
    if (atCaret)
        DrawCaretMark(dc, margin, y);
    if (shown->marked)
        DrawFoldMark(dc, margin, y, atCaret, shown->expanded);
}

void CQmLogTextCtrl::DrawLine(CDC& dc, int x, int y, std::string_view text, COLORREF color)
{
    const bool isMarkedAnew = DrawFoundMarks(dc, x, y, text, color);
    dc.SetTextColor(color);
    dc.SetBkMode(TRANSPARENT);
    GraphicText(dc.GetSafeHdc(), &GetGraphicFont())
        .DrawCells(text.data(), static_cast<int>(text.size()), x, y + 1, GetColumnWidth());
    if (isMarkedAnew)
        DrawFoundTexts(dc, x, y, text, color);
}

// All of the line, of which the window shows no more than RowCache::kLineBytes.
bool CQmLogTextCtrl::GetTipText(int row, std::string& text)
{
    if (!m_rows->Rows().ReadLine(row, text))
        return false;
    text.resize(Printable(text).size());
    return true;
}

void CQmLogTextCtrl::DrawCaretMark(CDC& dc, int x, int y)
{
    const CPen pen(PS_SOLID, 1, ::GetSysColor(COLOR_ACTIVECAPTION));
    const VkGrafic::Selected selected(dc, pen.GetSafeHandle());
    const int middle = y + GetRowHeight() / 2;
    for (int i = 0; i < kCaretMarkWidth; ++i)
        VerticalLine(dc, x + i, middle - i, middle + i + 1);
}

// The mark straddles the row's lower edge: a click on either half of it means this row.
void CQmLogTextCtrl::DrawFoldMark(CDC& dc, int x, int y, bool atCaret, bool expanded)
{
    const CPen markPen(PS_SOLID, 1, FoldMarkColor(atCaret));
    const VkGrafic::Selected mark(dc, markPen.GetSafeHandle());
    const int middle = y + GetRowHeight();
    for (int i = 0; i < kFoldMarkWidth; ++i)
    {
        const int k = i < kFoldMarkWidth / 2 ? i : kFoldMarkWidth - 1 - i;
        VerticalLine(dc, x + i, middle - k, middle + 1 + k);
    }

    const CPen signPen(PS_SOLID, 1, ::GetSysColor(COLOR_WINDOW));
    const VkGrafic::Selected sign(dc, signPen.GetSafeHandle());
    dc.MoveTo(x + 1, middle);
    dc.LineTo(x + 6, middle);
    if (!expanded)
        VerticalLine(dc, x + 3, middle - 2, middle + 3);
}
