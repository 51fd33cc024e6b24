#include "report/header/FlatHeaderCtrl.h"

#include "afxcontrolbarutil.h"
#include "report/header/FlatHeaderPress.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>
#include <iterator>
#include <utility>

BEGIN_MESSAGE_MAP(CFlatHeaderCtrl, CHeaderCtrl)
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_MESSAGE(HDM_INSERTITEMA, &CFlatHeaderCtrl::OnInsertItem)
    ON_MESSAGE(HDM_INSERTITEMW, &CFlatHeaderCtrl::OnInsertItem)
    ON_MESSAGE(HDM_DELETEITEM, &CFlatHeaderCtrl::OnDeleteItem)
END_MESSAGE_MAP()

CFlatHeaderCtrl::CFlatHeaderCtrl() = default;

CFlatHeaderCtrl::~CFlatHeaderCtrl()
{
    DestroyWindow(); // while what its last messages ask for is still there
}

// ---- The system's control

template <typename Call> LRESULT CFlatHeaderCtrl::CallSystem(Call call)
{
    ++m_systemCalls;
    const LRESULT result = call();
    --m_systemCalls;
    while (m_systemCalls == 0 && !m_whenIdle.empty())
    {
        const std::function<void()> action = std::move(m_whenIdle.front());
        m_whenIdle.pop_front();
        action();
    }
    return result;
}

LRESULT CFlatHeaderCtrl::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const UINT questions[] = {HDM_GETITEMA,     HDM_GETITEMW,        HDM_GETITEMCOUNT, HDM_GETITEMRECT,
                              HDM_ORDERTOINDEX, HDM_HITTEST,         HDM_LAYOUT,       HDM_GETORDERARRAY,
                              WM_NCPAINT,       WM_WINDOWPOSCHANGING};
    if (std::find(std::begin(questions), std::end(questions), message) == std::end(questions))
        m_mayHaveChanged = true;
    return CallSystem([&] { return CHeaderCtrl::DefWindowProc(message, wParam, lParam); });
}

void CFlatHeaderCtrl::WhenIdle(std::function<void()> action)
{
    if (m_systemCalls == 0)
        return action();
    m_whenIdle.push_back(std::move(action));
}

// It would go on changing an item that is there no more.
void CFlatHeaderCtrl::StopTracking()
{
    if (std::exchange(m_trackedItem, kNone) != kNone)
    {
        m_mayHaveChanged = true;
        const std::size_t told = m_whenIdle.size();
        CHeaderCtrl::DefWindowProc(WM_LBUTTONUP, 0, MAKELPARAM(m_trackPoint.x, m_trackPoint.y));
        m_whenIdle.resize(told); // the owner knows the width
    }
}

// ---- Items

void CFlatHeaderCtrl::SetItemFiltered(int index, bool filtered)
{
    if (index < 0 || index >= static_cast<int>(m_extras.size()) || IsItemFiltered(index) == filtered)
        return;
    m_extras[static_cast<std::size_t>(index)].filtered = filtered;
    RedrawItem(index);
}

bool CFlatHeaderCtrl::IsItemFiltered(int index) const
{
    return index >= 0 && index < static_cast<int>(m_extras.size()) &&
           m_extras[static_cast<std::size_t>(index)].filtered;
}

void CFlatHeaderCtrl::SetItemValues(int index, int value1, int value2)
{
    if (index < 0 || index >= static_cast<int>(m_extras.size()))
        return;
    _HDITEMEX& extra = m_extras[static_cast<std::size_t>(index)];
    extra.value1 = value1;
    extra.value2 = value2;
}

void CFlatHeaderCtrl::MarkItem(int index)
{
    if (index == m_markedItem)
        return;
    RedrawItem(std::exchange(m_markedItem, index));
    RedrawItem(index);
}

void CFlatHeaderCtrl::ClickItem(int index)
{
    LRESULT answer = 0;
    if (index >= 0 && index < GetItemCount())
        Notify(HDN_ITEMCLICKA, index, nullptr, answer);
}

