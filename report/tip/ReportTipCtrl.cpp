#include "report/tip/ReportTipCtrl.h"

#include "afxcontrolbarutil.h"
#include "qmcommon/QmWindowText.h"
#include "report/DrawingGuards.h"

#include <utility>

namespace report
{

namespace
{

constexpr wchar_t kTipClass[] = L"MFCReportTipCtrl";

// Lines as a cell's own texts are measured.
class CellFont : public TipFont
{
public:
    CellFont(PaintFonts& fonts, bool isBold) : m_fonts(fonts), m_isBold(isBold) {}

    int Height() override { return m_fonts.HeightOf(m_isBold); }
    int WidthOf(std::string_view line) override { return m_fonts.WidthOf(line, m_isBold); }
    std::size_t Fitting(std::string_view line, int width) override
    {
        return m_fonts.Fitting(line, width, m_isBold);
    }

private:
    PaintFonts& m_fonts;
    bool m_isBold;
};

Rect FromRect(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

// Where the text is on the screen, what is seen there, and the monitor that has the most of it.
TipPlace PlaceOf(CWnd& control, CRect rect, CRect seen)
{
    control.ClientToScreen(rect);
    control.ClientToScreen(seen);
    CRect text;
    if (!text.IntersectRect(rect, seen))
        text = rect;
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromRect(text, MONITOR_DEFAULTTONEAREST), &monitor);
    seen.IntersectRect(seen, &monitor.rcMonitor);
    TipPlace place;
    place.editor = FromRect(rect);
    place.seen = FromRect(seen);
    place.monitor = FromRect(monitor.rcWork);
    return place;
}

} // namespace

BEGIN_MESSAGE_MAP(CReportTipCtrl, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_MESSAGE(WM_NCHITTEST, &CReportTipCtrl::OnHitTest)
    ON_MESSAGE(WM_SHOWWINDOW, &CReportTipCtrl::OnShowWindow)
    ON_MESSAGE(WM_MOUSEACTIVATE, &CReportTipCtrl::OnMouseActivate)
END_MESSAGE_MAP()

bool CReportTipCtrl::MakeWindow(CWnd& control)
{
    if (m_hWnd)
        return true;
    WNDCLASSW windowClass = {}; // which stays, and does not need this library
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kTipClass;
    ::RegisterClassW(&windowClass);
    const HWND tip =
        ::CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kTipClass, nullptr, WS_POPUP,
                          0, 0, 0, 0, control, nullptr, AfxGetInstanceHandle(), nullptr);
    return SubclassWideWindow(tip) != FALSE;
}

bool CReportTipCtrl::Show(CWnd& control, const RECT& rect, const RECT& seen, const TipContents& contents,
                          PaintFonts& fonts, int dpi)
{
    TipPlace place = PlaceOf(control, rect, seen);
    place.format = contents.format;
    place.dpi = dpi;
    CellFont font(fonts, contents.isBold);
    std::optional<Tip> tip = LayOutTip(TipText(contents.text), place, font);
    if (!tip || !MakeWindow(control))
        return false;
    m_tip = std::move(*tip);
    m_font = contents.isBold ? static_cast<HFONT>(fonts.Bold()) : fonts.Plain();
    m_measures = fonts.Measures(contents.isBold);
    m_lineHeight = font.Height();
    m_color = contents.color;
    m_background = contents.background;
    m_dpi = dpi;
    std::string text;
    for (const std::string& line : m_tip.lines)
        text.append(&line == m_tip.lines.data() ? "" : "\r\n").append(line);
    QmSetWindowText(m_hWnd, text);
    ::SetWindowPos(m_hWnd, HWND_TOPMOST, m_tip.window.left, m_tip.window.top, m_tip.window.Width(),
                   m_tip.window.Height(), SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    m_capturing = control;
    ::SetCapture(control);
    Invalidate(FALSE);
    UpdateWindow();
    return true;
}

// Whoever hides it.
LRESULT CReportTipCtrl::OnShowWindow(WPARAM shows, LPARAM)
{
    const HWND capturing = shows ? nullptr : std::exchange(m_capturing, nullptr);
    if (capturing && ::GetCapture() == capturing)
        ::ReleaseCapture();
    return Default();
}

void CReportTipCtrl::Hide()
{
    if (m_hWnd && IsWindowVisible())
        ShowWindow(SW_HIDE);
}

void CReportTipCtrl::OnPaint()
{
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CDC& dc = memory.GetDC();
    CRect rect;
    GetClientRect(rect);
    const int frame = Scale(kTipFrame, m_dpi);
    dc.FillSolidRect(rect, ::GetSysColor(COLOR_WINDOWFRAME));
    ::InflateRect(rect, -frame, -frame);
    dc.FillSolidRect(rect, m_background);
    ::InflateRect(rect, -Scale(kTipPaddingX, m_dpi), -Scale(kTipPaddingY, m_dpi));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(m_color);
    const Selected font(dc, m_font);
    const GraphicText text(dc, &m_measures);
    for (const std::string& line : m_tip.lines)
    {
        text.Draw(line.data(), static_cast<int>(line.size()), rect, DT_LEFT | DT_TOP);
        rect.top += m_lineHeight;
    }
}

} // namespace report
