// The message viewer: what its cells and previews show.
#include "logreport/ReportCtrlLogData.h"
#include "logreport/model/MsgCells.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr int kTextIndent = 7; // pixels, of a preview below a line
constexpr COLORREF kPreviewGround = RGB(240, 240, 240);

int LineHeight(CDC& dc)
{
    TEXTMETRIC metrics = {};
    dc.GetTextMetrics(&metrics);
    return std::max(1, static_cast<int>(metrics.tmHeight));
}

// The fixed-pitch font has the letters of one code page. A text with others is shown in the dialogs' font,
// which the system links with those of all scripts.
HFONT PreviewFont(logreport::Previews& previews, HWND hwnd, HDC dc, std::string_view text)
{
    if (ZEMA::IsAscii(text.data(), text.size()))
        return previews.font;
    const VkGrafic::Selected selected(dc, previews.font);
    if (!previews.fontHas)
        previews.fontHas.emplace(dc);
    const bool isIn = previews.fontHas->Has(dc, text.data(), static_cast<int>(text.size()));
    return isIn ? previews.font : VkGrafic::GetGuiFont(hwnd);
}

// Told apart from the lines of the list.
void FillPreview(CDC& dc, const CRect& rect, HWND hwnd)
{
    const VkGrafic::WindowColors colors(hwnd);
    const COLORREF ground = colors.IsDark() ? colors[VkGrafic::UiColor::Face] : kPreviewGround;
    dc.FillSolidRect(rect, ground);
    if (colors.IsDark())
        dc.SetTextColor(VkGrafic::ReadableColor(dc.GetTextColor(), ground));
}

} // namespace

// ---- Resolution

void CReportCtrlLog::UseResolution()
{
    const int dpi = GetResolution();
    if (m_data->images.Load(dpi))
        SetImageList(m_data->images.List(), nullptr);
    m_data->previews.font.DeleteObject();
    LOGFONT font = {};
    ::GetObject(::GetStockObject(ANSI_FIXED_FONT), sizeof(font), &font);
    font.lfHeight = MulDiv(font.lfHeight, dpi, 96);
    font.lfWidth = 0;
    font.lfOutPrecision = OUT_TT_ONLY_PRECIS; // the stock font is of bitmaps, which do not grow
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    ::lstrcpyn(font.lfFaceName, "Courier New", LF_FACESIZE);
    if (dpi == 96 || !m_data->previews.font.CreateFontIndirect(&font))
        m_data->previews.font.CreateStockObject(ANSI_FIXED_FONT);
    m_data->previews.fontHas.reset();
    ForgetPreviews();
}

LRESULT CReportCtrlLog::OnDpiChanged(WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = QmHandler<CReportCtrl>::OnDpiChanged(wParam, lParam);
    UseResolution();
    return result;
}

// ---- Cells

// A message that is not there has a line as well, so that one can see that it is missing.
int CReportCtrlLog::LoadItemData(structITEM* record, int item, int subitem, unsigned int mask)
{
    if (QmHandler<CReportCtrl>::LoadItemData(record, item, subitem, mask))
        return 1;
    if (item < 0 || !m_data->source.service || !m_hWnd)
        return 0;
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, m_data->previews.font);
    record->previewHeight = LineHeight(dc);
    return 1;
}

__int64 CReportCtrlLog::OnRvnItemCallbackBypass(_NMREPORTVIEW* notification)
{
    _RVITEM& cell = reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item;
    if (!m_data->source.service || cell.item < 0)
        return 1;
    const std::shared_ptr<ILogMsgList> list = m_data->source.list; // as long as its message is used
    const std::uint32_t id = m_data->range.IdOf(cell.item);
    const ILogMsgData* const message = FindCacheMsgData(id);
    if (!message || !m_hWnd) // which the service may have destroyed
        return 1;
    logreport::AnswerCell(*message, m_data->previews.lines, cell);
    if (cell.subitem == kLogMsgNone)
    {
        cell.previewHeight = GetPreviewHeight(id, *message);
        cell.mask |= RVIM_PREVIEWHEIGHT;
    }
    return 0;
}

void CReportCtrlLog::AdjustTip(_RVITEM* item)
{
    __int64 showsPreviews = 0;
    GetProperty(RVP_SHOWPREVIEW, &showsPreviews);
    if (item->subitem != kLogMsgBody || item->item < 0 || showsPreviews)
        return;
    const std::shared_ptr<ILogMsgList> list = m_data->source.list; // as long as its message is used
    const ILogMsgData* const message = FindCacheMsgData(m_data->range.IdOf(item->item));
    if (!message || !message->GetBody())
        return;
    std::string& tip = m_data->previews.tip;
    tip = logreport::PreviewText(message->GetBody(), 0);
    item->text = tip.data();
}

