// The report control: its life, styles, properties and layout.
#include "report/ReportCtrlData.h"
#include "report/edit/EditorWindow.h"
#include "report/model/InvalidArgument.h"
#include "vkgrafic/Display.h"

#include <algorithm>
#include <cstdlib>

namespace
{

constexpr DWORD kRowStyles = RVS_CALLBACK | RVS_TREEMASK; // they say what is a row

constexpr char kWindowClass[] = "QmReportCtrl";
constexpr UINT kHeaderId = 0;
static_assert(RVK_FOLD == report::kFoldKeys && RVK_DOUBLECLICK == report::kDoubleClickToggles &&
              RVK_SELECTALL == report::kSelectAllKey && RVK_COPY == report::kCopyKeys &&
              RVK_TYPEAHEAD == report::kTypeAheadKeys && RVK_COLUMNS == report::kColumnKeys &&
              RVK_EDIT == report::kEditKey && RVK_ALL == report::kAllExtraKeys);

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
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_MOUSEWHEEL()
    ON_WM_MOUSEHWHEEL()
    ON_MESSAGE(WM_ENABLE, &CReportCtrl::OnEnable)
    ON_MESSAGE(WM_DPICHANGED_AFTERPARENT, &CReportCtrl::OnDpiChanged)
    ON_WM_SYSCOLORCHANGE()
    ON_WM_SETTINGCHANGE()
    ON_WM_QUERYNEWPALETTE()
    ON_WM_PALETTECHANGED()
    ON_MESSAGE(WM_SETFONT, &CReportCtrl::OnSetFont)
    ON_MESSAGE(WM_GETFONT, &CReportCtrl::OnGetFont)
    ON_WM_GETDLGCODE()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_TIMER()
    ON_WM_CONTEXTMENU()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_NOTIFY(HDN_ITEMCLICKA, kHeaderId, &CReportCtrl::OnHdnItemClick)
    ON_NOTIFY(HDN_ITEMCLICKW, kHeaderId, &CReportCtrl::OnHdnItemClick)
    ON_NOTIFY(HDN_ITEMCHANGEDA, kHeaderId, &CReportCtrl::OnHdnItemChanged)
    ON_NOTIFY(HDN_ITEMCHANGEDW, kHeaderId, &CReportCtrl::OnHdnItemChanged)
    ON_NOTIFY(HDN_ENDDRAG, kHeaderId, &CReportCtrl::OnHdnEndDrag)
    ON_NOTIFY(HDN_DIVIDERDBLCLICKA, kHeaderId, &CReportCtrl::OnHdnDividerDblClick)
    ON_NOTIFY(HDN_DIVIDERDBLCLICKW, kHeaderId, &CReportCtrl::OnHdnDividerDblClick)
    ON_NOTIFY(NM_RCLICK, kHeaderId, &CReportCtrl::OnHeaderRClick)
    ON_NOTIFY(RVN_ENDITEMEDIT, report::kEditorId, &CReportCtrl::OnRvnEndItemEdit)
    ON_EN_CHANGE(report::kEditorId, &CReportCtrl::OnEditorChange)
    ON_CONTROL(CBN_EDITCHANGE, report::kEditorId, &CReportCtrl::OnEditorChange)
    ON_CONTROL(CBN_SELCHANGE, report::kEditorId, &CReportCtrl::OnEditorPick)
    ON_REGISTERED_MESSAGE(report::kEditMessage, &CReportCtrl::OnEditMessage)
END_MESSAGE_MAP()

CReportCtrl::CReportCtrl() : m_data(std::make_unique<Data>(*this))
{
    RegisterWindowClass();
    m_data->ReadSystem();
    m_data->UseFont(nullptr);
    m_data->UseResolution();
}

CReportCtrl::~CReportCtrl()
{
    SetReportSubItemListCtrl(nullptr);
    DestroyWindow(); // while what its last messages ask for is still there
}

BOOL CReportCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context)
{
    m_data->window.isCreating = true;
    const BOOL created = CWnd::Create(kWindowClass, nullptr, style, rect, parent, id, context);
    m_data->window.isCreating = false;
    if (!created)
        return FALSE;
    if (CreateCommon())
        return TRUE;
    DestroyWindow();
    return FALSE;
}

void CReportCtrl::PreSubclassWindow()
{
    if (!m_data->window.isCreating && !CreateCommon())
        AfxThrowResourceException();
}

