#include "qmflattabctrl/QmFlatTabCtrl.h"

#include "afxcontrolbarutil.h"
#include "qmflattabctrl/TabStrip.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

#include <commctrl.h>

using VkGrafic::UiColor;

namespace
{

// A device context of the screen with the tabs' font, for measuring.
class MeasuringDc
{
public:
    explicit MeasuringDc(HWND hwnd) : m_font(m_dc, VkGrafic::GetGuiFont(hwnd)) {}

    operator HDC() const { return m_dc; }

private:
    CClientDC m_dc{nullptr};
    VkGrafic::Selected m_font;
};

CRect RectOf(const flattab::Box& box)
{
    return CRect(box.left, box.top, box.right, box.bottom);
}

} // namespace

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr UINT CQmFlatTabCtrl::kTabsAtBottom;

BEGIN_MESSAGE_MAP(CQmFlatTabCtrl, CWnd)
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SYSCOLORCHANGE()
    ON_MESSAGE(WM_DPICHANGED_AFTERPARENT, &CQmFlatTabCtrl::OnDpiChanged)
    ON_WM_SETFOCUS()
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

CQmFlatTabCtrl::CQmFlatTabCtrl() = default;

CQmFlatTabCtrl::~CQmFlatTabCtrl() = default;

BOOL CQmFlatTabCtrl::Create(DWORD style, UINT tabStyle, const RECT& rect, CWnd* parent, UINT id)
{
    m_bottom = (tabStyle & kTabsAtBottom) != 0;
    const LPCSTR className = AfxRegisterWndClass(CS_HREDRAW | CS_VREDRAW, ::LoadCursor(nullptr, IDC_ARROW));
    return CWnd::Create(className, "", style | WS_CLIPCHILDREN, rect, parent, id);
}

BOOL CQmFlatTabCtrl::AddTab(int index, const char* label, CWnd* page)
{
    if (index < 0 || index > static_cast<int>(m_tabs.size()))
        return FALSE;
    page->ShowWindow(SW_HIDE);
    ::SetParent(page->GetSafeHwnd(), GetSafeHwnd());
    m_tabs.insert(m_tabs.begin() + index, Tab{label, page->GetSafeHwnd()});
    if (m_selected >= index)
        ++m_selected;
    Invalidate();
    return TRUE;
}

BOOL CQmFlatTabCtrl::SelectTab(int index)
{
    if (index < 0 || index >= static_cast<int>(m_tabs.size()))
        return FALSE;
    if (index == m_selected)
        return TRUE;

    const HWND focus = ::GetFocus();
    const bool focused = focus && (focus == m_hWnd || ::IsChild(m_hWnd, focus));
    const int former = m_selected;
    m_selected = index;
    PlacePage();
    const HWND page = m_tabs[static_cast<std::size_t>(index)].page;
    ::ShowWindow(page, SW_SHOW);
    if (focused)
        ::SetFocus(page);
    if (former >= 0 && m_tabs[static_cast<std::size_t>(former)].page != page)
        ::ShowWindow(m_tabs[static_cast<std::size_t>(former)].page, SW_HIDE);
    Invalidate();
    return TRUE;
}

BOOL CQmFlatTabCtrl::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && message->wParam == VK_TAB && ::GetKeyState(VK_CONTROL) < 0)
    {
        const int step = ::GetKeyState(VK_SHIFT) < 0 ? -1 : 1;
        const int next = flattab::NextTab(m_selected, step, static_cast<int>(m_tabs.size()));
        if (next != m_selected)
        {
            SelectByUser(next);
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(message);
}

void CQmFlatTabCtrl::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    PlacePage();
}

LRESULT CQmFlatTabCtrl::OnDpiChanged(WPARAM, LPARAM)
{
    PlacePage();
    Invalidate(FALSE);
    return 0;
}

void CQmFlatTabCtrl::OnPaint()
{
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CDC& dc = memory.GetDC();
    const VkGrafic::SavedState saved(dc);
    ::SelectObject(dc, VkGrafic::GetGuiFont(m_hWnd));
    dc.SetBkMode(TRANSPARENT);

    const VkGrafic::WindowColors colors(m_hWnd);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, colors[UiColor::Face]);
    const flattab::TabStrip layout = GetLayout();
    CRect edge = RectOf(layout.Strip());
    if (m_bottom)
        edge.bottom = edge.top + 1;
    else
        edge.top = edge.bottom - 1;
    dc.FillSolidRect(edge, colors[UiColor::Edge]);
    for (int index = 0; index < static_cast<int>(m_tabs.size()); ++index)
        DrawTab(dc, RectOf(layout.Tab(index)), m_tabs[static_cast<std::size_t>(index)], index == m_selected,
                colors);
}

BOOL CQmFlatTabCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE; // painted as a whole
}

void CQmFlatTabCtrl::OnSysColorChange()
{
    CWnd::OnSysColorChange();
    Invalidate();
}

void CQmFlatTabCtrl::OnSetFocus(CWnd* old)
{
    CWnd::OnSetFocus(old);
    if (m_selected >= 0)
        ::SetFocus(m_tabs[static_cast<std::size_t>(m_selected)].page);
}

void CQmFlatTabCtrl::OnLButtonDown(UINT, CPoint point)
{
    SetFocus();
    const int index = GetLayout().HitTest(point.x, point.y);
    if (index != flattab::kNoTab && index != m_selected)
        SelectByUser(index);
}

flattab::TabStrip CQmFlatTabCtrl::GetLayout() const
{
    const MeasuringDc dc(m_hWnd);
    TEXTMETRIC metrics = {};
    ::GetTextMetrics(dc, &metrics);
    std::vector<int> widths;
    for (const Tab& tab : m_tabs)
        widths.push_back(GraphicText(dc).GetWidth(tab.label.data(), static_cast<int>(tab.label.size())));
    CRect client;
    GetClientRect(client);
    return flattab::TabStrip(client.Width(), client.Height(), m_bottom, metrics.tmHeight, std::move(widths));
}

// Tells the parent at the end, for it may destroy this window.
void CQmFlatTabCtrl::SelectByUser(int index)
{
    SelectTab(index);
    NMHDR header = {};
    header.hwndFrom = m_hWnd;
    header.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    header.code = static_cast<UINT>(TCN_SELCHANGE);
    ::SendMessage(::GetParent(m_hWnd), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void CQmFlatTabCtrl::PlacePage()
{
    if (m_selected < 0)
        return;
    const CRect rect = RectOf(GetLayout().Page());
    ::MoveWindow(m_tabs[static_cast<std::size_t>(m_selected)].page, rect.left, rect.top, rect.Width(),
                 rect.Height(), TRUE);
}

// The selected tab has the page's colour and, towards the page, no edge.
void CQmFlatTabCtrl::DrawTab(CDC& dc, const RECT& rect, const Tab& tab, bool selected,
                             const VkGrafic::WindowColors& colors) const
{
    if (selected)
    {
        CRect inner = rect;
        dc.FillSolidRect(inner, colors[UiColor::Edge]);
        inner.left += 1;
        inner.right -= 1;
        if (m_bottom)
            inner.bottom -= 1;
        else
            inner.top += 1;
        dc.FillSolidRect(inner, colors[UiColor::Window]);
    }
    dc.SetTextColor(colors[selected ? UiColor::WindowText : UiColor::FaceText]);
    GraphicText(dc).Draw(tab.label.data(), static_cast<int>(tab.label.size()), rect, DT_CENTER | DT_VCENTER);
}