// ---- Previews

void CReportCtrlLog::SetPreviewLines(int lines)
{
    m_data->previews.lines = std::max(0, lines);
    FlushCacheMsgData();
}

int CReportCtrlLog::GetPreviewLines()
{
    return m_data->previews.lines;
}

// Of all columns, or of the header when that is wider.
int CReportCtrlLog::GetVirtualWidth()
{
    int width = 0;
    for (int column = 0; column < GetActiveSubItemCount(); ++column)
        width += GetSubItemWidth(GetSubItemFromColumn(column));
    return std::max(width, GetHeaderWidth());
}

int CReportCtrlLog::GetPreviewLeft(const ILogMsgData& message)
{
    const std::uint32_t indent = std::min(message.GetIndent(logreport::kMaxIndent), logreport::kMaxIndent);
    return MulDiv(static_cast<int>(indent) * logreport::kIndentStep, GetResolution(), 96);
}

int CReportCtrlLog::GetPreviewHeight(std::uint32_t id, const ILogMsgData& message)
{
    if (const std::optional<logreport::PreviewSize> kept = m_data->previews.sizes.Find(id))
        return kept->height;
    CClientDC dc(this);
    const char* const body = message.GetBody();
    const std::string text = logreport::PreviewText(body ? body : "", m_data->previews.lines);
    const VkGrafic::Selected selected(dc, PreviewFont(m_data->previews, m_hWnd, dc, text));
    const int left = GetPreviewLeft(message);
    const int end = GetHideRow() ? logreport::kWidestPreview : GetVirtualWidth();
    const SIZE size = GraphicText(dc).MeasureWholeLines(text.data(), static_cast<int>(text.size()),
                                                        std::max(0, end - left));
    const logreport::PreviewSize measured = {left + size.cx,
                                             std::max(static_cast<int>(size.cy), LineHeight(dc))};
    m_data->previews.sizes.Keep(id, measured);
    if (measured.right > m_data->previews.widest)
    {
        m_data->previews.widest = measured.right;
        if (!std::exchange(m_data->previews.isWideningPosted, true))
            PostMessage(logreport::kPreviewWidened);
    }
    return measured.height;
}

LRESULT CReportCtrlLog::OnPreviewWidened(WPARAM, LPARAM)
{
    m_data->previews.isWideningPosted = false;
    SetPreviewWidth(m_data->previews.widest);
    return 0;
}

void CReportCtrlLog::ForgetPreviews()
{
    m_data->previews.sizes.Forget();
    if (std::exchange(m_data->previews.widest, 0) > 0)
        SetPreviewWidth(0);
}

__int64 CReportCtrlLog::OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification)
{
    _NMRVITEMDRAW& draw = *reinterpret_cast<_NMRVITEMDRAW*>(notification);
    const char* const text = std::exchange(draw.item->text, nullptr); // the control shall not draw it
    CDC& dc = *CDC::FromHandle(draw.dc);
    CRect rect(draw.rect);
    if (!GetHideRow())
    {
        if (!(draw.item->state & RVIS_SELECTED) && !VkGrafic::IsHighContrast())
            FillPreview(dc, rect, *this);
        rect.left += kTextIndent;
    }
    const std::shared_ptr<ILogMsgList> list = m_data->source.list; // as long as its message is used
    if (const ILogMsgData* const message = FindCacheMsgData(m_data->range.IdOf(draw.item->item)))
        rect.left += GetPreviewLeft(*message);
    const VkGrafic::Selected selected(dc, PreviewFont(m_data->previews, m_hWnd, dc, text ? text : ""));
    const int height = LineHeight(dc);
    CRect clip;
    dc.GetClipBox(clip);
    const int first = std::max(0, static_cast<int>(clip.top - rect.top) / height);
    const int count =
        std::max(0, static_cast<int>(std::min(clip.bottom, rect.bottom) - rect.top) / height - first + 1);
    const std::string_view shown = logreport::LinesOf(text ? text : "", first, count);
    rect.top += first * height;
    GraphicText(dc).DrawWholeLines(shown.data(), static_cast<int>(shown.size()), rect);
    return 0;
}