BOOL CReportCtrl::CreateCommon()
{
    if (((GetStyle() ^ m_data->style) & kRowStyles) && !m_data->MayMakeRows())
        return FALSE;
    SetState(GetCurrentFocus(), 0, RVIS_FOCUSED);
    m_data->rows.ForgetSelection(); // the fixed row has the focus only as long as there is no window
    m_data->window.hasFaceBackground = (GetStyle() & RVS_FACEBACKGROUND) != 0;
    EnableWindow(TRUE);                    // the same bit has made a disabled window
    CWnd::ModifyStyle(0, WS_CLIPCHILDREN); // or a paint would hide the editor
    m_data->UseStyle(GetStyle());
    m_data->painting.dirty.Painted();
    m_data->bars.Forget();
    m_data->window.hasFocus = false;
    const CRect nowhere;
    if (!m_data->header.Create(WS_CHILD | WS_VISIBLE | HDS_BUTTONS | HDS_HORZ | HDS_FULLDRAG, nowhere, this,
                               kHeaderId))
        return FALSE;
    m_data->header.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(m_data->look.fonts.Plain()), FALSE);
    m_data->ReadSystem();
    m_data->UseResolution();
    m_data->header.SetSort(ReportHeaderWnd::kNone, true); // not that of a window before
    m_data->LayoutClient();
    m_data->RefreshSubItemList();
    return TRUE;
}

void CReportCtrl::Data::UseStyle(DWORD bits)
{
    style = bits | (window.hasFaceBackground ? RVS_FACEBACKGROUND : 0);
    rows.SetMode((bits & RVS_CALLBACK) != 0, (bits & RVS_TREEMASK) != 0);
}

// A sort, and whoever asks the owner for an item, goes on with the rows that there were.
bool CReportCtrl::Data::MayMakeRows() const
{
    return !rows.IsBusy() && window.questions == 0;
}

int CReportCtrl::ModifyStyle(DWORD remove, DWORD add, UINT flags)
{
    if (((remove | add) & kRowStyles) && !m_data->MayMakeRows())
        return 0;
    if (!m_data->FinishEdit(Data::EditEnd::Moved))
        return 0;
    const bool hadFaceBackground = m_data->window.hasFaceBackground;
    m_data->window.hasFaceBackground =
        (add & RVS_FACEBACKGROUND) || (hadFaceBackground && !(remove & RVS_FACEBACKGROUND));
    if (!CWnd::ModifyStyle(remove & ~RVS_FACEBACKGROUND, add & ~RVS_FACEBACKGROUND, flags) &&
        m_data->window.hasFaceBackground == hadFaceBackground)
        return 0;
    const DWORD old = m_data->style;
    m_data->UseStyle(GetStyle());
    const DWORD changed = old ^ m_data->style;
    if (changed & RVS_HORIZONTALGRID)
        m_data->sizes.ChangeItemHeight(m_data->style & RVS_HORIZONTALGRID ? 1 : -1);
    if (changed & old & RVS_CELLFOCUS)
        m_data->rows.selection.focusColumn = -1;
    m_data->LayoutClient();
    return 1;
}

int CReportCtrl::ModifyProperty(unsigned __int64 id, __int64 value)
{
    if (!m_data->properties.Set(id, value))
        return 0;
    m_data->header.SetSortCaption(m_data->properties.sortCaption.c_str());
    m_data->extraKeys.switchedOn = m_data->properties.keys;
    m_data->look.colors.UseInactiveHighlight(m_data->properties.inactiveHighlight);
    if (!(m_data->properties.keys & RVK_COLUMNS))
        m_data->header.MarkItem(ReportHeaderWnd::kNone);
    m_data->LayoutClient();
    return 1;
}

int CReportCtrl::GetProperty(unsigned __int64 id, __int64* value)
{
    std::int64_t read = 0;
    if (!m_data->properties.Get(id, read))
        return 0;
    *value = read;
    return 1;
}

void CReportCtrl::Data::LayoutClient()
{
    if (!control.m_hWnd)
        return;
    CRect client;
    control.GetClientRect(client);
    control.Layout(client.Width(), client.Height());
}

void CReportCtrl::Layout(int cx, int cy)
{
    if (!m_hWnd || !m_data->header.m_hWnd)
        return;
    m_data->ForgetTip();
    const bool sortsByClick = !(m_data->style & (RVS_CALLBACK | RVS_NOHEADERSORT)) && m_data->view.showLines;
    m_data->header.SetUse((m_data->style & RVS_DRAGCOLUMNS) != 0, sortsByClick);
    CRect rect(0, 0, cx, cy);
    WINDOWPOS position = {};
    HDLAYOUT layout = {&rect, &position};
    const bool hasHeader = !(m_data->style & RVS_NOHEADER) && m_data->header.Layout(&layout);
    m_data->view.fixedFrame = ::GetSystemMetrics(SM_CYFIXEDFRAME);
    report::LayOut(m_data->view, cx, cy, hasHeader ? position.cy : 0, (m_data->style & RVS_FIXEDROW) != 0);
    m_data->bars.MarkPageStale(); // rows may be of another height
    m_data->FitScrolling();
    m_data->PlaceHeader();
    m_data->Redraw();
}

