#include "qmcommon/QmButtonXP.h"

#include "afxcontrolbarutil.h"
#include "qmcommon/QmIcon.h"
#include "qmcommon/QmTip.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/WindowColors.h"
#include "zemacore/WideText.h"

#include <string>
#include <utility>

using VkGrafic::UiColor;

namespace
{

// After these the system draws the button at once, as it looks without an icon.
bool DrawsAtOnce(UINT message)
{
    switch (message)
    {
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_UPDATEUISTATE:
        return true;
    default:
        return false;
    }
}

ZEMA::WideString WideCaption(const CWnd& button)
{
    CString caption;
    button.GetWindowText(caption);
    ZEMA::WideString wide;
    ZEMA::ToWide(caption, static_cast<std::size_t>(caption.GetLength()), wide);
    return wide;
}

} // namespace

struct CQmButtonXP::Data
{
    std::string image;
    HICON icon = nullptr;
    int iconSize = 0;
    CQmTip tip;
};

BEGIN_MESSAGE_MAP(CQmButtonXP, CButton)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_DESTROY()
    ON_MESSAGE(WM_DPICHANGED_AFTERPARENT, &CQmButtonXP::OnDpiChanged)
END_MESSAGE_MAP()

CQmButtonXP::CQmButtonXP() : m_data(std::make_unique<Data>()) {}

CQmButtonXP::~CQmButtonXP()
{
    DestroyWindow(); // while what its last messages ask for is still there
    ::DestroyIcon(m_data->icon);
}

bool CQmButtonXP::SetImage(const char* name)
{
    m_data->image = name ? name : "";
    const bool isLoaded = LoadImage();
    if (m_hWnd)
        Invalidate(FALSE);
    return isLoaded || !name;
}

bool CQmButtonXP::LoadImage()
{
    m_data->iconSize = QmIconSize(m_hWnd);
    const HICON icon = m_data->image.empty() ? nullptr : QmLoadIcon(m_data->image.c_str(), m_data->iconSize);
    ::DestroyIcon(std::exchange(m_data->icon, icon));
    return icon != nullptr;
}

void CQmButtonXP::SetTip(const char* tip)
{
    m_data->tip.Show(m_hWnd, tip);
}

void CQmButtonXP::OnDestroy()
{
    SetTip(nullptr);
    CButton::OnDestroy();
}

LRESULT CQmButtonXP::OnDpiChanged(WPARAM, LPARAM)
{
    LoadImage();
    Invalidate(FALSE);
    return Default();
}

// ---- Painting

LRESULT CQmButtonXP::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = CButton::WindowProc(message, wParam, lParam);
    if (DrawsAtOnce(message) && m_hWnd)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    return result;
}

BOOL CQmButtonXP::OnEraseBkgnd(CDC*)
{
    return TRUE; // painting covers everything
}

void CQmButtonXP::OnPaint()
{
    CPaintDC painted(this);
    CMemDC memory(painted, this);
    CRect rect;
    GetClientRect(rect);
    Draw(memory.GetDC(), rect);
}

void CQmButtonXP::Draw(CDC& dc, CRect rect)
{
    const bool isPushed = (GetState() & BST_PUSHED) != 0;
    const bool isDefault = GetButtonStyle() == BS_DEFPUSHBUTTON;
    if (const VkGrafic::WindowColors colors(m_hWnd); colors.IsDark())
    {
        dc.FillSolidRect(rect, colors[isPushed ? UiColor::FaceHighlight : UiColor::Light]);
        ::FrameRect(dc, rect, colors.Brush(isDefault ? UiColor::DarkShadow : UiColor::Edge));
    }
    else
    {
        dc.FillSolidRect(rect, colors[UiColor::Face]);
        if (isDefault)
        {
            ::FrameRect(dc, rect, ::GetSysColorBrush(COLOR_WINDOWFRAME));
            ::InflateRect(rect, -1, -1);
        }
        ::DrawFrameControl(dc, rect, DFC_BUTTON, DFCS_BUTTONPUSH | (isPushed ? DFCS_PUSHED : 0u));
    }
    CRect contents = rect;
    if (isPushed)
        ::OffsetRect(contents, 1, 1);
    DrawContents(dc, contents);
    ::InflateRect(rect, -3, -3);
    const bool hidesFocus = (SendMessage(WM_QUERYUISTATE) & UISF_HIDEFOCUS) != 0;
    if (::GetFocus() == m_hWnd && !hidesFocus)
        dc.DrawFocusRect(rect);
}

// Icon and text side by side, in the middle.
void CQmButtonXP::DrawContents(CDC& dc, CRect rect)
{
    const VkGrafic::Selected font(dc, reinterpret_cast<HGDIOBJ>(SendMessage(WM_GETFONT)));
    const ZEMA::WideString text = WideCaption(*this);
    const bool hidesKey = (SendMessage(WM_QUERYUISTATE) & UISF_HIDEACCEL) != 0;
    const UINT format = DT_SINGLELINE | DT_VCENTER | (hidesKey ? DT_HIDEPREFIX : 0u);
    CRect measured;
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), measured, format | DT_CALCRECT);
    const int iconRoom = m_data->icon ? m_data->iconSize + m_data->iconSize / 4 : 0;
    rect.left += std::max(0, (rect.Width() - iconRoom - measured.Width()) / 2);

    const bool isEnabled = IsWindowEnabled() != FALSE;
    if (m_data->icon)
        ::DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(m_data->icon), 0, rect.left,
                     rect.top + (rect.Height() - m_data->iconSize) / 2, m_data->iconSize, m_data->iconSize,
                     DST_ICON | (isEnabled ? DSS_NORMAL : DSS_DISABLED));
    rect.left += iconRoom;
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(VkGrafic::WindowColors(m_hWnd)[isEnabled ? UiColor::FaceText : UiColor::GreyText]);
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), rect, format);
}