LRESULT CFlatHeaderCtrl::OnInsertItem(WPARAM, LPARAM)
{
    EndPress();
    const LRESULT index = Default();
    if (index < 0)
        return index;
    ++m_itemChanges;
    m_extras.insert(m_extras.begin() + index, _HDITEMEX());
    m_markedItem += m_markedItem >= index ? 1 : 0;
    return index;
}

LRESULT CFlatHeaderCtrl::OnDeleteItem(WPARAM index, LPARAM)
{
    EndPress();
    return CallSystem([&] {
        StopTracking();
        const LRESULT deleted = Default();
        if (deleted)
        {
            ++m_itemChanges;
            m_extras.erase(m_extras.begin() + static_cast<std::ptrdiff_t>(index));
            const int deletedItem = static_cast<int>(index);
            if (m_markedItem >= deletedItem)
                m_markedItem = m_markedItem == deletedItem ? kNone : m_markedItem - 1;
        }
        return deleted;
    });
}

void CFlatHeaderCtrl::OnDestroy()
{
    EndPress();
    HideDropMark();
    m_tip.End();
    m_trackedItem = m_markedItem = kNone;
    m_extras.clear();
    ++m_itemChanges;
    CHeaderCtrl::OnDestroy();
}

// ---- Painting

HeaderFace CFlatHeaderCtrl::GetFace(int index) const
{
    char text[1024] = "";
    HDITEM item = {};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_IMAGE;
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    HeaderFace face;
    face.dpi = m_dpi;
    if (!GetItem(index, &item))
        return face;
    face.caption = item.pszText ? item.pszText : "";
    face.format = item.fmt;
    face.images = Header_GetImageList(m_hWnd);
    face.image = item.iImage;
    face.filtered = IsItemFiltered(index);
    face.marked = index == m_markedItem;
    if (m_press && m_press->index == index && (m_press->inside || m_press->IsDrag()))
        face.look = HeaderLook::Pressed;
    return face;
}

void CFlatHeaderCtrl::DrawFace(CDC& dc, const CRect& rect, const HeaderFace& face) const
{
    const int saved = dc.SaveDC();
    const LRESULT font = ::SendMessage(m_hWnd, WM_GETFONT, 0, 0);
    ::SelectObject(dc, font ? reinterpret_cast<HFONT>(font) : ::GetStockObject(SYSTEM_FONT));
    DrawHeaderFace(dc, rect, face, VkGrafic::WindowColors(m_hWnd));
    dc.RestoreDC(saved);
}

void CFlatHeaderCtrl::OnPaint()
{
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CRect rest;
    GetClientRect(rest);
    for (const int index : GetOrder())
    {
        CRect rect;
        if (!GetItemRect(index, rect))
            continue;
        rest.left = rect.right;
        if (rect.Width() > 0 && ::RectVisible(memory.GetDC(), rect))
            DrawFace(memory.GetDC(), rect, GetFace(index));
    }
    DrawHeaderGround(memory.GetDC(), rest, VkGrafic::WindowColors(m_hWnd));
}

BOOL CFlatHeaderCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE; // painted as a whole
}

void CFlatHeaderCtrl::OnSysColorChange()
{
    CHeaderCtrl::OnSysColorChange();
    Invalidate();
}

void CFlatHeaderCtrl::RedrawItem(int index)
{
    CRect rect;
    if (m_hWnd && GetItemRect(index, rect))
        InvalidateRect(rect);
}

// ---- The mouse

HDHITTESTINFO CFlatHeaderCtrl::Hit(CPoint point) const
{
    HDHITTESTINFO hit = {};
    hit.pt = point;
    HitTest(&hit);
    return hit;
}

void CFlatHeaderCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    const HDHITTESTINFO hit = Hit(point);
    if (hit.flags & HHT_ONHEADER)
        return BeginPress(hit.iItem, point);
    const HWND hwnd = m_hWnd;
    if (hit.flags & (HHT_ONDIVIDER | HHT_ONDIVOPEN))
        m_trackedItem = hit.iItem;
    m_trackPoint = point;
    CHeaderCtrl::OnLButtonDown(flags, point);
    if (m_hWnd == hwnd && ::GetCapture() != hwnd) // the owner does not want it
        m_trackedItem = kNone;
}

void CFlatHeaderCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    const HDHITTESTINFO hit = Hit(point);
    if (hit.flags & HHT_ONHEADER)
        return BeginPress(hit.iItem, point); // the second of two quick clicks counts
    CHeaderCtrl::OnLButtonDblClk(flags, point);
}

void CFlatHeaderCtrl::BeginPress(int index, CPoint point)
{
    EndPress();
    m_tip.Hide();
    m_press = std::make_unique<Press>(index, point);
    ::SetCapture(m_hWnd);
    RedrawItem(index);
}

void CFlatHeaderCtrl::OnMouseMove(UINT flags, CPoint point)
{
    m_trackPoint = point;
    if (!m_press)
    {
        ShowTip(point);
        return CHeaderCtrl::OnMouseMove(flags, point);
    }
    if (!m_press->IsDrag())
    {
        const HDHITTESTINFO hit = Hit(point);
        const bool inside = (hit.flags & HHT_ONHEADER) && hit.iItem == m_press->index;
        if (std::exchange(m_press->inside, inside) != inside)
            RedrawItem(m_press->index);
        if (m_press->forbidden ||
            !GetDrag(m_press->index)
                 .Begins(m_press->point.x, m_press->point.y, point.x, point.y, ::GetSystemMetrics(SM_CXDRAG),
                         ::GetSystemMetrics(SM_CYDRAG)) ||
            !BeginDrag())
            return;
    }
    MoveDrag(point);
}

void CFlatHeaderCtrl::ShowTip(CPoint point)
{
    const HDHITTESTINFO hit = Hit(point);
    CRect rect;
    if (IsTracking() || !(hit.flags & HHT_ONHEADER) || !GetItemRect(hit.iItem, rect))
        return m_tip.Hide();
    m_tip.Follow(*GetCurrentMessage(), hit.iItem, rect, GetTip(hit.iItem));
}

void CFlatHeaderCtrl::OnLButtonUp(UINT flags, CPoint point)
{
    m_trackedItem = kNone; // the last change of a width is the final one
    if (!m_press)
        return CHeaderCtrl::OnLButtonUp(flags, point);
    if (m_press->IsDrag())
        return Drop(point);
    const HDHITTESTINFO hit = Hit(point);
    const int index = m_press->index;
    EndPress();
    LRESULT answer = 0;
    if ((hit.flags & HHT_ONHEADER) && hit.iItem == index)
        Notify(HDN_ITEMCLICKA, index, nullptr, answer);
}

// The system's hit test names the left neighbour within some pixels of a divider.
int CFlatHeaderCtrl::ItemUnder(CPoint point) const
{
    for (const int index : GetOrder())
    {
        CRect rect;
        if (GetItemRect(index, rect) && rect.PtInRect(point))
            return index;
    }
    return kNone;
}

void CFlatHeaderCtrl::OnRButtonUp(UINT flags, CPoint point)
{
    m_rightClickedItem = ItemUnder(point);
    CHeaderCtrl::OnRButtonUp(flags, point);
}

void CFlatHeaderCtrl::OnCaptureChanged(CWnd* wnd)
{
    EndPress();
    CHeaderCtrl::OnCaptureChanged(wnd);
}

// Gives the mouse back and leaves nothing of a drag.
void CFlatHeaderCtrl::EndPress()
{
    const std::unique_ptr<Press> press = std::move(m_press);
    if (!press)
        return;
    HideDropMark();
    RedrawItem(press->index);
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
}

// Tells the parent. False when the window or its items are not those of before any more.
bool CFlatHeaderCtrl::Notify(UINT code, int index, HDITEM* item, LRESULT& answer)
{
    const unsigned changes = m_itemChanges;
    NMHEADER notification = {};
    notification.hdr.hwndFrom = m_hWnd;
    notification.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    notification.hdr.code = code;
    notification.iItem = index;
    notification.pitem = item;
    answer = ::SendMessage(::GetParent(m_hWnd), WM_NOTIFY, notification.hdr.idFrom,
                           reinterpret_cast<LPARAM>(&notification));
    return m_itemChanges == changes;
}
