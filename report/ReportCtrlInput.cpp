// The report control's keys, mouse and focus: messages in, the input model asked.
#include "report/ReportCtrlData.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>

namespace
{

constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragMilliseconds = 50; // a row each time while the mouse is outside
constexpr int kColumnScroll = 8;       // of the rows' width a key scrolls one part

bool IsDown(int key)
{
    return (::GetKeyState(key) & 0x8000) != 0;
}

report::Modifiers PressedModifiers()
{
    return {IsDown(VK_SHIFT), IsDown(VK_CONTROL)};
}

report::Modifiers ModifiersOf(UINT flags)
{
    return {(flags & MK_SHIFT) != 0, (flags & MK_CONTROL) != 0};
}

} // namespace

// The control as the input model sees it.
class CReportCtrl::InputPort : public report::InputTarget
{
public:
    explicit InputPort(CReportCtrl& control) : m_control(control), m_data(*control.m_data) {}

    int RowCount() override { return m_control.GetRowCount(); }
    bool HasHeight(int row) override
    {
        return !m_data.view.showPreviews || Places(m_control).geometry.HeightOf(row) > 0;
    }
    report::RowRange WholeRows() override
    {
        report::RowRange rows{0, 0};
        m_control.GetVisibleRows(std::min(m_control.GetTopIndex(), RowCount() - 1), &rows.first, &rows.last,
                                 0);
        return rows;
    }
    int ColumnCount() override { return m_control.GetActiveSubItemCount(); }
    bool CanFocus(int column) override
    {
        const int subitem = m_control.GetSubItemFromColumn(column);
        return subitem >= 0 && subitem < m_control.GetSubItemCount() &&
               !(m_data.items.FormatOf(subitem) & RVSF_NOCELLFOCUS);
    }
    bool IsCellFocus() const override { return (m_data.style & RVS_CELLFOCUS) != 0; }
    bool IsFixedRow() const override { return (m_data.style & RVS_FIXEDROW) != 0; }
    bool IsTree() const override { return m_data.rows.IsTree(); }
    void SelectRows(int row, int anchor, report::SelectMode mode) override
    {
        const bool toggle = mode == report::SelectMode::Toggle;
        const bool add = toggle || mode == report::SelectMode::Add;
        m_control.SelectRows(row, anchor, mode != report::SelectMode::None, add, toggle, 1);
    }
    void FocusFixedRow() override
    {
        m_control.AdjustFocus(report::kFixedRow, m_data.rows.selection.focusColumn);
    }
    void EnsureVisible(int row) override
    {
        if (row < RowCount())
            m_control.EnsureVisible(m_control.GetItemFromRow(row), 1);
    }
    void Scroll(report::RowScroll how) override
    {
        const UINT codes[] = {SB_PAGEUP, SB_PAGEDOWN, SB_TOP, SB_BOTTOM};
        m_control.SendMessage(WM_VSCROLL, codes[static_cast<int>(how)]);
    }
    void ScrollColumns(int direction) override
    {
        const report::View& view = m_data.view;
        const int end = std::max(view.left, Places(m_control).geometry.EndLeft());
        const int position = view.left + direction * (view.report.Width() / kColumnScroll);
        m_control.ScrollWindow(SB_HORZ, std::min(position, end));
    }
    void FocusColumn(int column) override
    {
        m_data.ChangeSelection(Data::Painted::Later, [&] {
            m_data.rows.selection.focusColumn = column;
            return true;
        });
    }
    void EnsureVisibleColumn(int column) override { m_control.EnsureVisibleColumn(column); }
    void ChangeTree(int row, report::TreeAction action) override
    {
        _TREEITEM* const item = m_control.GetItemHandle(m_control.GetItemFromRow(row));
        if (!item)
            return;
        if (action == report::TreeAction::ExpandAll)
            report::Tree::Walk(item, false,
                               [this](_TREEITEM* below) { m_control.Expand(below, RVE_EXPAND); });
        m_control.Expand(item, action == report::TreeAction::Collapse ? RVE_COLLAPSE : RVE_EXPAND);
    }
    bool BeginEdit(int row, int column, unsigned key) override
    {
        return m_control.BeginEdit(row, column, key) != 0;
    }

private:
    CReportCtrl& m_control;
    Data& m_data;
};

// ---- Focus

void CReportCtrl::PageUp()
{
    InputPort port(*this);
    report::Input(m_data->rows.selection, port).PageUp({});
}

void CReportCtrl::PageDown()
{
    InputPort port(*this);
    report::Input(m_data->rows.selection, port).PageDown({});
}

void CReportCtrl::OnSetFocus(CWnd*)
{
    m_data->hasFocus = true;
    Redraw();
}

void CReportCtrl::OnKillFocus(CWnd* focused)
{
    Default();
    if (!focused || !CWnd::IsChild(focused))
        m_data->hasFocus = false;
    Redraw();
}

// ---- Keys

UINT CReportCtrl::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

bool CReportCtrl::NotifyKey(UINT key)
{
    _NMREPORTVIEW notification = {};
    FillHeader(notification.hdr, RVN_KEYDOWN);
    notification.keys = key;
    notification.item = GetItemFromRow(GetCurrentFocus());
    const int column = m_data->rows.selection.focusColumn;
    notification.subitem = column < GetActiveSubItemCount() ? GetSubItemFromColumn(column) : -1;
    notification.treeItem = m_data->rows.IsTree() ? GetItemHandle(notification.item) : nullptr;
    return Notify(&notification) != 0;
}

