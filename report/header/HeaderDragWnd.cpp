#include "report/header/HeaderDragWnd.h"

#include "afxcontrolbarutil.h"
#include "report/header/FlatHeaderCtrl.h"

namespace
{

constexpr char kDragClass[] = "MFCFHDragWnd";
constexpr char kDropClass[] = "MFCFHDropWnd";
constexpr int kDropWidth = 12;
constexpr int kDropReach = 10; // above and below the header

void RegisterWindowClass(const char* name, HBRUSH background)
{
    WNDCLASS windowClass = {};
    windowClass.lpfnWndProc = ::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();
}

} // namespace

BEGIN_MESSAGE_MAP(CFHDragWnd, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

BOOL CFHDragWnd::Create(const CRect& rect, CFlatHeaderCtrl& header, int headerItem, HeaderLook look)
{
    m_header = &header;
    m_headerItem = headerItem;
    m_look = look;
    RegisterWindowClass(kDragClass, nullptr);
    return CreateEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, kDragClass, "", WS_POPUP | WS_DISABLED, rect, &header,
                    0);
}

void CFHDragWnd::MoveTo(CPoint topLeft, HeaderLook look)
{
    SetWindowPos(nullptr, topLeft.x, topLeft.y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    if (look == m_look)
        return;
    m_look = look;
    Invalidate();
}

void CFHDragWnd::OnPaint()
{
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CRect client;
    GetClientRect(client);
    HeaderFace face = m_header->GetFace(m_headerItem);
    face.look = m_look;
    m_header->DrawFace(memory.GetDC(), client, face);
    ::FrameRect(memory.GetDC(), client, ::GetSysColorBrush(COLOR_3DSHADOW));
}

BOOL CFHDropWnd::Create(CWnd& header, int headerHeight)
{
    RegisterWindowClass(kDropClass, reinterpret_cast<HBRUSH>(COLOR_HIGHLIGHT + 1));
    const int h = headerHeight + 2 * kDropReach;
    if (!CreateEx(WS_EX_TOOLWINDOW, kDropClass, "", WS_POPUP | WS_DISABLED, CRect(0, 0, kDropWidth, h),
                  &header, 0))
        return FALSE;

    // The lower arrow is the larger one: the edges of a polygon to the right and below are not part of it.
    const POINT upper[] = {{8, 0}, {8, 4}, {11, 4}, {6, 9}, {1, 4}, {4, 4}, {4, 0}};
    const POINT lower[] = {{4, h}, {4, h - 4}, {0, h - 4}, {6, h - 10}, {12, h - 4}, {8, h - 4}, {8, h}};
    CRgn arrows;
    CRgn second;
    if (!arrows.CreatePolygonRgn(upper, 7, ALTERNATE) || !second.CreatePolygonRgn(lower, 7, ALTERNATE))
        return FALSE;
    arrows.CombineRgn(&arrows, &second, RGN_OR);
    SetWindowRgn(static_cast<HRGN>(arrows.Detach()), FALSE);
    return TRUE;
}

void CFHDropWnd::ShowAt(CPoint top)
{
    ::SetWindowPos(m_hWnd, HWND_TOP, top.x - kDropWidth / 2, top.y - kDropReach, 0, 0,
                   SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}
