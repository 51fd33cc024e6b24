#include "logdesk/ToolBar.h"

#include "qmcommon/QmIcon.h"
#include "vkgrafic/WindowColors.h"

namespace logdesk
{

namespace
{

constexpr int kAroundImage = 8; // pixels: both sides together, at an image of 16 pixels
constexpr int kAroundBar = 4;

bool AddImages(CImageList& list, int size, QmIconLook look)
{
    if (!list.Create(size, size, ILC_COLOR32 | ILC_MASK, static_cast<int>(Tools().size()), 1))
        return false;
    for (const Tool& tool : Tools())
    {
        const HICON icon = QmLoadIcon(tool.image ? tool.image : "Info", size, look); // a gap shows none
        const bool isAdded = list.Add(icon) >= 0;
        ::DestroyIcon(icon);
        if (!isAdded)
            return false;
    }
    return true;
}

} // namespace

BEGIN_MESSAGE_MAP(ToolBar, CWnd)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

ToolBar::~ToolBar()
{
    DestroyWindow();
}

BOOL ToolBar::Create(CWnd* parent, UINT id, UINT firstCommand, bool show)
{
    m_firstCommand = firstCommand;
    const DWORD style = WS_CHILD | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN |
                        CCS_NODIVIDER | (show ? WS_VISIBLE : 0u);
    if (!CWnd::Create(TOOLBARCLASSNAMEA, "", style, CRect(), parent, id) || !LoadImages())
        return FALSE;
    AddButtons();
    return TRUE;
}

bool ToolBar::LoadImages()
{
    m_images.DeleteImageList();
    m_disabledImages.DeleteImageList();
    const int size = QmIconSize(m_hWnd);
    if (!AddImages(m_images, size, QmIconLook::Normal) ||
        !AddImages(m_disabledImages, size, QmIconLook::Disabled))
        return false;
    const int button = size + kAroundImage * size / 16;
    SendMessage(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    SendMessage(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images.GetSafeHandle()));
    SendMessage(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(m_disabledImages.GetSafeHandle()));
    SendMessage(TB_SETBUTTONSIZE, 0, MAKELPARAM(button, button));
    return true;
}

void ToolBar::AddButtons()
{
    std::vector<TBBUTTON> buttons(Tools().size());
    for (std::size_t i = 0; i < buttons.size(); ++i)
    {
        const bool isGap = Tools()[i].image == nullptr;
        buttons[i].iBitmap = isGap ? 0 : static_cast<int>(i);
        buttons[i].idCommand = static_cast<int>(m_firstCommand + i);
        buttons[i].fsStyle = static_cast<BYTE>(isGap ? BTNS_SEP : BTNS_BUTTON);
    }
    m_states.resize(buttons.size());
    SendMessage(TB_ADDBUTTONSA, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

// A flat bar has its parent's background, which is light.
BOOL ToolBar::OnEraseBkgnd(CDC* dc)
{
    CRect area;
    GetClientRect(area);
    dc->FillSolidRect(area, VkGrafic::WindowColors(m_hWnd)[VkGrafic::UiColor::Face]);
    return TRUE;
}

LRESULT ToolBar::Draw(const NMTBCUSTOMDRAW& draw)
{
    using VkGrafic::UiColor;
    const VkGrafic::WindowColors colors(draw.nmcd.hdr.hwndFrom);
    if (!colors.IsDark())
        return CDRF_DODEFAULT;
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT)
        return CDRF_DODEFAULT;
    const UINT state = draw.nmcd.uItemState;
    if ((state & (CDIS_CHECKED | CDIS_SELECTED | CDIS_HOT)) != 0)
    {
        const bool isOn = (state & (CDIS_CHECKED | CDIS_SELECTED)) != 0;
        ::FillRect(draw.nmcd.hdc, &draw.nmcd.rc,
                   colors.Brush(isOn ? UiColor::FaceHighlight : UiColor::Light));
        ::FrameRect(draw.nmcd.hdc, &draw.nmcd.rc, colors.Brush(UiColor::Edge));
    }
    return TBCDRF_NOEDGES | TBCDRF_NOBACKGROUND;
}

int ToolBar::GetHeight()
{
    return IsShown() ? HIWORD(SendMessage(TB_GETBUTTONSIZE)) + kAroundBar : 0;
}

int ToolBar::GetLeastWidth()
{
    SIZE size = {};
    if (IsShown())
        SendMessage(TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
    return static_cast<int>(size.cx);
}

void ToolBar::SetStates(const std::vector<ToolState>& states)
{
    for (std::size_t i = 0; i < states.size(); ++i)
    {
        const ToolState& state = states[i];
        if (state.enabled != m_states[i].enabled || state.checked != m_states[i].checked)
            SendMessage(TB_SETSTATE, m_firstCommand + i,
                        (state.enabled ? TBSTATE_ENABLED : 0) | (state.checked ? TBSTATE_CHECKED : 0));
        if (state.tip != m_states[i].tip)
            SetTip(i, state.tip);
    }
    m_states = states;
}

// The control has made a tool of each button, which asks the parent for its text; this tells it once.
void ToolBar::SetTip(std::size_t tool, std::string tip)
{
    TOOLINFO info = {};
    info.cbSize = TTTOOLINFOA_V1_SIZE; // which every version of the control knows
    info.hwnd = m_hWnd;
    info.uId = m_firstCommand + tool;
    info.lpszText = tip.data();
    const HWND tips = reinterpret_cast<HWND>(SendMessage(TB_GETTOOLTIPS));
    ::SendMessage(tips, TTM_UPDATETIPTEXTA, 0, reinterpret_cast<LPARAM>(&info));
}

} // namespace logdesk
