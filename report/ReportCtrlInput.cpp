// The report control's keys, mouse and focus: messages in, the input model asked.
#include "report/ReportKeysPort.h"
#include "report/ReportSnapshot.h"
#include "report/edit/EditorWindow.h"
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

std::uint32_t MessageTime()
{
    return static_cast<std::uint32_t>(::GetMessageTime());
}

} // namespace

// The control as the input model sees it.
class CReportCtrl::Data::InputPort : public report::InputTarget
{
public:
    explicit InputPort(Data& data) : m_control(data.control), m_data(data) {}

    int RowCount() override { return m_control.GetRowCount(); }
    bool HasHeight(int row) override
    {
        return !m_data.view.showPreviews || Snapshot(m_data).geometry.HeightOf(row) > 0;
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
        if (std::max(row, anchor) >= RowCount()) // a callback that was asked for a height has taken it away
            return;
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
        const int end = std::max(view.left, Snapshot(m_data).geometry.EndLeft());
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
    Data::InputPort port(*m_data);
    report::Input(m_data->rows.selection, port).PageUp({});
}

void CReportCtrl::PageDown()
{
    Data::InputPort port(*m_data);
    report::Input(m_data->rows.selection, port).PageDown({});
}

void CReportCtrl::OnSetFocus(CWnd*)
{
    m_data->window.hasFocus = true;
    m_data->Redraw();
}

void CReportCtrl::OnKillFocus(CWnd* focused)
{
    Default();
    if (!focused || !CWnd::IsChild(focused))
        m_data->window.hasFocus = false;
    m_data->Redraw();
}

// ---- Keys

UINT CReportCtrl::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

bool CReportCtrl::Data::NotifyKey(UINT key)
{
    _NMREPORTVIEW notification = {};
    FillHeader(notification.hdr, RVN_KEYDOWN);
    notification.keys = key;
    notification.item = control.GetItemFromRow(control.GetCurrentFocus());
    const int column = rows.selection.focusColumn;
    notification.subitem =
        column < control.GetActiveSubItemCount() ? control.GetSubItemFromColumn(column) : -1;
    notification.treeItem = rows.IsTree() ? control.GetItemHandle(notification.item) : nullptr;
    return control.Notify(&notification) != 0;
}

void CReportCtrl::OnKeyDown(UINT key, UINT, UINT)
{
    m_data->rows.selection.typingMayEdit = false;
    const bool handled = m_data->NotifyKey(key);
    if (!m_hWnd)
        return;
    Data::InputPort port(*m_data);
    Data::KeysPort keys(*m_data);
    const report::Modifiers modifiers = PressedModifiers();
    report::ExtraKeys extra(m_data->extraKeys, m_data->rows.selection, port, keys);
    if (!handled && extra.KeyDown(key, modifiers, MessageTime()))
        return;
    if (handled || !report::Input(m_data->rows.selection, port).KeyDown(key, modifiers))
        Default();
}

void CReportCtrl::OnChar(UINT key, UINT, UINT)
{
    if (m_data->IsEditing()) // the rest of the character that has started the edit
    {
        ::SendMessageW(report::TextField(m_data->edit.editor), WM_CHAR, key, 0);
        return;
    }
    const ZEMA::Flagged typing(m_data->edit.isTyping);
    Data::InputPort port(*m_data);
    Data::KeysPort keys(*m_data);
    report::ExtraKeys extra(m_data->extraKeys, m_data->rows.selection, port, keys);
    if (!report::Input(m_data->rows.selection, port).Character(key) && !extra.Character(key, MessageTime()))
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
        m_data->HandleClick(hit, flags);
}

void CReportCtrl::Data::HandleClick(const _RVHITTESTINFO& hit, UINT flags)
{
    if (hit.row >= control.GetRowCount()) // gone while the owner was told
        return;
    InputPort port(*this);
    report::Input(rows.selection, port).Click(hit.row, hit.column, ModifiersOf(flags));
    if (!control.m_hWnd || hit.row < 0 || hit.row >= control.GetRowCount())
        return;
    if (hit.flags & RVHT_ONITEMTREEBOX)
        ToggleBox(hit);
    else if (IsDown(VK_LBUTTON) && !(flags & MK_CONTROL))
    {
        ::SetCapture(control.m_hWnd);
        drag.isActive = true;
    }
}

void CReportCtrl::Data::ToggleBox(const _RVHITTESTINFO& hit)
{
    _TREEITEM* const item = rows.IsTree() ? control.GetItemHandle(control.GetItemFromRow(hit.row)) : nullptr;
    if (item)
        control.Expand(item, RVE_TOGGLE);
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
    {
        Default();
        return;
    }
    if (hit.flags & RVHT_ONITEMTREEBOX)
    {
        if (hit.row < GetRowCount())
            m_data->ToggleBox(hit); // of two quick clicks each counts
        return;
    }
    Data::InputPort port(*m_data);
    Data::KeysPort keys(*m_data);
    if (!(hit.flags & RVHT_ONITEMCHECK))
        report::ExtraKeys(m_data->extraKeys, m_data->rows.selection, port, keys).DoubleClick(hit.row);
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
    Data::InputPort port(*m_data);
    if (handled)
        Default();
    else if (hit.row < GetRowCount())
        report::Input(m_data->rows.selection, port).RightClick(hit.row, ModifiersOf(flags));
}

// ---- Drag selection

void CReportCtrl::OnMouseMove(UINT flags, CPoint point)
{
    if (m_data->drag.isActive && (flags & MK_LBUTTON))
        m_data->DragSelectionTo(point);
    else
    {
        m_data->MovePointer(flags, point);
        if (m_hWnd)
            Default();
    }
}

// Selects up to the row at the mouse. Above and below the rows it is the next one there, and a timer goes on.
void CReportCtrl::Data::DragSelectionTo(CPoint point)
{
    drag.point = point;
    const report::Rect& area = view.report;
    const bool above = point.y < area.top;
    const bool below = point.y >= area.bottom;
    int row = report::kNoRow;
    if (above || below)
    {
        const int top = view.topRow;
        ::SetTimer(control.m_hWnd, kDragTimer, kDragMilliseconds, nullptr);
        Scroll(SB_VERT, above ? SB_LINEUP : SB_LINEDOWN);
        int first = 0;
        int last = -1;
        control.GetVisibleRows(view.topRow, &first, &last, 0);
        row = above ? first : last;
        if (top == view.topRow)
            control.KillTimer(kDragTimer);
    }
    else
    {
        control.KillTimer(kDragTimer);
        row = Snapshot(*this).geometry.HitTest(area.left, point.y).row;
    }
    InputPort port(*this);
    report::Input(rows.selection, port).DragTo(row);
}

void CReportCtrl::OnTimer(UINT_PTR id)
{
    if (id == report::kTipTimer)
        m_data->LookAtTip();
    else if (id != kDragTimer)
        Default();
    else if (m_data->drag.isActive)
        m_data->DragSelectionTo(m_data->drag.point);
}

void CReportCtrl::OnLButtonUp(UINT, CPoint)
{
    if (m_data->drag.isActive)
        ::ReleaseCapture();
    Default();
}

void CReportCtrl::OnCaptureChanged(CWnd*)
{
    if (!m_data->drag.isActive)
        return;
    m_data->drag.isActive = false;
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
