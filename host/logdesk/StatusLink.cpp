#include "logdesk/StatusLink.h"

#include "afxcontrolbarutil.h"
#include "qmcommon/QmWindowText.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

namespace logdesk
{

BEGIN_MESSAGE_MAP(StatusLink, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

StatusLink::~StatusLink()
{
    DestroyWindow();
}

BOOL StatusLink::Create(CWnd* parent, UINT id, const char* tip)
{
    const char* const name = AfxRegisterWndClass(CS_HREDRAW, ::LoadCursor(nullptr, IDC_HAND));
    if (!CWnd::Create(name, "", WS_CHILD, CRect(), parent, id))
        return FALSE;
    m_tip.Show(m_hWnd, tip);
    return TRUE;
}

BOOL StatusLink::OnEraseBkgnd(CDC*)
{
    return TRUE; // painted as a whole
}

void StatusLink::OnPaint()
{
    using VkGrafic::UiColor;
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CDC& dc = memory.GetDC();
    const VkGrafic::WindowColors colors(m_hWnd);
    CRect area;
    GetClientRect(area);
    dc.FillSolidRect(area, colors[UiColor::Face]);
    const VkGrafic::Selected selected(dc, VkGrafic::GetGuiFont(m_hWnd));
    const COLORREF color = VkGrafic::ReadableColor(colors[UiColor::Link], colors[UiColor::Face]);
    dc.SetTextColor(color); // some systems' own is hardly to be seen on bars
    dc.SetBkMode(TRANSPARENT);
    const std::string text = QmGetWindowText(m_hWnd);
    GraphicText(dc).Draw(text.data(), static_cast<int>(text.size()), area,
                         DT_LEFT | DT_VCENTER | DT_END_ELLIPSIS);
    TEXTMETRIC font = {};
    dc.GetTextMetrics(&font);
    const int base = (area.Height() - static_cast<int>(font.tmHeight)) / 2 + static_cast<int>(font.tmAscent);
    dc.FillSolidRect(area.left, area.top + base + 1, area.Width(), 1, color);
}

void StatusLink::OnLButtonDown(UINT, CPoint)
{
    m_clicked();
}

} // namespace logdesk
