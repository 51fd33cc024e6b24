#include "logdesk/SplitterBar.h"

#include "vkgrafic/WindowColors.h"

namespace logdesk
{

BEGIN_MESSAGE_MAP(SplitterBar, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

SplitterBar::~SplitterBar()
{
    DestroyWindow();
}

BOOL SplitterBar::Create(CWnd* parent, UINT id)
{
    const char* const name = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_SIZENS));
    return CWnd::Create(name, "", WS_CHILD | WS_VISIBLE, CRect(), parent, id);
}

BOOL SplitterBar::OnEraseBkgnd(CDC* dc)
{
    CRect area;
    GetClientRect(area);
    dc->FillSolidRect(area, VkGrafic::WindowColors(m_hWnd)[VkGrafic::UiColor::Face]);
    return TRUE;
}

void SplitterBar::OnLButtonDown(UINT, CPoint point)
{
    ::SetCapture(m_hWnd);
    m_grip = point.y;
}

void SplitterBar::OnLButtonDblClk(UINT, CPoint)
{
    m_move(kMiddle);
}

void SplitterBar::OnLButtonUp(UINT, CPoint)
{
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
}

void SplitterBar::OnMouseMove(UINT, CPoint point)
{
    if (::GetCapture() != m_hWnd)
        return;
    ::MapWindowPoints(m_hWnd, ::GetParent(m_hWnd), &point, 1);
    m_move(point.y - m_grip);
}

} // namespace logdesk
