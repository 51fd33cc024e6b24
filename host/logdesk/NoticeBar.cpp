#include "logdesk/NoticeBar.h"

#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <commctrl.h>
#include <utility>

namespace logdesk
{

namespace
{

constexpr int kPadding = 4;   // pixels around the lines
constexpr int kIconSize = 16; // pixels
constexpr int kTipWidth = 900;

// Told apart from everything around; high contrast has colours of its own.
constexpr COLORREF kBackground = RGB(255, 242, 190);

} // namespace

BEGIN_MESSAGE_MAP(NoticeBar, CWnd)
    ON_WM_DESTROY()
    ON_WM_PAINT()
END_MESSAGE_MAP()

NoticeBar::~NoticeBar()
{
    DestroyWindow();
}

BOOL NoticeBar::Create(CWnd* parent, UINT id)
{
    return CWnd::Create(AfxRegisterWndClass(CS_HREDRAW, ::LoadCursor(nullptr, IDC_ARROW)), "", WS_CHILD,
                        CRect(), parent, id);
}

bool NoticeBar::SetLines(const std::vector<std::string>& lines)
{
    if (lines == m_lines)
        return false;
    const bool isOtherHeight = lines.size() != m_lines.size();
    m_lines = lines;
    m_text.clear();
    for (const std::string& line : lines)
        m_text += (m_text.empty() ? "" : "\r\n") + line;
    SetWindowText(m_text.c_str());
    ShowWindow(lines.empty() ? SW_HIDE : SW_SHOWNA);
    UpdateTip();
    Invalidate();
    return isOtherHeight;
}

int NoticeBar::GetLineHeight()
{
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRIC font = {};
    dc.GetTextMetrics(&font);
    return std::max(static_cast<int>(font.tmHeight), kIconSize);
}

int NoticeBar::GetHeight()
{
    return m_lines.empty() ? 0 : 2 * kPadding + static_cast<int>(m_lines.size()) * GetLineHeight();
}

void NoticeBar::UpdateTip()
{
    TOOLINFO tool = {};
    tool.cbSize = TTTOOLINFOA_V1_SIZE; // which every version of the control knows
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = m_hWnd;
    tool.uId = reinterpret_cast<UINT_PTR>(m_hWnd);
    tool.lpszText = m_text.data();
    if (!m_tip)
    {
        m_tip =
            ::CreateWindowEx(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                             0, 0, 0, 0, m_hWnd, nullptr, nullptr, nullptr);
        ::SendMessage(m_tip, TTM_SETMAXTIPWIDTH, 0, kTipWidth); // also what makes it take line ends
        ::SendMessage(m_tip, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    }
    ::SendMessage(m_tip, TTM_UPDATETIPTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
}

void NoticeBar::OnDestroy()
{
    if (m_tip)
        ::DestroyWindow(std::exchange(m_tip, nullptr));
    CWnd::OnDestroy();
}

void NoticeBar::OnPaint()
{
    CPaintDC dc(this);
    CRect area;
    GetClientRect(area);
    const bool isHighContrast = VkGrafic::IsHighContrast();
    dc.FillSolidRect(area, isHighContrast ? ::GetSysColor(COLOR_INFOBK) : kBackground);
    dc.FillSolidRect(CRect(area.left, area.bottom - 1, area.right, area.bottom),
                     ::GetSysColor(COLOR_3DSHADOW));

    const VkGrafic::Selected selected(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetTextColor(isHighContrast ? ::GetSysColor(COLOR_INFOTEXT) : RGB(0, 0, 0));
    dc.SetBkMode(TRANSPARENT);
    const GraphicText text(dc);
    const int height = GetLineHeight();
    const HANDLE icon = ::LoadImage(nullptr, IDI_INFORMATION, IMAGE_ICON, kIconSize, kIconSize, LR_SHARED);
    ::DrawIconEx(dc, kPadding, kPadding, static_cast<HICON>(icon), kIconSize, kIconSize, 0, nullptr,
                 DI_NORMAL);
    CRect line(area.left + 2 * kPadding + kIconSize, area.top + kPadding, area.right - kPadding, 0);
    for (const std::string& notice : m_lines)
    {
        line.bottom = line.top + height;
        text.Draw(notice.data(), static_cast<int>(notice.size()), line,
                  DT_LEFT | DT_VCENTER | DT_END_ELLIPSIS);
        line.top = line.bottom;
    }
}

} // namespace logdesk
