// The report control: its life, styles, properties and layout.
#include "report/ReportCtrlData.h"

#include <algorithm>
#include <climits>

namespace
{

constexpr char kWindowClass[] = "QmReportCtrl";
constexpr UINT kHeaderId = 0;
constexpr int kMaxHeight = 0x7FFF; // pixels of an item line and of a preview

void RegisterWindowClass()
{
    WNDCLASS windowClass = {};
    if (::GetClassInfo(AfxGetInstanceHandle(), kWindowClass, &windowClass))
        return;
    windowClass = {};
    windowClass.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = ::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(5); // deliberately not COLOR_WINDOW + 1
    windowClass.lpszClassName = kWindowClass;
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();
}

} // namespace

BEGIN_MESSAGE_MAP(CReportCtrl, CWnd)
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_NOTIFY(HDN_ITEMCLICKA, kHeaderId, &CReportCtrl::OnHdnItemClick)
    ON_NOTIFY(HDN_ITEMCLICKW, kHeaderId, &CReportCtrl::OnHdnItemClick)
    ON_NOTIFY(HDN_ITEMCHANGEDA, kHeaderId, &CReportCtrl::OnHdnItemChanged)
    ON_NOTIFY(HDN_ITEMCHANGEDW, kHeaderId, &CReportCtrl::OnHdnItemChanged)
    ON_NOTIFY(HDN_ENDDRAG, kHeaderId, &CReportCtrl::OnHdnEndDrag)
    ON_NOTIFY(HDN_DIVIDERDBLCLICKA, kHeaderId, &CReportCtrl::OnHdnDividerDblClick)
    ON_NOTIFY(HDN_DIVIDERDBLCLICKW, kHeaderId, &CReportCtrl::OnHdnDividerDblClick)
    ON_NOTIFY(NM_RCLICK, kHeaderId, &CReportCtrl::OnHeaderRClick)
END_MESSAGE_MAP()

CReportCtrl::CReportCtrl() : m_data(std::make_unique<Data>())
{
    RegisterWindowClass();
    m_data->font.CreateStockObject(DEFAULT_GUI_FONT);
}

CReportCtrl::~CReportCtrl()
{
    SetReportSubItemListCtrl(nullptr);
    DestroyWindow(); // while what its last messages ask for is still there
}

BOOL CReportCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context)
{
    m_data->creating = true;
    const BOOL created = CWnd::Create(kWindowClass, nullptr, style, rect, parent, id, context);
    m_data->creating = false;
    if (!created)
        return FALSE;
    if (CreateCommon())
        return TRUE;
    DestroyWindow();
    return FALSE;
}

void CReportCtrl::PreSubclassWindow()
{
    if (!m_data->creating && !CreateCommon())
        AfxThrowResourceException();
}

BOOL CReportCtrl::CreateCommon()
{
    SetState(m_data->selection.focusRow, 0, RVIS_FOCUSED);
    ForgetSelection(); // the fixed row has the focus only as long as there is no window
    m_data->style = GetStyle();
    m_data->invalid = false;
    const CRect nowhere;
    if (!m_data->header.Create(WS_CHILD | WS_VISIBLE | HDS_BUTTONS | HDS_HORZ | HDS_FULLDRAG, nowhere, this,
                               kHeaderId))
        return FALSE;
    m_data->header.SetFont(&m_data->font);
    m_data->header.SetSort(CReportHeaderCtrl::kNone, true); // not that of a window before
    LayoutClient();
    m_data->RefreshSubItemList();
    return TRUE;
}

int CReportCtrl::ModifyStyle(DWORD remove, DWORD add, UINT flags)
{
    if (!CWnd::ModifyStyle(remove, add, flags))
        return 0;
    const DWORD old = m_data->style;
    const DWORD changed = old ^ GetStyle();
    const bool wasTree = m_data->IsTree();
    const bool isTree = (GetStyle() & RVS_TREEMASK) != 0;
    if ((changed & RVS_CALLBACK) || wasTree != isTree) // the rows are other ones
    {
        SetState(GetCurrentFocus(), 0, RVIS_FOCUSED);
        ForgetSelection();
    }
    m_data->style = GetStyle();
    if (wasTree != isTree)
        ShowAllItems();
    if (changed & RVS_HORIZONTALGRID)
        m_data->itemHeight += m_data->style & RVS_HORIZONTALGRID ? 1 : -1;
    if (changed & old & RVS_CELLFOCUS)
        m_data->selection.focusColumn = -1;
    LayoutClient();
    return 1;
}

