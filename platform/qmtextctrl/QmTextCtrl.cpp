// The text window's life: creation, fonts, colours, sizes, and the operations on caret and selection.
#include "qmtextctrl/QmTextCtrl.h"

#include "QmTextCtrlApply.h"
#include "QmTextFindBar.h"
#include "QmTextTip.h"
#include "vkgrafic/DrawingGuards.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CQmTextCtrl, CWnd)
    ON_WM_DESTROY()
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_SETTINGCHANGE()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_MOUSEHWHEEL()
    ON_WM_CAPTURECHANGED()
    ON_WM_CONTEXTMENU()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_TIMER()
    ON_MESSAGE(WM_SETFONT, &CQmTextCtrl::OnSetFont)
    ON_MESSAGE(WM_GETFONT, &CQmTextCtrl::OnGetFont)
END_MESSAGE_MAP()

namespace
{
constexpr char kWindowClass[] = "QmTextCtrl";
} // namespace

CQmTextCtrl::CQmTextCtrl() : m_view(*this), m_font(static_cast<HFONT>(::GetStockObject(ANSI_FIXED_FONT))) {}

CQmTextCtrl::~CQmTextCtrl()
{
    m_prepared = false; // the rows are gone with the derived class
    CWnd::DestroyWindow();
}

BOOL CQmTextCtrl::PreCreateWindow(CREATESTRUCT& create)
{
    WNDCLASS windowClass = {};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = ::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_IBEAM);
    windowClass.lpszClassName = kWindowClass;
    create.lpszClass = kWindowClass;
    create.style |= WS_HSCROLL | WS_VSCROLL | WS_CLIPCHILDREN;
    return AfxRegisterClass(&windowClass) && CWnd::PreCreateWindow(create);
}

BOOL CQmTextCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    if (!CWnd::Create(kWindowClass, nullptr, style, rect, parent, id))
        return FALSE;
    if (CreateCommon())
        return TRUE;
    DestroyWindow();
    return FALSE;
}

BOOL CQmTextCtrl::CreateCommon()
{
    CRect client;
    GetClientRect(client);
    m_client = client.Size();
    m_rowScroll = {-1, -1, -1}; // whatever the new bars show, it is not what they are to show
    m_pixelScroll = {-1, -1, -1};
    LoadColors();
    MeasureFont();
    m_prepared = true;
    UpdateMetrics();
    return TRUE;
}

void CQmTextCtrl::OnDestroy()
{
    m_prepared = false;
    HideTip();
    if (m_tip)
        m_tip->DestroyWindow();
    m_dragging = false;
    m_focused = false;
    CWnd::OnDestroy();
}

void CQmTextCtrl::OnSize(UINT, int width, int height)
{
    m_client = {width, height};
    LayOutFindBar();
    LayOutStrip();
    UpdateMetrics();
}