void CReportCtrl::OnKeyDown(UINT key, UINT, UINT)
{
    m_data->rows.selection.typingMayEdit = false;
    const bool handled = NotifyKey(key);
    if (!m_hWnd)
        return;
    InputPort port(*this);
    if (handled || !report::Input(m_data->rows.selection, port).KeyDown(key, PressedModifiers()))
        Default();
}

void CReportCtrl::OnChar(UINT key, UINT, UINT)
{
    InputPort port(*this);
    if (!report::Input(m_data->rows.selection, port).Character(key))
        Default();
}

// ---- Mouse

void CReportCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    SetFocus();
    _RVHITTESTINFO hit = {};
    hit.pt = point;
    HitTest(&hit);
    const LRESULT handled = Notify(RVN_ITEMCLICK, flags, &hit);
    if (!m_hWnd)
        return;
    if (handled)
        Default();
    else
        HandleClick(hit, flags);
}

void CReportCtrl::HandleClick(const _RVHITTESTINFO& hit, UINT flags)
{
    if (hit.row >= GetRowCount()) // gone while the owner was told
        return;
    InputPort port(*this);
    report::Input(m_data->rows.selection, port).Click(hit.row, hit.column, ModifiersOf(flags));
    if (!m_hWnd || hit.row < 0 || hit.row >= GetRowCount())
        return;
    if (hit.flags & RVHT_ONITEMTREEBOX)
        ToggleBox(hit);
    else if (IsDown(VK_LBUTTON) && !(flags & MK_CONTROL))
    {
        ::SetCapture(m_hWnd);
        m_data->dragging = true;
    }
}

void CReportCtrl::ToggleBox(const _RVHITTESTINFO& hit)
{
    _TREEITEM* const item = m_data->rows.IsTree() ? GetItemHandle(GetItemFromRow(hit.row)) : nullptr;
    if (item)
        Expand(item, RVE_TOGGLE);
}

void CReportCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    _RVHITTESTINFO hit = {};
    hit.pt = point;
    HitTest(&hit);
    const LRESULT handled = Notify(RVN_ITEMDBLCLICK, flags, &hit);
    if (!m_hWnd)
        return;
    if (handled)
        Default();
    else if ((hit.flags & RVHT_ONITEMTREEBOX) && hit.row < GetRowCount())
        ToggleBox(hit); // of two quick clicks each counts
}

void CReportCtrl::OnRButtonDown(UINT flags, CPoint point)
{
    SetFocus();
    _RVHITTESTINFO hit = {};
    hit.pt = point;
    HitTest(&hit);
    const LRESULT handled = Notify(RVN_ITEMRCLICK, flags, &hit);
    if (!m_hWnd)
        return;
    InputPort port(*this);
    if (handled)
        Default();
    else if (hit.row < GetRowCount())
        report::Input(m_data->rows.selection, port).RightClick(hit.row, ModifiersOf(flags));
}

// ---- Drag selection

void CReportCtrl::OnMouseMove(UINT flags, CPoint point)
{
    if (m_data->dragging && (flags & MK_LBUTTON))
        DragSelection(point);
    else
        Default();
}

// Selects up to the row at the mouse. Above and below the rows it is the next one there, and a timer goes on.
void CReportCtrl::DragSelection(CPoint point)
{
    m_data->dragPoint = point;
    const report::Rect& area = m_data->view.report;
    const bool above = point.y < area.top;
    const bool below = point.y >= area.bottom;
    int row = report::kNoRow;
    if (above || below)
    {
        const int top = m_data->view.topRow;
        ::SetTimer(m_hWnd, kDragTimer, kDragMilliseconds, nullptr);
        Scroll(SB_VERT, above ? SB_LINEUP : SB_LINEDOWN);
        int first = 0;
        int last = -1;
        GetVisibleRows(m_data->view.topRow, &first, &last, 0);
        row = above ? first : last;
        if (top == m_data->view.topRow)
            KillTimer(kDragTimer);
    }
    else
    {
        KillTimer(kDragTimer);
        row = Places(*this).geometry.HitTest(area.left, point.y).row;
    }
    InputPort port(*this);
    report::Input(m_data->rows.selection, port).DragTo(row);
}

void CReportCtrl::OnTimer(UINT_PTR id)
{
    if (id != kDragTimer)
        Default();
    else if (m_data->dragging)
        DragSelection(m_data->dragPoint);
}

void CReportCtrl::OnLButtonUp(UINT, CPoint)
{
    if (m_data->dragging)
        ::ReleaseCapture();
    Default();
}

void CReportCtrl::OnCaptureChanged(CWnd*)
{
    if (!m_data->dragging)
        return;
    m_data->dragging = false;
    KillTimer(kDragTimer);
}

// ---- Menu

// The menu key has no point of its own: the menu belongs below the focused row.
void CReportCtrl::OnContextMenu(CWnd*, CPoint point)
{
    const HWND parent = ::GetParent(m_hWnd);
    if (point.x != -1 || point.y != -1 || !parent)
    {
        Default();
        return;
    }
    const CRect area = ToRect(m_data->view.report);
    CRect row;
    CPoint place(area.left, area.top);
    if (GetRowRect(GetCurrentFocus(), -1, row, RVRC_WHOLE))
        place = CPoint(std::max(row.left, area.left), std::min(row.bottom, area.bottom));
    ClientToScreen(&place);
    ::SendMessage(parent, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hWnd), MAKELPARAM(place.x, place.y));
}

int CReportCtrl::BeginEdit(int, int, unsigned int)
{
    return 0;
}