int CReportCtrl::ModifyProperty(unsigned __int64 id, __int64 value)
{
    const char* const text = reinterpret_cast<const char*>(value);
    const int grids[] = {PS_DOT, PS_DASH, PS_SOLID};
    const DWORD trees[] = {RVS_TREE, RVS_TREEALTERNATE, 0};
    const bool isText = id == RVP_EMPTYTEXT || id == RVP_SORTCAPTION || id == RVP_TREEINDENT;
    if ((isText && !text) || ((id == RVP_GRIDSTYLE || id == RVP_TREESTYLE) && (value < 0 || value > 2)))
        return 0;

    switch (id)
    {
    case RVP_MARGIN:
        m_data->margin = static_cast<int>(value);
        break;
    case RVP_CHECKSIZE:
        m_data->checkSize = CSize(static_cast<int>(value & 0xFFFF), static_cast<int>(value >> 16 & 0xFFFF));
        break;
    case RVP_EMPTYTEXT:
        m_data->emptyText = text;
        break;
    case RVP_GRIDSTYLE:
        m_data->gridPenStyle = grids[value];
        break;
    case RVP_SORTCAPTION:
        m_data->sortCaption = text;
        break;
    case RVP_NOTIFYMASK:
        m_data->notifyMask = static_cast<DWORD>(value);
        break;
    case RVP_UNUSED:
        break;
    case RVP_CELLSEPARATOR:
        if (!report::SetCellSeparator(static_cast<char>(value)))
            return 0;
        break;
    case RVP_SHOWPREVIEW:
        m_data->showPreview = value != 0;
        break;
    case RVP_DOUBLEBUFFER:
        m_data->doubleBuffer = value != 0;
        break;
    case RVP_TREESTYLE:
        m_data->treeStyle = trees[value];
        break;
    case RVP_IMAGEMODE:
        m_data->value = value;
        break;
    case RVP_COLOR:
        m_data->color = static_cast<COLORREF>(value);
        break;
    case RVP_STRINGSEPARATOR:
        Data::stringSeparator = static_cast<char>(value);
        break;
    case RVP_TREEINDENT:
        Data::treeIndent = text;
        break;
    default:
        return 0;
    }
    LayoutClient();
    return 1;
}

void CReportCtrl::LayoutClient()
{
    if (!m_hWnd)
        return;
    CRect client;
    GetClientRect(client);
    Layout(client.Width(), client.Height());
}

void CReportCtrl::Layout(int cx, int cy)
{
    if (!m_hWnd || !m_data->header.m_hWnd)
        return;
    CRect rect(0, 0, cx, cy);
    WINDOWPOS position = {};
    HDLAYOUT layout = {&rect, &position};
    if (!(m_data->style & RVS_NOHEADER) &&
        m_data->header.Layout(&layout)) // takes its height off the rectangle
        ::SetWindowPos(m_data->header, position.hwndInsertAfter, position.x, position.y, position.cx,
                       position.cy, position.flags | SWP_SHOWWINDOW);
    else
        m_data->header.ShowWindow(SW_HIDE);
    if (m_data->style & RVS_FIXEDROW)
        rect.top += m_data->itemHeight + 2 * ::GetSystemMetrics(SM_CYFIXEDFRAME);
    m_data->reportRect = rect;
    ScrollWindow(SB_HORZ, m_data->left);
    ScrollWindow(SB_VERT, m_data->topRow);
    Redraw();
}

int CReportCtrl::SetItemHeight(int height)
{
    if (height < 0 || height > kMaxHeight)
        return 0;
    m_data->itemHeight = height;
    LayoutClient();
    return 1;
}

int CReportCtrl::GetItemHeight()
{
    return m_data->itemHeight;
}

int CReportCtrl::GetRowHeight(int row)
{
    if (!m_data->showPreview)
        return m_data->itemHeight;
    const structITEM& item = GetItemStruct(GetItemFromRow(row), -1, RVIM_PREVIEWHEIGHT);
    return m_data->itemHeight + std::clamp(item.previewHeight, 0, kMaxHeight);
}

void CReportCtrl::ShowRow(int row)
{
    if (row < 0)
        return;
    // The first row that may be at the top while the whole of `row` is still seen, if there is room for it.
    int top = row;
    for (__int64 room = m_data->reportRect.Height() - GetRowHeight(row); top > 0; --top)
    {
        room -= GetRowHeight(top - 1);
        if (room < 0)
            break;
    }
    ScrollWindow(SB_VERT, std::clamp(m_data->topRow, top, row));
}

int CReportCtrl::ScrollWindow(int bar, int position)
{
    return SetScrollPos32(bar, position, 1);
}

int CReportCtrl::GetScrollPos32(int bar, int)
{
    return bar == SB_HORZ ? m_data->left : m_data->topRow;
}

int CReportCtrl::SetScrollPos32(int bar, int position, int redraw)
{
    int& present = bar == SB_HORZ ? m_data->left : m_data->topRow;
    if (bar == SB_VERT && m_data->rowsInvalid && position == present)
        return 1; // it is cut to the rows when they are made
    const int most = bar == SB_HORZ
                         ? std::max<int>(m_data->header.GetTotalWidth(), m_data->reportRect.Width())
                         : GetRowCount();
    const int wanted = std::clamp(position, 0, most);
    if (present == wanted)
        return 1;
    present = wanted;
    if (redraw)
        Redraw();
    return 1;
}

void CReportCtrl::SetRedraw(int redraw)
{
    m_data->redraw = redraw != 0;
    Redraw();
}

// Every invalidation is a call to the system's server: one does until the next paint.
void CReportCtrl::Redraw()
{
    if (!m_hWnd || !m_data->redraw || m_data->invalid)
        return;
    m_data->invalid = true;
    InvalidateRect(nullptr);
}

void CReportCtrl::RedrawRows(int, int, int update)
{
    Redraw();
    if (update && m_hWnd && m_data->redraw)
        UpdateWindow();
}

void CReportCtrl::RedrawItems(int, int)
{
    Redraw();
}

void CReportCtrl::OnPaint()
{
    m_data->invalid = false;
    Default();
}

void CReportCtrl::OnSize(UINT, int cx, int cy)
{
    Layout(cx, cy);
}