void CQmTextCtrl::LoadColors()
{
    HIGHCONTRAST contrast = {};
    contrast.cbSize = sizeof(contrast);
    m_colors.highContrast = ::SystemParametersInfo(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
                            (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
    const bool isOwn = HasOwnColors();
    m_colors.window = isOwn ? m_ownColors->window : ::GetSysColor(COLOR_WINDOW);
    m_colors.windowText = isOwn ? m_ownColors->text : ::GetSysColor(COLOR_WINDOWTEXT);
}

void CQmTextCtrl::SetTextColors(const QmTextColors* colors)
{
    m_ownColors = colors ? std::make_unique<QmTextColors>(*colors) : nullptr;
    LoadColors();
    InvalidateText();
}

bool CQmTextCtrl::HasOwnColors() const
{
    return m_ownColors && !m_colors.highContrast;
}

void CQmTextCtrl::OnSysColorChange()
{
    CWnd::OnSysColorChange();
    LoadColors();
    InvalidateText();
}

void CQmTextCtrl::OnSettingChange(UINT action, LPCSTR section)
{
    CWnd::OnSettingChange(action, section);
    LoadColors();
    InvalidateText();
}

void CQmTextCtrl::MeasureFont()
{
    CClientDC dc(this);
    const VkGrafic::Selected font(dc, m_font);
    TEXTMETRIC metrics = {};
    dc.GetTextMetrics(&metrics);
    m_fontHeight = metrics.tmHeight;
    m_columnWidth = metrics.tmAveCharWidth;
    m_graphicFont = GraphicFont(dc);
}

LRESULT CQmTextCtrl::OnSetFont(WPARAM font, LPARAM)
{
    m_font = font ? reinterpret_cast<HFONT>(font) : static_cast<HFONT>(::GetStockObject(ANSI_FIXED_FONT));
    MeasureFont();
    MetricsChanged();
    return 0;
}

LRESULT CQmTextCtrl::OnGetFont(WPARAM, LPARAM)
{
    return reinterpret_cast<LRESULT>(m_font);
}

CRect CQmTextCtrl::GetRowArea() const
{
    const int bar = GetBarHeight();
    return {0, 0, std::max<LONG>(m_client.cx - m_stripWidth, 0), std::max<LONG>(m_client.cy - bar, 0)};
}

CRect CQmTextCtrl::GetTextArea() const
{
    CRect area = GetRowArea();
    area.left = std::min<LONG>(m_view.CurrentMetrics().margin, area.right);
    return area;
}

void CQmTextCtrl::SetStrip(CWnd* strip, int width)
{
    m_strip = strip;
    m_stripWidth = strip ? std::max(width, 0) : 0;
    LayOutStrip();
    MetricsChanged();
}

void CQmTextCtrl::LayOutStrip()
{
    const CRect area = GetRowArea();
    if (m_strip && m_strip->GetSafeHwnd())
        m_strip->MoveWindow(area.right, 0, m_stripWidth, area.Height());
}

void CQmTextCtrl::MetricsChanged()
{
    UpdateMetrics();
    InvalidateText();
    if (m_focused && m_prepared)
    {
        OnKillFocus(nullptr); // the caret is as high as a row
        OnSetFocus(nullptr);
    }
}

void CQmTextCtrl::UpdateMetrics()
{
    if (!m_prepared)
        return;
    const CRect area = GetRowArea();
    const int margin = std::min(std::max(GetMarginWidth(), 0), area.Width() / 2);
    Apply([&] {
        m_view.SetMetrics(
            {m_columnWidth, GetRowHeight(), area.Width() - margin, area.Height(), GetColumnCount(), margin});
    });
}

int CQmTextCtrl::GetRowLeft(int)
{
    return 0;
}

void CQmTextCtrl::GetRowCells(int, VkGrafic::TextCells&) {}

int CQmTextCtrl::GetMarginWidth()
{
    return 0;
}

void CQmTextCtrl::DrawMargin(CDC&, const CRect&, int) {}

bool CQmTextCtrl::IsInMargin(CPoint point) const
{
    return point.x < m_view.CurrentMetrics().margin && GetRowArea().PtInRect(point);
}

int CQmTextCtrl::GetRowsAbove(int)
{
    return 0;
}

void CQmTextCtrl::DrawCover(CDC&, const CRect&, int) {}

bool CQmTextCtrl::OnCoverClick(int, CPoint)
{
    return false;
}

int CQmTextCtrl::GetCoveredRows()
{
    return m_view.CoveredRows();
}

int CQmTextCtrl::GetCoveredLine(CPoint point)
{
    const int line = point.y < 0 ? -1 : static_cast<int>(point.y) / m_view.CurrentMetrics().rowHeight;
    return GetRowArea().PtInRect(point) && line < GetCoveredRows() ? line : -1;
}

void CQmTextCtrl::SetZoom(std::function<void(int steps)> zoom)
{
    m_zoom = std::move(zoom);
}

int CQmTextCtrl::GetRowHeight()
{
    return m_fontHeight;
}

int CQmTextCtrl::GetColumnWidth() const
{
    return m_columnWidth;
}

void CQmTextCtrl::OnRowsChanged()
{
    if (!m_prepared)
        return;
    m_view.RowsChanged();
    InvalidateText();
    UpdateScrollBars();
    UpdateCaret();
}

void CQmTextCtrl::MoveRows(int row, int delta)
{
    m_view.MoveRows(row, delta);
}

void CQmTextCtrl::Reload()
{
    if (!m_prepared)
        return;
    m_view.Reload();
    OnRowsChanged();
}

void CQmTextCtrl::EnsureVisible(int row, int column, int rowCount, int columnCount)
{
    Apply([&] { m_view.EnsureVisible({row, column}, rowCount, columnCount); });
}

void CQmTextCtrl::Focus(int row, int column, bool bottom)
{
    Apply([&] { m_view.Focus({row, column}, bottom); });
}

void CQmTextCtrl::FocusInContext(int row, int column, int columnCount)
{
    Apply([&] { m_view.FocusInContext({row, column}, columnCount); });
}

void CQmTextCtrl::Select(int row, int column)
{
    Apply([&] { m_view.Select({row, column}); });
}

void CQmTextCtrl::SelectAll()
{
    Apply([&] { m_view.SelectAll(); });
}

bool CQmTextCtrl::HitTest(CPoint point, int& row, int& column)
{
    textview::Cell cell;
    const bool hit = m_view.HitTest(point.x, point.y, cell);
    row = cell.row;
    column = cell.column;
    return hit;
}

int CQmTextCtrl::GetCaretRow() const
{
    return m_view.CurrentState().caret.row;
}

int CQmTextCtrl::GetCaretColumn() const
{
    return m_view.CurrentState().caret.column;
}

int CQmTextCtrl::GetSelectionBeginRow() const
{
    return m_view.SelectionBegin().row;
}

int CQmTextCtrl::GetSelectionBeginColumn() const
{
    return m_view.SelectionBegin().column;
}

int CQmTextCtrl::GetSelectionEndRow() const
{
    return m_view.SelectionEnd().row;
}

int CQmTextCtrl::GetSelectionEndColumn() const
{
    return m_view.SelectionEnd().column;
}

int CQmTextCtrl::GetTopRow() const
{
    return m_view.CurrentState().top;
}

bool CQmTextCtrl::IsAtEnd()
{
    return m_view.IsAtEnd();
}

void CQmTextCtrl::OnTextMenu(CPoint) {}

void CQmTextCtrl::OnUserScroll() {}

void CQmTextCtrl::PrepareRows(int, int) {}