// Where the columns are scrolled to; its right end reaches at least to that of the client area.
void CReportCtrl::Data::PlaceHeader()
{
    const report::Rect& area = view.header;
    header.SetWindowPos(
        nullptr, -view.left, area.top, report::ToInt(std::int64_t{area.Width()} + view.left), area.Height(),
        SWP_NOZORDER | SWP_NOACTIVATE | (area.Height() > 0 ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

int CReportCtrl::SetItemHeight(int height)
{
    if (!m_data->sizes.SetItemHeight(height))
        return 0;
    m_data->LayoutClient();
    return 1;
}

int CReportCtrl::GetItemHeight()
{
    return m_data->view.itemHeight;
}

void CReportCtrl::SetShowReport(int show)
{
    m_data->view.showLines = show != 0;
    m_data->view.showPreviews = show == 0;
    m_data->LayoutClient();
}

int CReportCtrl::GetShowReport()
{
    return m_data->view.showLines;
}

void CReportCtrl::SetHideRow(int hide)
{
    m_data->view.showLines = hide == 0;
    m_data->LayoutClient();
}

int CReportCtrl::GetHideRow()
{
    return !m_data->view.showLines;
}

void CReportCtrl::SetPreviewWidth(int width)
{
    m_data->view.previewWidth = std::max(0, width);
    m_data->FitScrolling();
    m_data->Redraw();
}

int CReportCtrl::GetPreviewWidth()
{
    return m_data->view.previewWidth;
}

void CReportCtrl::OnSize(UINT, int cx, int cy)
{
    m_data->FinishEdit(Data::EditEnd::Moved);
    Layout(cx, cy);
}

// ---- The system's colours, fonts and settings

void CReportCtrl::Data::ReadSystem()
{
    control.GetSysColors();
    window.wheelLines = control.GetMouseScrollLines();
    ReadHoverTime();
    look.colors.ReadDisplay();
}

void CReportCtrl::GetSysColors()
{
    m_data->look.colors.ReadSystem(m_hWnd);
}

COLORREF CReportCtrl::GetSystemColor(int slot) const
{
    return m_data->look.colors.System(slot);
}

unsigned int CReportCtrl::GetMouseScrollLines()
{
    constexpr unsigned kDefault = 3;
    char text[129] = ""; // the value's 128 bytes at most, and a NUL
    DWORD size = sizeof(text) - 1;
    return ::RegGetValue(HKEY_CURRENT_USER, "Control Panel\\Desktop", "WheelScrollLines", RRF_RT_REG_SZ,
                         nullptr, text, &size) == ERROR_SUCCESS
               ? static_cast<unsigned>(std::strtoul(text, nullptr, 10))
               : kDefault;
}

LRESULT CReportCtrl::OnEnable(WPARAM, LPARAM)
{
    m_data->UseStyle(GetStyle());
    m_data->Redraw();
    return 0;
}

void CReportCtrl::OnSysColorChange()
{
    CWnd::OnSysColorChange();
    GetSysColors();
    m_data->Redraw();
}

void CReportCtrl::OnSettingChange(UINT flags, LPCSTR section)
{
    CWnd::OnSettingChange(flags, section);
    m_data->window.wheelLines = GetMouseScrollLines();
    m_data->ReadHoverTime();
}

int CReportCtrl::GetResolution()
{
    return VkGrafic::GetResolution(m_hWnd);
}

void CReportCtrl::Data::UseResolution()
{
    const int dpi = control.GetResolution();
    sizes.SetResolution(dpi);
    header.SetResolution(dpi);
}

LRESULT CReportCtrl::OnDpiChanged(WPARAM, LPARAM)
{
    m_data->UseResolution();
    m_data->LayoutClient();
    return 0;
}

void CReportCtrl::Data::UseFont(HFONT font)
{
    look.fonts.Use(font);
    sizes.SetFontHeight(look.fonts.Height());
}

LRESULT CReportCtrl::OnSetFont(WPARAM font, LPARAM redraw)
{
    m_data->FinishEdit(Data::EditEnd::Moved); // the editor has the old font
    m_data->UseFont(reinterpret_cast<HFONT>(font));
    if (m_data->header.m_hWnd)
        m_data->header.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(m_data->look.fonts.Plain()), redraw);
    m_data->LayoutClient();
    return 0;
}

LRESULT CReportCtrl::OnGetFont(WPARAM, LPARAM)
{
    return reinterpret_cast<LRESULT>(m_data->look.fonts.Plain());
}

BOOL CReportCtrl::OnQueryNewPalette()
{
    if (!m_data->look.colors.NeedsPalette() || !CreatePalette())
        return FALSE;
    m_data->Redraw();
    return TRUE;
}

void CReportCtrl::OnPaletteChanged(CWnd* changed)
{
    if (m_data->look.colors.NeedsPalette() && changed != this && CreatePalette())
        m_data->Redraw();
}
